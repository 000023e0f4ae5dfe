#include "wizard/stellenoptionen.h"

#include "core/kalibrierung.h"

const std::array<Stellenoption, 6> &stellenoptionen()
{
    static const std::array<Stellenoption, 6> all{{
        {QStringLiteral("&Mittelwerte:"), QStringLiteral("Nachkommastellen Mittelwerte"),
         QStringLiteral("txtMittelwerteStellen"), QStringLiteral("UpDown1"),
         &Kalibrierung::NachkommastellenMittelwerte, &Kalibrierung::setNachkommastellenMittelwerte},
        {QStringLiteral("&Varianzen:"), QStringLiteral("Nachkommastellen Varianzen"),
         QStringLiteral("txtVarianzenStellen"), QStringLiteral("udVarianzenStellen"),
         &Kalibrierung::NachkommastellenVarianzen, &Kalibrierung::setNachkommastellenVarianzen},
        {QStringLiteral("&Kovarianzen:"), QStringLiteral("Nachkommastellen Kovarianzen"),
         QStringLiteral("txtKovarianzenStellen"), QStringLiteral("udKovarianzenStellen"),
         &Kalibrierung::NachkommastellenKovarianzen, &Kalibrierung::setNachkommastellenKovarianzen},
        {u"&Bestimmtheitsmaße:"_qs, u"Nachkommastellen Bestimmtheitsmaße"_qs,
         u"txtBestimmtheitsmaßeStellen"_qs, u"udBestimmtheitsmaßeStellen"_qs,
         &Kalibrierung::NachkommastellenBestimmtheitsmaße,
         &Kalibrierung::setNachkommastellenBestimmtheitsmaße},
        {QStringLiteral("A&nstieg Gerade:"), QStringLiteral("Nachkommastellen Anstieg Gerade"),
         QStringLiteral("txtAnstiegStellen"), QStringLiteral("udAnstiegStellen"),
         &Kalibrierung::NachkommastellenAnstieg, &Kalibrierung::setNachkommastellenAnstieg},
        {QStringLiteral("N&ullwert Gerade:"), QStringLiteral("Nachkommastellen Nullwert Gerade"),
         QStringLiteral("txtNullwertStellen"), QStringLiteral("udNullwertStellen"),
         &Kalibrierung::NachkommastellenAchsenabschnitt,
         &Kalibrierung::setNachkommastellenAchsenabschnitt},
    }};
    return all;
}
