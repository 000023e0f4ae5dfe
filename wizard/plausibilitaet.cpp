#include "wizard/plausibilitaet.h"

#include "core/kalibrierung.h"
#include "core/runtimeerror.h"

namespace {

using plausibilitaet::Zeile;
using Anzeige = QString (Kalibrierung::*)(MerkmalEnum);
using Paaranzeige = QString (Kalibrierung::*)(MerkmalEnum, MerkmalEnum);

const QString indent = QStringLiteral("   ");

// The text that display() gives; "-" where it fails or says "(Fehler)".
template <typename Display>
QString orDash(Display display)
{
    try {
        const QString text = display();
        return text == u"(Fehler)" ? QStringLiteral("-") : text;
    } catch (const RunTimeError &) {
        return QStringLiteral("-");
    }
}

/// Collects the rows group by group, with a blank row between two groups.
class Liste
{
public:
    explicit Liste(Kalibrierung &document)
        : m_document(document)
        , m_direkt(orDash([&] { return document.DirektesPrüfmerkmal().Bezeichung(); }))
        , m_indirekt(orDash([&] { return document.IndirektesPrüfmerkmal().Bezeichung(); }))
        , m_kovariable(orDash([&] { return document.Kovariable().Bezeichung(); }))
    {
    }

    void jeMerkmal(const QString &heading, const QString &quantity, Anzeige display)
    {
        group(heading);
        const QString start = indent + quantity;
        const auto value = [&](MerkmalEnum merkmal) {
            return orDash([&] { return (m_document.*display)(merkmal); });
        };
        row(start + u" direktes Prüfmerkmal: "_qs + m_direkt, value(mDirekt));
        row(start + u" indirektes Prüfmerkmal: "_qs + m_indirekt, value(mIndirekt));
        row(start + u' ' + m_kovariable, value(mZ));
    }

    void jePaar(const QString &heading, const QString &quantity, Paaranzeige display,
                const QString &rating = {})
    {
        group(heading);
        const QString start = indent + quantity;
        row(start + u" direktes und indirektes Prüfmerkmal"_qs, value(display, mDirekt, mIndirekt),
            rating);
        row(start + u" direktes Prüfmerkmal und "_qs + m_kovariable, value(display, mDirekt, mZ));
        row(start + u" indirektes Prüfmerkmal und "_qs + m_kovariable,
            value(display, mIndirekt, mZ));
    }

    void geraden()
    {
        group(QStringLiteral("Kalibriergeraden"));
        gerade(u"direktes und indirektes Prüfmerkmal"_qs, mDirekt, mIndirekt);
        gerade(u"direktes Prüfmerkmal und "_qs + m_kovariable, mDirekt, mZ);
        gerade(u"indirektes Prüfmerkmal und "_qs + m_kovariable, mIndirekt, mZ);
    }

    std::vector<Zeile> take() { return std::move(m_rows); }

private:
    void group(const QString &heading)
    {
        if (!m_rows.empty())
            m_rows.push_back({Zeile::Art::Leer, QStringLiteral(" "), {}, {}});
        m_rows.push_back({Zeile::Art::Gruppe, heading, {}, {}});
    }

    void row(const QString &caption, const QString &value, const QString &rating = {})
    {
        m_rows.push_back({Zeile::Art::Ergebnis, caption, value, rating});
    }

    void gerade(const QString &pair, MerkmalEnum x, MerkmalEnum y)
    {
        row(indent + pair + u": Anstieg"_qs,
            value(&Kalibrierung::StatistikKalibriergeradeAnstiegString, x, y));
        row(indent + pair + u": Achsenabschnitt"_qs,
            value(&Kalibrierung::StatistikKalibriergeradeAchsenabschnittString, x, y));
    }

    QString value(Paaranzeige display, MerkmalEnum x, MerkmalEnum y)
    {
        return orDash([&] { return (m_document.*display)(x, y); });
    }

    Kalibrierung &m_document;
    QString m_direkt;
    QString m_indirekt;
    QString m_kovariable;
    std::vector<Zeile> m_rows;
};

} // namespace

std::vector<Zeile> plausibilitaet::zeilen(Kalibrierung &document)
{
    Liste list(document);
    list.jeMerkmal(QStringLiteral("Mittelwerte"), QStringLiteral("Mittelwert"),
                   &Kalibrierung::StatistikMittelwertString);
    list.jeMerkmal(QStringLiteral("Varianzen"), QStringLiteral("Varianz"),
                   &Kalibrierung::StatistikVarianzString);
    list.jeMerkmal(QStringLiteral("Standardabweichung"), QStringLiteral("Standardabweichung"),
                   &Kalibrierung::StatistikStandardabweichungString);
    list.jePaar(QStringLiteral("Kovarianzen"), QStringLiteral("Kovarianz"),
                &Kalibrierung::StatistikKovarianzString);
    list.jePaar(u"Bestimmtheitsmaße"_qs, u"Bestimmtheitsmaß"_qs,
                &Kalibrierung::StatistikBestimmtheitsmaßString,
                plausibilitaet::urteil(document).wertung);
    list.geraden();
    return list.take();
}

Urteil plausibilitaet::urteil(Kalibrierung &document)
{
    try {
        return ::urteil(document);
    } catch (const RunTimeError &error) {
        return {false, QStringLiteral("kritisch"),
                errorReport(u"Das minimal erforderliche Bestimmtheitsmaß ist keine Zahl. Bitte "
                            u"geben Sie es in den Optionen an:"_qs,
                            error)};
    }
}
