#include "core/urteil.h"

#include "core/kalibrierung.h"

Urteil urteil(Kalibrierung &document, const QString &lineBreak)
{
    const QString minimum = document.values().text(document.MinBestimmtheitsmaßIndirektDirekt());
    if (document.StatistikBestimmtheitsmaßIndirektDirektOk())
        return {
            true, QStringLiteral("gut"),
            u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt über dem "
            u"minimal erforderlichen Wert von "_qs +
                minimum + u'.' + lineBreak +
                u"Somit kann die ermittelte Kalibriergerade für die Umrechnung zwischen den "
                u"Prüfmerkmalen genutzt werden."_qs};
    return {false, QStringLiteral("kritisch"),
            u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt nicht "
            u"über dem "
            u"minimal erforderlichen Wert von "_qs +
                minimum + u'.' + lineBreak +
                u"Die ermittelte Kalibriergerade darf somit nicht für die Umrechnung zwischen den "
                u"Prüfmerkmalen genutzt werden!"_qs};
}
