#include "export/auswertungsblatt.h"

#include "core/kalibrierung.h"
#include "core/urteil.h"
#include "export/arbeitsmappe.h"
#include "export/formeln.h"
#include "export/merkmalstexte.h"
#include "export/rechenplan.h"

#include <algorithm>

namespace {

using namespace tabellenplan;

namespace auswertungsspalte {
enum { bezeichnung, wert = wertspalte, wertung, ausgabe, hinweis, schritt, rechenweg };
}

class Auswertungsschreiber
{
public:
    Auswertungsschreiber(Blatt &sheet, Kalibrierung &document, const Messwerttabelle &table,
                         const Rechenplan &plan)
        : m_sheet(sheet), m_document(document), m_table(table), m_plan(plan)
    {
    }

    void schreibe();

private:
    void kopf();
    void gruppe(int row, const QString &caption);
    void zeile(int row, const QString &caption);
    void merkmalsgruppe(const QString &caption, const QString &member,
                        const std::array<Rechenzeile, 3> &rows);
    void paargruppe(const QString &caption, const QString &member,
                    const std::array<Rechenzeile, 3> &rows);
    void geraden();
    void verweis(int row, const QString &caption, const Rechenzeile &source);
    void grundlagen();
    void urteilszeilen();
    QString mindestwert() const;
    QString bedingungGut() const;
    void breiten();

