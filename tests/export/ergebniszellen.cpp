#include "tests/export/ergebniszellen.h"

#include "core/kalibrierung.h"

std::vector<std::pair<QString, std::vector<Ergebniswert>>> ergebniszellen(Kalibrierung &d)
{
    const auto one = [&](const char *cell, double (Kalibrierung::*result)(MerkmalEnum),
                         MerkmalEnum m) {
        return Ergebniswert{QString::fromLatin1(cell), [&d, result, m] { return (d.*result)(m); }};
    };
    const auto two = [&](const char *cell, double (Kalibrierung::*result)(MerkmalEnum, MerkmalEnum),
                         MerkmalEnum x, MerkmalEnum y) {
        return Ergebniswert{QString::fromLatin1(cell),
                            [&d, result, x, y] { return (d.*result)(x, y); }};
    };
    const auto slope = &Kalibrierung::StatistikKalibriergeradeAnstieg;
    const auto intercept = &Kalibrierung::StatistikKalibriergeradeAchsenabschnitt;
    return {
        {u"Auswertung"_qs,
         {one("B3", &Kalibrierung::StatistikMittelwert, mDirekt),
          one("B4", &Kalibrierung::StatistikMittelwert, mIndirekt),
          one("B5", &Kalibrierung::StatistikMittelwert, mZ),
          one("B8", &Kalibrierung::StatistikVarianz, mDirekt),
          one("B9", &Kalibrierung::StatistikVarianz, mIndirekt),
          one("B10", &Kalibrierung::StatistikVarianz, mZ),
          one("B13", &Kalibrierung::StatistikStandardabweichung, mDirekt),
          one("B14", &Kalibrierung::StatistikStandardabweichung, mIndirekt),
          one("B15", &Kalibrierung::StatistikStandardabweichung, mZ),
          two("B18", &Kalibrierung::StatistikKovarianz, mDirekt, mIndirekt),
          two("B19", &Kalibrierung::StatistikKovarianz, mDirekt, mZ),
          two("B20", &Kalibrierung::StatistikKovarianz, mIndirekt, mZ),
          two("B23", &Kalibrierung::StatistikBestimmtheitsmaß, mDirekt, mIndirekt),
          two("B24", &Kalibrierung::StatistikBestimmtheitsmaß, mDirekt, mZ),
          two("B25", &Kalibrierung::StatistikBestimmtheitsmaß, mIndirekt, mZ),
          two("B28", slope, mDirekt, mIndirekt),
          two("B29", intercept, mDirekt, mIndirekt),
          two("B30", slope, mDirekt, mZ),
          two("B31", intercept, mDirekt, mZ),
          two("B32", slope, mIndirekt, mZ),
          two("B33", intercept, mIndirekt, mZ)}},
        {u"Kalibriergeraden"_qs,
         {two("B2", slope, mDirekt, mIndirekt), two("B3", slope, mIndirekt, mDirekt),
          two("B4", slope, mDirekt, mZ), two("B5", slope, mZ, mDirekt),
          two("B6", slope, mIndirekt, mZ), two("B7", slope, mZ, mIndirekt),
          two("C2", intercept, mDirekt, mIndirekt), two("C3", intercept, mIndirekt, mDirekt),
          two("C4", intercept, mDirekt, mZ), two("C5", intercept, mZ, mDirekt),
          two("C6", intercept, mIndirekt, mZ), two("C7", intercept, mZ, mIndirekt)}},
    };
}

std::optional<double> wertOderNichts(const std::function<double()> &result)
{
    try {
        return result();
    } catch (const RunTimeError &) {
        return std::nullopt;
    }
}
