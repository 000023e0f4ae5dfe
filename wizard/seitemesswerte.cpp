#include "wizard/seitemesswerte.h"

#include "core/kalibrierung.h"
#include "core/runtimeerror.h"
#include "grid/gridcontrol.h"
#include "wizard/produkttexte.h"
#include "wizard/tabelle.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr std::int32_t firstRow = 1;       // below the headers
constexpr std::int32_t measuredNames = 50; // of points; a page must not wait for thousands

} // namespace

SeiteMesswerte::SeiteMesswerte(const Seitenkontext &context, QWidget *parent)
    : AssistentSeite(context, parent)
    , m_table(
          new Tabelle({u"fgMesswerte"_qs, u"txtFGData"_qs, u"Messwerte"_qs}, context.grid, this))
    , m_cells(m_table->grid())
    , m_notice(new QLabel(this))
{
    auto *column = addColumn(3, u"Schritt 3: Messwerteingabe"_qs,
                             u"Geben Sie zu jedem Prüfpunkt beide Messwerte ein. Einen Block aus "
                             u"einer Tabellenkalkulation fügen Sie mit Strg+V ein."_qs);
    m_notice->setObjectName(u"labHinweis3"_qs);
    m_notice->setWordWrap(true);
    m_notice->hide();
    column->addWidget(m_notice);
    column->addWidget(m_table, 1);
    connect(m_table, &Tabelle::AfterCellEdit, this, &SeiteMesswerte::cellEdited);
    connect(m_table, &Tabelle::pastedTooMuch, this, &SeiteMesswerte::reportLeftOut);
}

void SeiteMesswerte::fill()
{
    QString trouble;
    try {
        readFieldSizes();
    } catch (const RunTimeError &error) {
        m_firstRows.assign(1, firstRow);
        trouble = errorReport(u"Die Messwerte können nicht angezeigt werden:"_qs, error);
    }
    m_notice->setText(shownLines(trouble));
    m_notice->setVisible(!trouble.isEmpty());
    m_cells.clear();
    setColumns();
    m_table->grid().setColAlignment(DirectColumn, Qt::AlignRight);
    m_table->grid().setColAlignment(IndirectColumn, Qt::AlignRight);
    m_table->grid().setSourcedRows(m_firstRows.back(), [this](int row) { return rowTexts(row); });
    m_table->showCell(firstRow, DirectColumn);
    m_table->grid().refresh(); // all of it, not only what is laid out anew
}

// Every column gets as much as its texts need, none starves for a very long name.
void SeiteMesswerte::setColumns()
{
    const QString direct = document().DirektesPrüfmerkmal().Bezeichung();
    const QString indirect = document().IndirektesPrüfmerkmal().Bezeichung();
    const QString label =
        u"88 (%1 = 88)"_qs.arg(document().Kovariable().Bezeichung()); // a usual field
    const double em = fontMetrics().height();
    const auto weight = [&](const QString &text) {
        return std::clamp(fontMetrics().horizontalAdvance(text) + em, 8.0 * em, 24.0 * em);
    };
    double pointWeight = 0.0;
    for (std::int32_t point = 1; point <= std::min(mostPoints(), measuredNames); ++point)
        pointWeight = std::max(pointWeight, weight(document().PrüfpunktName(point)));
    m_table->setColumns({u"Prüffeld"_qs, u"Prüfpunkt"_qs, u"Direktes Prüfmerkmal\n"_qs + direct,
                         u"Indirektes Prüfmerkmal\n"_qs + indirect},
                        2,
                        std::array{weight(label), pointWeight, weight(direct), weight(indirect)});
}

std::int32_t SeiteMesswerte::mostPoints() const
{
    std::int32_t most = 0;
    for (std::size_t field = 1; field < m_firstRows.size(); ++field)
        most = std::max(most, m_firstRows[field] - m_firstRows[field - 1]);
    return most;
}

void SeiteMesswerte::readFieldSizes()
{
    // More points than are evaluated are refused before any memory is taken for them.
    if (document().PrüfpunkteTotal() > Auswertung::maximumPoints)
        throw RunTimeError(ErrorNumber::Overflow);
    const std::int32_t fields = document().PrüffelderAnzahl();
    m_firstRows.assign(1, firstRow);
    for (std::int32_t field = 1; field <= fields; ++field)
        m_firstRows.push_back(m_firstRows.back() +
                              std::max(document().PrüffeldPrüfpunkte(field), 0));
}

SeiteMesswerte::Place SeiteMesswerte::place(int row) const
{
    const auto next = std::upper_bound(m_firstRows.begin(), m_firstRows.end(), row);
    const auto field = static_cast<std::int32_t>(next - m_firstRows.begin());
    return {field, row - *(next - 1) + 1};
}

