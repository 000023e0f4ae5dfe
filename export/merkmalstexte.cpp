#include "export/merkmalstexte.h"

#include "core/kalibrierung.h"

#include <algorithm>
#include <cmath>

namespace {

// A text that some file has stored as no value at all reads as empty.
template <typename Read>
QString orEmpty(Read read)
{
    try {
        return read();
    } catch (const RunTimeError &) {
        return {};
    }
}

} // namespace

QString merkmalsart(MerkmalEnum merkmal)
{
    switch (merkmal) {
    case mDirekt:
        return u"direktes Prüfmerkmal"_qs;
    case mIndirekt:
        return u"indirektes Prüfmerkmal"_qs;
    case mZ:
        break;
    }
    return QStringLiteral("Kovariable");
}

QString merkmalsbezeichnung(Kalibrierung &document, MerkmalEnum merkmal)
{
    return orEmpty([&] { return merkmalOf(document, merkmal).Bezeichung(); });
}

QString merkmalMitEinheit(Kalibrierung &document, MerkmalEnum merkmal)
{
    const QString name = merkmalsbezeichnung(document, merkmal).trimmed();
    const QString unit = orEmpty([&] { return merkmalOf(document, merkmal).Einheit(); });
    return unit.isEmpty() ? name : (name + u" ["_qs + unit + u']').trimmed();
}

QString merkmalsformat(Kalibrierung &document, MerkmalEnum merkmal)
{
    return orEmpty([&] { return document.MerkmalNumberFormat(merkmal); });
}

qsizetype merkmalsbreite(Kalibrierung &document, MerkmalEnum merkmal, double size)
{
    // One 0 of the pattern stands before the separator; at most 30 stand behind it.
    const qsizetype decimals = merkmalsformat(document, merkmal).count(u'0') - 1;
    return document.values()
        .display(-std::abs(size), static_cast<std::int32_t>(std::max<qsizetype>(decimals, 0)))
        .size();
}
