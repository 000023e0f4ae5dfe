#include "export/messwerteblatt.h"

#include "core/kalibrierung.h"
#include "export/arbeitsmappe.h"
#include "export/formeln.h"
#include "export/merkmalstexte.h"
#include "export/zellentext.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

namespace messwertspalte {
enum { feldnummer, feldname, punktname, kovariable, direkt, indirekt, hinweis };
}

constexpr std::array<int, 3> spalteJeMerkmal{messwertspalte::direkt, messwertspalte::indirekt,
                                             messwertspalte::kovariable};

constexpr qsizetype narrowestValue = 16; ///< width of a column of values, in characters

// The height of a heading that wraps in a column of values.
double kopfhoehe(const QStringList &texts)
{
    constexpr double lineHeight = 15.0;
    qsizetype lines = 2;
    for (const QString &text : texts) {
        qsizetype needed = 0;
        for (const QString &part : text.split(u'\n'))
            needed += 1 + part.size() / (narrowestValue - 2);
        lines = std::max(lines, needed);
    }
    return lineHeight * static_cast<double>(std::min<qsizetype>(lines, 12));
}

class Messwertschreiber
{
public:
    Messwertschreiber(Blatt &sheet, Kalibrierung &document) : m_sheet(sheet), m_document(document)
    {
        for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ})
            m_styles[merkmal] = {.zahlenformat = merkmalsformat(document, merkmal)};
    }

    void kopf();
    void punkt(int field, int point);
    void breiten();
    Messwerttabelle &tabelle() { return m_table; }

private:
    Variant value(MerkmalEnum merkmal, int field, int point) const;
    void wert(int row, MerkmalEnum merkmal, int field, int point);
    void hinweis(int row);
    QString grund(const RunTimeError &error, const Variant &stored) const;

    Blatt &m_sheet;
    Kalibrierung &m_document;
    std::array<Zellenstil, 3> m_styles;
    std::array<double, 3> m_largest{};
    std::vector<std::pair<MerkmalEnum, QString>> m_notes; ///< of the row that is being written
    qsizetype m_nameWidth = 12;
    qsizetype m_pointWidth = 14;
    qsizetype m_noteWidth = 12;
    Messwerttabelle m_table;
};

void Messwertschreiber::kopf()
{
    const Zellenstil head{.kopf = true};
    m_sheet.text(0, messwertspalte::feldnummer, u"Prüffeld Nr."_qs, head);
    m_sheet.text(0, messwertspalte::feldname, u"Prüffeld"_qs, head);
    m_sheet.text(0, messwertspalte::punktname, u"Prüfpunkt"_qs, head);
    QStringList captions;
    for (const MerkmalEnum merkmal : {mZ, mDirekt, mIndirekt}) {
        const QString text = merkmalMitEinheit(m_document, merkmal);
        captions += text.isEmpty() ? merkmalsart(merkmal) : merkmalsart(merkmal) + u":\n"_qs + text;
        m_sheet.text(0, spalteJeMerkmal[merkmal], captions.last(), head);
    }
    m_sheet.zeilenhoehe(0, kopfhoehe(captions));
    m_sheet.text(0, messwertspalte::hinweis, QStringLiteral("Hinweis"), head);
}

void Messwertschreiber::punkt(int field, int point)
{
    const int row = ++m_table.punkte;
    m_sheet.zahl(row, messwertspalte::feldnummer, field);
    const Zellenstil indented{.einzug = 1};
    const QString name = m_document.PrüffeldName(field);
    const QString pointName = m_document.PrüfpunktName(point);
    m_sheet.text(row, messwertspalte::feldname, name, indented);
    m_sheet.text(row, messwertspalte::punktname, pointName, indented);
    m_notes.clear();
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ})
        wert(row, merkmal, field, point);
    if (!m_notes.empty())
        hinweis(row);
    m_nameWidth = std::max(m_nameWidth, name.size());
    m_pointWidth = std::max(m_pointWidth, pointName.size());
}

// A note disappears as soon as its cell holds a number.
void Messwertschreiber::hinweis(int row)
{
    const QString separator = u"; "_qs;
    QStringList parts;
    QStringList texts;
    for (const auto &[merkmal, text] : m_notes) {
        const QString cell = formeln::zelle(m_sheet.name(), row, spalteJeMerkmal[merkmal]);
        parts +=
            u"IF(%1,\"\",%2)"_qs.arg(formeln::allesZahlen({cell}), formeln::text(separator + text));
        texts += text;
    }
    const QString note = texts.join(separator);
    m_sheet.formel(
        row, messwertspalte::hinweis,
        u"MID(%1,%2,999)"_qs.arg(parts.join(u'&'), QString::number(separator.size() + 1)), note,
        {.einzug = 1});
    m_noteWidth = std::max(m_noteWidth, note.size());
}

