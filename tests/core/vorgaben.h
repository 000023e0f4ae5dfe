#pragma once

#include "tests/core/support.h"

namespace coretest {

inline const QString protocol = u"Protokoll Verdichtung "_qs;

struct Default
{
    QString key;
    Variant value;
};

/// What a document holds after a reset, in its order.
inline std::vector<Default> defaults()
{
    const auto whole = [](std::int32_t value) { return Variant(value); };
    std::vector<Default> result{
        {u"Direktes Prüfmerkmal Nachkommastellen"_qs, whole(2)},
        {u"IsDirty"_qs, false},
        {u"Indirektes Prüfmerkmal Nachkommastellen"_qs, whole(2)},
        {u"Kovariable Nachkommastellen"_qs, whole(0)},
        {u"Anzahl Prüffelder"_qs, whole(3)},
        {u"Kovariable Name"_qs, u"Anzahl der Übergänge"_qs},
        {u"Kovariable Einheit"_qs, u"-"_qs},
        {u"Kovariable Formelzeichen"_qs, u"Z"_qs},
        {u"Nachkommastellen Mittelwerte"_qs, whole(1)},
        {u"Nachkommastellen Varianzen"_qs, whole(2)},
        {u"Nachkommastellen Standardabweichung"_qs, whole(2)},
        {u"Nachkommastellen Kovarianzen"_qs, whole(2)},
        {u"Nachkommastellen Bestimmtheitsmaße"_qs, whole(2)},
        {u"Nachkommastellen Anstieg"_qs, whole(4)},
        {u"Nachkommastellen Achsenabschnitt"_qs, whole(2)},
        {u"Zwischenergebnisse runden"_qs, false},
        {u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs, 0.65},
    };
    const std::pair<const char16_t *, const char16_t *> texts[] = {
        {u"Unterlage Bodenart DIN 4022", nullptr},
        {u"Unterlage Bodengruppe DIN 18196", nullptr},
        {u"Unterlage Anzahl Verdichtungsübergänge", nullptr},
        {u"Unterlage Wassergehalt", u"??%"},
        {u"Unterlage Trockendichte", u"?? g/cm³"},
        {u"Unterlage Proctordichte", u"?? g/cm³"},
        {u"Unterlage Verdichtungsgrad", u"??%"},
        {u"Kalibrierfeld Bodenart DIN 4022", nullptr},
        {u"Kalibrierfeld Bodengruppe DIN 18196", nullptr},
        {u"Kalibrierfeld Geometrie", u"?? m x ?? m"},
        {u"Kalibrierfeld Schütthöhe", u"?? m"},
        {u"Kalibrierfeld Proctordichte", u"?? g/cm³ bis ?? g/cm³"},
        {u"Kalibrierfeld Grenzwassergehalt", u"XXX=??%: ??% bzw ??%"},
        {u"Kalibrierfeld optimaler Wassergehalt", u"??% bis ??%"},
        {u"Kalibrierfeld Walzentyp", nullptr},
        {u"Kalibrierfeld Fahrgeschwindigkeit Walze", u"?? km/h"},
        {u"Kalibrierfeld Verdichtungsamplitude Walze", u"?? mm"},
        {u"Kalibrierfeld Verdichtungsfrequenz Walze", u"?? Hz"},
        {u"Kalibrierfeld Datum bei Verdichtung", u"??.??.????"},
        {u"Kalibrierfeld Witterung bei Verdichtung", nullptr},
        {u"Kalibrierfeld Temperatur bei Verdichtung", u"??°C"},
        {u"Kalibrierfeld Datum bei Prüfung", u"??.??.????"},
        {u"Kalibrierfeld Witterung bei Prüfung", nullptr},
        {u"Kalibrierfeld Temperatur bei Prüfung", u"??°C"},
    };
    for (const auto &[key, text] : texts) {
        // A template that is empty leaves nothing but the key.
        result.push_back({protocol + QString::fromUtf16(key),
                          text ? Variant(QString::fromUtf16(text)) : Variant(Empty{})});
    }
    return result;
}

/// Fails the test unless \a document holds that and nothing else.
inline void verifyDefaults(const Kalibrierung &document)
{
    const std::vector<Default> expected = defaults();
    std::size_t at = 0;
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        QVERIFY(at < expected.size());
        QCOMPARE(key, expected[at].key);
        QVERIFY2(value == expected[at].value, qPrintable(key));
        ++at;
    });
    QCOMPARE(at, expected.size());
}

} // namespace coretest