    Blatt &m_sheet;
    Kalibrierung &m_document;
    const Messwerttabelle &m_table;
    const Rechenplan &m_plan;
    const Zellenstil m_group{.fett = true};
    const Zellenstil m_member{.einzug = 1};
    qsizetype m_captionWidth = 40;
    qsizetype m_valueWidth = 12;
};

void Auswertungsschreiber::kopf()
{
    const Zellenstil head{.kopf = true};
    m_sheet.zeilenhoehe(0, 30.0);
    m_sheet.text(0, auswertungsspalte::bezeichnung, u"Statistische Größe"_qs, head);
    m_sheet.text(0, auswertungsspalte::wert, QStringLiteral("Wert"), head);
    m_sheet.text(0, auswertungsspalte::wertung, QStringLiteral("Wertung"), head);
    m_sheet.text(0, auswertungsspalte::ausgabe, QStringLiteral("Wert bei der Ausgabe"), head);
    m_sheet.text(0, auswertungsspalte::hinweis, QStringLiteral("Hinweis"), head);
    m_sheet.text(0, auswertungsspalte::schritt, u"Teilungsschritt der Summe"_qs, head);
    if (!m_plan.gerundet.value_or(false))
        return;
    m_sheet.text(0, auswertungsspalte::rechenweg, QStringLiteral("Nachkommastellen"), head);
    m_sheet.text(0, auswertungsspalte::rechenweg + 1, QStringLiteral("ungerundet"), head);
    m_sheet.text(0, auswertungsspalte::rechenweg + 2,
                 QStringLiteral("in Einheiten der letzten Stelle"), head);
    m_sheet.text(0, auswertungsspalte::rechenweg + 3, QStringLiteral("ganzzahlig gerundet"), head);
}

void Auswertungsschreiber::gruppe(int row, const QString &caption)
{
    m_sheet.text(row, auswertungsspalte::bezeichnung, caption, m_group);
}

void Auswertungsschreiber::zeile(int row, const QString &caption)
{
    m_sheet.text(row, auswertungsspalte::bezeichnung, caption.trimmed(), m_member);
    m_captionWidth = std::max(m_captionWidth, caption.size());
}

void Auswertungsschreiber::merkmalsgruppe(const QString &caption, const QString &member,
                                          const std::array<Rechenzeile, 3> &rows)
{
    gruppe(rows[mDirekt].ort.zeile - 1, caption);
    zeile(rows[mDirekt].ort.zeile,
          member + u" direktes Prüfmerkmal: "_qs + merkmalsbezeichnung(m_document, mDirekt));
    rows[mDirekt].schreibe(m_sheet);
    zeile(rows[mIndirekt].ort.zeile,
          member + u" indirektes Prüfmerkmal: "_qs + merkmalsbezeichnung(m_document, mIndirekt));
    rows[mIndirekt].schreibe(m_sheet);
    zeile(rows[mZ].ort.zeile, member + u' ' + merkmalsbezeichnung(m_document, mZ));
    rows[mZ].schreibe(m_sheet);
}

void Auswertungsschreiber::paargruppe(const QString &caption, const QString &member,
                                      const std::array<Rechenzeile, 3> &rows)
{
    const QString z = merkmalsbezeichnung(m_document, mZ);
    gruppe(rows[0].ort.zeile - 1, caption);
    zeile(rows[0].ort.zeile, member + u" direktes und indirektes Prüfmerkmal"_qs);
    rows[0].schreibe(m_sheet);
    if (&rows == &m_plan.bestimmtheitsmasse)
        m_sheet.formel(rows[0].ort.zeile, auswertungsspalte::wertung,
                       u"IF(%1,\"gut\",\"kritisch\")"_qs.arg(bedingungGut()),
                       m_document.StatistikBestimmtheitsmaßIndirektDirektOk()
                           ? QStringLiteral("gut")
                           : QStringLiteral("kritisch"),
                       m_member);
    zeile(rows[1].ort.zeile, member + u" direktes Prüfmerkmal und "_qs + z);
    rows[1].schreibe(m_sheet);
    zeile(rows[2].ort.zeile, member + u" indirektes Prüfmerkmal und "_qs + z);
    rows[2].schreibe(m_sheet);
}

// The three lines of the plausibility page; they are computed on the sheet of lines.
void Auswertungsschreiber::geraden()
{
    const QString z = merkmalsbezeichnung(m_document, mZ);
    const std::array<QString, 3> captions{u"direktes und indirektes Prüfmerkmal"_qs,
                                          u"direktes Prüfmerkmal und "_qs + z,
                                          u"indirektes Prüfmerkmal und "_qs + z};
    gruppe(geradenzeilen, QStringLiteral("Kalibriergeraden"));
    int row = geradenzeilen;
    for (std::size_t pair = 0; pair < captions.size(); ++pair) {
        const Geradenzeilen &line = m_plan.geraden[2 * pair];
        verweis(++row, captions[pair] + u": Anstieg"_qs, line.anstieg);
        verweis(++row, captions[pair] + u": Achsenabschnitt"_qs, line.achsenabschnitt);
    }
}

void Auswertungsschreiber::verweis(int row, const QString &caption, const Rechenzeile &source)
{
    zeile(row, caption);
    Rechenzeile copy;
    copy.ort = {auswertung,
                row,
                auswertungsspalte::wert,
                auswertungsspalte::ausgabe,
                auswertungsspalte::hinweis,
                auswertungsspalte::rechenweg,
                auswertungsspalte::schritt};
    copy.zahlenformat = source.zahlenformat;
    copy.wert = source.wert;
    copy.formel = formeln::geschuetzt({source.wertzelle()}, source.wertzelle());
    copy.hinweis = source.hinweis;
    copy.hinweisformel = source.hinweiszelle() + u"&\"\""_qs;
    copy.schreibe(m_sheet);
}

QString Auswertungsschreiber::mindestwert() const
{
    return formeln::zelle(auswertung, minimumzeile, auswertungsspalte::wert);
}

// As the program decides: R2 >= minimum - 8 epsilon * minimum, where 8 epsilon is 2^-49. By the
// sign of a logarithm, because the spreadsheet's own comparison forgives more than that; it tells
// numbers apart whose quotient is too large or too small to be one.
QString Auswertungsschreiber::bedingungGut() const
{
    const QString reached = m_plan.bestimmtheitsmasse[0].wertzelle();
    const QString minimum = mindestwert();
    return u"IF(%1,IF(%3<=0,TRUE,IF(%2<=0,FALSE,IFERROR(LN(%2/(%3-2^(-49)*%3))>=0,%2>%3))),FALSE)"_qs
        .arg(formeln::allesZahlen({reached, minimum}), reached, minimum);
}

void Auswertungsschreiber::grundlagen()
{
    gruppe(grundlagenzeile, u"Grundlagen und Urteil"_qs);
    zeile(punktezeile, u"Anzahl der Prüfpunkte"_qs);
    m_sheet.formel(punktezeile, auswertungsspalte::wert, u"COUNT(%1)"_qs.arg(m_table.feldnummern),
                   m_table.punkte, {.zahlenformat = QStringLiteral("#,##0")});
    zeile(minimumzeile, u"minimal erforderliches Bestimmtheitsmaß"_qs);
    try {
        m_sheet.zahl(minimumzeile, auswertungsspalte::wert,
                     m_document.MinBestimmtheitsmaßIndirektDirekt());
    } catch (const RunTimeError &error) {
        m_sheet.text(minimumzeile, auswertungsspalte::hinweis,
                     u"Das minimale Bestimmtheitsmaß ist nicht lesbar: "_qs + error.description());
    }
    if (m_plan.gerundet)
        zeile(minimumzeile + 1, *m_plan.gerundet ? u"Zwischenergebnisse sind gerundet."_qs
                                                 : u"Zwischenergebnisse sind nicht gerundet."_qs);
}

void Auswertungsschreiber::urteilszeilen()
{
    constexpr int row = minimumzeile + 2;
    const auto sentence = [this](bool good) {
        const QString middle = good ? u"über"_qs : u"nicht über"_qs;
        const QString end = good ? u"Somit kann die ermittelte Kalibriergerade für die Umrechnung "
                                   u"zwischen den Prüfmerkmalen genutzt werden."_qs
                                 : u"Die ermittelte Kalibriergerade darf somit nicht für die "
                                   u"Umrechnung zwischen den Prüfmerkmalen genutzt werden!"_qs;
        return formeln::text(
                   u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten "
                   u"Prüfmerkmal liegt %1 dem minimal erforderlichen Wert von "_qs.arg(middle)) +
               u'&' + mindestwert() + u"&\".\"&CHAR(10)&"_qs + formeln::text(end);
    };
    QString now;
    try {
        now = urteil(m_document, QStringLiteral("\n")).satz;
    } catch (const RunTimeError &) {
        return; // the row of the minimum says why
    }
    const Zellenstil style{.fett = true, .umbruch = true};
    m_sheet.verbinde(row, auswertungsspalte::bezeichnung, auswertungsspalte::hinweis, style);
    m_sheet.formel(row, auswertungsspalte::bezeichnung,
                   u"IF(%1,%2,%3)"_qs.arg(bedingungGut(), sentence(true), sentence(false)), now,
                   style);
    constexpr double twoLinesHigh = 34.0;
    m_sheet.zeilenhoehe(row, twoLinesHigh);
}

void Auswertungsschreiber::breiten()
{
    const auto widen = [&](const Rechenzeile &row) {
        m_valueWidth = std::max(m_valueWidth, row.anzeigebreite(m_document.values()));
    };
    for (const auto *rows : {&m_plan.mittelwerte, &m_plan.varianzen, &m_plan.standardabweichungen,
                             &m_plan.kovarianzen, &m_plan.bestimmtheitsmasse})
        std::for_each(rows->begin(), rows->end(), widen);
    for (const Geradenzeilen &line : m_plan.geraden) {
        widen(line.anstieg);
        widen(line.achsenabschnitt);
    }
    constexpr double margin = 2.0;
    const double values = static_cast<double>(m_valueWidth) + margin;
    m_sheet.spaltenbreite(auswertungsspalte::bezeichnung, auswertungsspalte::bezeichnung,
                          static_cast<double>(m_captionWidth) + margin);
    m_sheet.spaltenbreite(auswertungsspalte::wert, auswertungsspalte::wert, values);
    m_sheet.spaltenbreite(auswertungsspalte::wertung, auswertungsspalte::wertung, 10);
    m_sheet.spaltenbreite(auswertungsspalte::ausgabe, auswertungsspalte::ausgabe, values);
    m_sheet.spaltenbreite(auswertungsspalte::hinweis, auswertungsspalte::hinweis, 62);
    m_sheet.spaltenbreite(auswertungsspalte::schritt, auswertungsspalte::schritt, 20);
    if (m_plan.gerundet.value_or(false))
        m_sheet.spaltenbreite(auswertungsspalte::rechenweg, auswertungsspalte::rechenweg + 3, 20);
}

void Auswertungsschreiber::schreibe()
{
    m_sheet.seite(true, 1);
    kopf();
    merkmalsgruppe(QStringLiteral("Mittelwerte"), QStringLiteral("Mittelwert"), m_plan.mittelwerte);
    merkmalsgruppe(QStringLiteral("Varianzen"), QStringLiteral("Varianz"), m_plan.varianzen);
    merkmalsgruppe(QStringLiteral("Standardabweichung"), QStringLiteral("Standardabweichung"),
                   m_plan.standardabweichungen);
    paargruppe(QStringLiteral("Kovarianzen"), QStringLiteral("Kovarianz"), m_plan.kovarianzen);
    paargruppe(u"Bestimmtheitsmaße"_qs, u"Bestimmtheitsmaß"_qs, m_plan.bestimmtheitsmasse);
    geraden();
    grundlagen();
    urteilszeilen();
    m_sheet.druckbereich(minimumzeile + 2, auswertungsspalte::hinweis);
    breiten();
}

} // namespace

void schreibeAuswertung(Blatt &sheet, Kalibrierung &document, const Messwerttabelle &table,
                        const Rechenplan &plan)
{
    Auswertungsschreiber(sheet, document, table, plan).schreibe();
}