Variant Messwertschreiber::value(MerkmalEnum merkmal, int field, int point) const
{
    if (merkmal == mZ)
        return m_document.PrüffeldWert(field);
    return m_document.Messwert(merkmal == mDirekt ? pmDirekt : pmIndirekt, field, point);
}

void Messwertschreiber::wert(int row, MerkmalEnum merkmal, int field, int point)
{
    Stichprobe &sample = m_table.stichproben[merkmal];
    Variant stored = Null{};
    try {
        stored = value(merkmal, field, point);
        const double number = m_document.values().number(stored);
        if (!std::isfinite(number))
            throw RunTimeError(ErrorNumber::Overflow);
        m_sheet.zahl(row, spalteJeMerkmal[merkmal], number, m_styles[merkmal]);
        sample.werte.push_back(number);
        m_largest[merkmal] = std::max(m_largest[merkmal], std::abs(number));
    } catch (const RunTimeError &error) {
        sample.luecke = true;
        m_notes.emplace_back(merkmal, merkmalsart(merkmal) + u": "_qs + grund(error, stored));
    }
}

QString Messwertschreiber::grund(const RunTimeError &error, const Variant &stored) const
{
    if (error.errorNumber() == ErrorNumber::InvalidUseOfNull)
        return QStringLiteral("fehlt");
    const auto *text = std::get_if<QString>(&stored);
    if (!text)
        return error.description();
    if (text->trimmed().isEmpty())
        return QStringLiteral("leer");
    // A text in a formula may be 255 characters long and knows no escapes.
    constexpr qsizetype longest = 100;
    const QString whole = diagrammtext(*text, text->size());
    const QString shown = diagrammtext(whole, longest);
    return u"„%1“: %2"_qs.arg(shown.size() < whole.size() ? shown + u'…' : shown,
                              error.description());
}

void Messwertschreiber::breiten()
{
    constexpr double margin = 2.0;
    m_sheet.spaltenbreite(messwertspalte::feldnummer, messwertspalte::feldnummer, 9);
    m_sheet.spaltenbreite(messwertspalte::feldname, messwertspalte::feldname,
                          double(m_nameWidth) + margin);
    m_sheet.spaltenbreite(messwertspalte::punktname, messwertspalte::punktname,
                          double(m_pointWidth) + margin);
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        const qsizetype widest = merkmalsbreite(m_document, merkmal, m_largest[merkmal]);
        m_sheet.spaltenbreite(spalteJeMerkmal[merkmal], spalteJeMerkmal[merkmal],
                              double(std::max(widest, narrowestValue)) + margin);
    }
    m_sheet.spaltenbreite(messwertspalte::hinweis, messwertspalte::hinweis,
                          double(m_noteWidth) + margin);
}

} // namespace

std::vector<int> punkteJeFeld(Kalibrierung &document)
{
    const int fields = document.PrüffelderAnzahl();
    std::vector<int> result;
    std::int64_t total = 0;
    for (int field = 1; field <= fields; ++field) {
        result.push_back(std::max(document.PrüffeldPrüfpunkte(field), 0));
        total += result.back();
        if (total > Auswertung::maximumPoints || field > Auswertung::maximumPoints)
            throw RunTimeError(ErrorNumber::Overflow);
    }
    return result;
}

Messwerttabelle schreibeMesswerte(Blatt &sheet, Kalibrierung &document,
                                  const std::vector<int> &pointsOfFields,
                                  const Zeilenfortschritt &progress)
{
    Messwertschreiber writer(sheet, document);
    sheet.seite(false, 1);
    writer.kopf();
    int field = 0;
    for (const int points : pointsOfFields) {
        ++field;
        for (int point = 1; point <= points; ++point) {
            writer.punkt(field, point);
            if (!progress())
                return writer.tabelle();
        }
    }
    writer.breiten();
    Messwerttabelle &table = writer.tabelle();
    const int last = std::max(table.punkte, 1);
    table.feldnummern = formeln::spaltenbereich(sheet.name(), messwertspalte::feldnummer, 1, last);
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ})
        table.stichproben[merkmal].bereich =
            formeln::spaltenbereich(sheet.name(), spalteJeMerkmal[merkmal], 1, last);
    return std::move(table);
}
