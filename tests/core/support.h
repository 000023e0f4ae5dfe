#pragma once

#include "core/kalibrierung.h"
#include "core/runtimeerror.h"

#include <QLocale>
#include <QtTest>

#include <bit>
#include <cstdint>
#include <random>

// What the tests of the core share. QCOMPARE of two doubles is fuzzy; sameBits() is not.
namespace coretest {

inline const QLocale german(QLocale::German, QLocale::Germany);
inline const QLocale english(QLocale::English, QLocale::UnitedStates);

/// The number of the run-time error that \a run raises, 0 where it raises none.
template <typename Run>
std::int32_t errorOf(Run run)
{
    try {
        run();
        return 0;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

inline bool sameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Both values with all their digits, for the message of a failed comparison.
inline QByteArray digits(double actual, double expected)
{
    return QByteArray::number(actual, 'g', 17) + " instead of " +
           QByteArray::number(expected, 'g', 17);
}

/// Whether \a actual and \a expected differ by at most \a tolerance of the larger one.
inline bool closeTo(double actual, double expected, double tolerance)
{
    return std::abs(actual - expected) <=
           tolerance * std::max(std::abs(actual), std::abs(expected));
}

/// A document with the direct and indirect values and the covariable of each field; one inner list
/// per field. Writes the store directly, so that fields may have fewer than three points.
struct Field
{
    double z = 0.0;
    std::vector<double> direct;
    std::vector<double> indirect;
};

inline void fill(Kalibrierung &document, const std::vector<Field> &fields)
{
    KeyedStore &store = document.DataStore();
    store.set(u"Anzahl Prüffelder"_qs, static_cast<std::int32_t>(fields.size()));
    std::int32_t number = 0;
    for (const Field &field : fields) {
        ++number;
        store.set(u"Prüffeld Prüfpunktanzahl "_qs + QString::number(number),
                  static_cast<std::int32_t>(field.direct.size()));
        document.setPrüffeldWert(number, field.z);
        for (std::size_t point = 0; point < field.direct.size(); ++point) {
            const auto p = static_cast<std::int32_t>(point + 1);
            document.setMesswert(pmDirekt, number, p, field.direct[point]);
            document.setMesswert(pmIndirekt, number, p, field.indirect[point]);
        }
    }
}

/// Direct values 1 to 9, indirect values around twice of them, covariable 1, 2, 3.
inline void fillThreeFields(Kalibrierung &document)
{
    fill(document,
         {{1, {1, 2, 3}, {2, 5, 5}}, {2, {4, 5, 6}, {8, 10, 13}}, {3, {7, 8, 9}, {14, 15, 18}}});
}

/// A selector that may name no characteristic.
inline MerkmalEnum selector(int number)
{
    return static_cast<MerkmalEnum>(number);
}

} // namespace coretest

#define QVERIFY_SAME_BITS(actual, expected)                                                        \
    QVERIFY2(coretest::sameBits(actual, expected), coretest::digits(actual, expected))
#define QVERIFY_CLOSE(actual, expected, tolerance)                                                 \
    QVERIFY2(coretest::closeTo(actual, expected, tolerance), coretest::digits(actual, expected))
