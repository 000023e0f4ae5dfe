#include "batch/csvbericht.h"

#include "batch/ergebnisse.h"
#include "batch/zahlentext.h"
#include "core/kalibrierung.h"

#include <QStringList>

namespace {

QString quoted(QString field)
{
    const bool needsQuotes = field.contains(u';') || field.contains(u'"') ||
                             field.contains(u'\n') || field.contains(u'\r') ||
                             field.startsWith(u' ') || field.endsWith(u' ');
    return needsQuotes ? u'"' + field.replace(u'"', u"\"\""_qs) + u'"' : field;
}

QByteArray line(const QStringList &fields)
{
    QStringList written;
    for (const QString &field : fields)
        written += quoted(field);
    return (written.join(u';') + u'\n').toUtf8();
}

// A spreadsheet program takes a field that begins so for a formula, in quotes as well; some pass
// over control characters before the sign.
QString dateifeld(const QString &file)
{
    static const QString formulaMarks = u"=+-@"_qs;
    if (file.isEmpty())
        return file;
    const QChar first = file.front();
    const bool isRisk = formulaMarks.contains(first) || first.category() == QChar::Other_Control;
    return isRisk ? u"./"_qs + file : file;
}

QByteArray resultLine(const QString &file, const QString &group, const Ergebnis &result)
{
    return line({dateifeld(file), group, result.schluessel,
                 result.wert ? QString::fromLatin1(zahlentext(*result.wert)) : QString(),
                 result.anzeige,
                 result.fehler ? QString::number(result.fehler->number()) : QString(),
                 result.fehler ? result.fehler->description() : QString()});
}

Ergebnis minimum(Kalibrierung &document)
{
    Ergebnis result{QStringLiteral("minimum"), {}, {}, QStringLiteral("-"), {}};
    try {
        result.wert = document.MinBestimmtheitsmaßIndirektDirekt();
        result.anzeige = document.values().text(*result.wert);
    } catch (const RunTimeError &error) {
        result.fehler = error;
    }
    return result;
}

Ergebnis verdict(Kalibrierung &document)
{
    const bool good = document.StatistikBestimmtheitsmaßIndirektDirektOk();
    return {QStringLiteral("urteil"),
            {},
            good ? 1.0 : 0.0,
            good ? QStringLiteral("gut") : QStringLiteral("kritisch"),
            {}};
}

} // namespace

QByteArray csvKopf()
{
    return "datei;gruppe;ergebnis;wert;anzeige;fehlernummer;fehlertext\n";
}

QByteArray csvBericht(const QString &datei, Kalibrierung &document)
{
    QByteArray lines;
    for (const Ergebnisgruppe &group : ergebnisse(document)) {
        for (const Ergebnis &result : group.ergebnisse)
            lines += resultLine(datei, group.schluessel, result);
    }
    const QString group = QStringLiteral("urteil");
    return lines + resultLine(datei, group, minimum(document)) +
           resultLine(datei, group, verdict(document));
}

QByteArray csvFehler(const QString &datei, const RunTimeError &error)
{
    return line({dateifeld(datei),
                 QStringLiteral("datei"),
                 {},
                 {},
                 {},
                 QString::number(error.number()),
                 error.description()});
}
