// Numbers that strain a double: nothing is lost that a result could show, and no result is ever
// infinite or no number.

#include "tests/core/ergebnisse.h"
#include "tests/support/testregistry.h"

using namespace coretest;

class TestExtremwerte : public QObject
{
    Q_OBJECT

private slots:
    void badlyScaledColumnsLoseNothing();
    void longColumnsLoseNothing();
    void extremeValuesAreFiniteOrANumberedError_data();
    void extremeValuesAreFiniteOrANumberedError();
};

void TestExtremwerte::badlyScaledColumnsLoseNothing()
{
    Kalibrierung document(german);
    fill(document,
         {{1, {1e16, 1, -1e16}, {3, 1e16, 1e16}}, {2, {1e16, 1, -1e16}, {-1e16, 3, -1e16}}});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 2.0 / 6);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 1.0);
    // A small scatter on a large offset.
    fill(document, {{1, {1e12 + 1, 1e12 + 2, 1e12 + 3}, {1, 2, 3}},
                    {2, {1e12 + 4, 1e12 + 5, 1e12 + 6}, {2, 4, 5}}});
    QVERIFY_SAME_BITS(document.StatistikVarianz(mDirekt), 3.5);
    QVERIFY_SAME_BITS(document.StatistikKovarianz(mDirekt, mZ), 0.9);
}

void TestExtremwerte::longColumnsLoseNothing()
{
    constexpr std::size_t points = 20'000;
    Kalibrierung document(german);
    std::vector<Field> fields(3);
    double z = 0.0;
    for (Field &field : fields) {
        field.z = ++z;
        field.direct.assign(points, 0.1 * z);
        field.indirect.assign(points, 1e10 + z);
    }
    fill(document, fields);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 1e10 + 2);
    QVERIFY_CLOSE(document.StatistikMittelwert(mDirekt), 0.2, 2e-16);
    const double n = 3.0 * points;
    QVERIFY_CLOSE(document.StatistikVarianz(mIndirekt), 2.0 * points / (n - 1), 1e-15);
    QVERIFY_CLOSE(document.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt), 0.1, 1e-14);
}

void TestExtremwerte::extremeValuesAreFiniteOrANumberedError_data()
{
    QTest::addColumn<bool>("rounding");
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 6; ++seed) {
        QTest::addRow("unrounded %u", seed) << false << seed;
        QTest::addRow("rounded %u", seed) << true << seed;
    }
}

void TestExtremwerte::extremeValuesAreFiniteOrANumberedError()
{
    QFETCH(const bool, rounding);
    QFETCH(const unsigned, seed);
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    const std::vector<double> pool{0.0,      1.0,      -1.0,      1e308,  -1e308,  largest,
                                   -largest, smallest, -smallest, 1e-200, -1e-200, 1e-308,
                                   1e155,    -1e155,   1e16,      0.1};
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<std::size_t> any(0, pool.size() - 1);
    std::uniform_int_distribution<int> places(-400, 400);
    for (int i = 0; i < 150; ++i) {
        // A few values of the pool in each document, so that some results exist.
        const double few[3] = {pool[any(random)], pool[any(random)], pool[any(random)]};
        const auto value = [&] { return few[any(random) % 3]; };
        std::vector<Field> fields(3);
        for (Field &field : fields) {
            field.z = value();
            for (int p = 0; p < 4; ++p) {
                field.direct.push_back(value());
                field.indirect.push_back(value());
            }
        }
        Kalibrierung document(german);
        fill(document, fields);
        document.setZwischenergebnisseRunden(rounding);
        if (i % 2) {
            document.setNachkommastellenMittelwerte(places(random));
            document.setNachkommastellenVarianzen(places(random));
            document.setNachkommastellenAnstieg(places(random));
        }
        for (const Ergebnis &result : alleErgebnisse(document)) {
            QVERIFY(std::isfinite(result.value));
            QVERIFY(result.error == 0 || result.error == 5 || result.error == 6 ||
                    result.error == 11);
            QVERIFY(!(result.value == 0.0 && std::signbit(result.value)));
        }
        for (const MerkmalEnum x : {mDirekt, mIndirekt, mZ}) {
            const QString text = document.StatistikKalibriergeradeAnstiegString(x, mZ);
            QVERIFY(text == u"(Fehler)" || document.values().isNumeric(text));
        }
        document.StatistikBestimmtheitsmaßIndirektDirektOk();
    }
}

REGISTER_TEST(TestExtremwerte)
#include "tst_extremwerte.moc"