QStringList SeiteMesswerte::rowTexts(int row)
{
    const Place where = place(row);
    const Values &values = document().values();
    QString value;
    try {
        value = values.text(document().PrüffeldWert(where.field));
    } catch (const RunTimeError &) {
        value = QStringLiteral("(Fehler)");
    }
    const QStringList texts{QString::number(where.field) + u" ("_qs +
                                document().Kovariable().Bezeichung() + u" = "_qs + value + u')',
                            document().PrüfpunktName(where.point),
                            document().MesswertString(pmDirekt, where.field, where.point),
                            document().MesswertString(pmIndirekt, where.field, where.point)};
    m_cells.fill(row, texts);
    return texts;
}

void SeiteMesswerte::cellEdited(int row, int col, QString &newText, bool &cancel)
{
    const QString typed = newText;
    emit valueEdited(row, col, newText, cancel);
    if (!cancel && (col == DirectColumn || col == IndirectColumn))
        m_cells.typeNumber(row, col, typed, document().values(),
                           storedNumber(place(row), kindOf(col)));
}

std::optional<double> SeiteMesswerte::storedNumber(const Place &where, PrüfmerkmalEnum kind) const
try {
    return document().values().number(document().Messwert(kind, where.field, where.point));
} catch (const RunTimeError &) {
    return std::nullopt;
}

void SeiteMesswerte::formatEdited(int, int col, QString &newText) const
{
    const Values &values = document().values();
    if ((col != DirectColumn && col != IndirectColumn) || !values.isNumeric(newText))
        return;
    Prüfmerkmal &merkmal =
        col == DirectColumn ? document().DirektesPrüfmerkmal() : document().IndirektesPrüfmerkmal();
    try {
        newText = values.display(values.number(newText), merkmal.Nachkommastellen());
    } catch (const RunTimeError &) {
        return; // without readable places the text stays as typed
    }
}

bool SeiteMesswerte::takeOver(Anlass anlass)
{
    int badRow = 0;
    PrüfmerkmalEnum badKind = pmDirekt;
    for (int row = firstRow; row < m_firstRows.back(); ++row) {
        for (const PrüfmerkmalEnum kind : {pmDirekt, pmIndirekt}) {
            if (!takeCellOver(row, kind, anlass) && badRow == 0) {
                badRow = row;
                badKind = kind;
            }
        }
    }
    return badRow == 0 || refuseCell(badRow, badKind);
}

bool SeiteMesswerte::takeCellOver(int row, PrüfmerkmalEnum kind, Anlass anlass)
{
    const Place where = place(row);
    if (!m_cells.isChanged(row, columnOf(kind)))
        return anlass != Anlass::Vor || storedValueIsGood(where, kind);
    const QString text = m_cells.text(row, columnOf(kind));
    if (text.trimmed().isEmpty()) {
        if (anlass == Anlass::Vor)
            return false;
        document().removeMesswert(kind, where.field, where.point);
    } else {
        try {
            document().setMesswert(kind, where.field, where.point, text);
        } catch (const RunTimeError &) {
            return false;
        }
    }
    m_cells.setStored(row, columnOf(kind));
    return true;
}

bool SeiteMesswerte::storedValueIsGood(const Place &where, PrüfmerkmalEnum kind) const
{
    const Variant value = document().Messwert(kind, where.field, where.point);
    if (const auto *text = std::get_if<QString>(&value))
        return document().values().isNumeric(*text);
    return std::holds_alternative<double>(value) || std::holds_alternative<std::int32_t>(value);
}

// Every text that is no number raises the same error, an empty one and one out of range included.
bool SeiteMesswerte::refuseCell(int row, PrüfmerkmalEnum kind)
{
    const Place where = place(row);
    m_table->showCell(row, columnOf(kind));
    return refuse(Dialogs::Icon::Exclamation,
                  errorReport(u"Bei dem Auswerten des Messwertes für die Messreihe "_qs +
                                  QString::number(where.field) + u" und Prüfpunkt "_qs +
                                  QString::number(where.point) + u" frat ein Fehler auf:"_qs,
                              RunTimeError(ErrorNumber::TypeMismatch)),
                  m_table);
}

void SeiteMesswerte::finishEditing()
{
    m_table->finishEditing();
}

Eingaben SeiteMesswerte::entries() const
{
    Eingaben entries;
    m_cells.addEntries(entries, {DirectColumn, IndirectColumn});
    m_table->addOpenEditor(entries);
    return entries;
}

void SeiteMesswerte::restoreEntries(const Eingaben &entries)
{
    m_table->restoreCells(entries);
    m_cells.restoreEntries(entries);
    m_table->reopenEditor(entries);
}

QWidget *SeiteMesswerte::firstControl() const
{
    return m_table;
}
