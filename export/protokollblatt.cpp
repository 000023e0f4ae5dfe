#include "export/protokollblatt.h"

#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"
#include "export/arbeitsmappe.h"
#include "export/zellentext.h"

#include <algorithm>

void schreibeProtokolldaten(Blatt &sheet, const Kalibrierung &document)
{
    const Zellenstil head{.kopf = true};
    const Zellenstil wrapped{.umbruch = true};
    sheet.seite(false, 1);
    sheet.text(0, 0, QStringLiteral("Angabe"), head);
    sheet.text(0, 1, QStringLiteral("Text"), head);
    int row = 0;
    qsizetype width = 50;
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        if (!key.startsWith(u"Protokoll Verdichtung "_qs))
            return;
        const QString text = basKalibrierungWendral::VarToString(value, document.values());
        QString caption = key;
        for (const QString &piece : zellenstuecke(text)) {
            sheet.text(++row, 0, caption, wrapped);
            sheet.text(row, 1, piece, wrapped);
            caption = key + u" (Fortsetzung)"_qs;
        }
        width = std::max(width, key.size());
    });
    sheet.spaltenbreite(0, 0, static_cast<double>(width) + 2.0);
    sheet.spaltenbreite(1, 1, 60);
}
