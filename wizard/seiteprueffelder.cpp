#include "wizard/seiteprueffelder.h"

#include "core/kalibrierung.h"
#include "core/runtimeerror.h"
#include "grid/gridcontrol.h"
#include "wizard/produkttexte.h"
#include "wizard/tabelle.h"
#include "wizard/zahlen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr auto exclamation = Dialogs::Icon::Exclamation;
constexpr std::int32_t mostRows = 1'000'000; // as many points as are evaluated

const QString errorText = QStringLiteral("(Fehler)");

// What read() gives, or \a fallback where the document raises an error.
template <typename Read>
auto orElse(Read read, decltype(read()) fallback) -> decltype(read())
{
    try {
        return read();
    } catch (const RunTimeError &) {
        return fallback;
    }
}

} // namespace

SeitePrueffelder::SeitePrueffelder(const Seitenkontext &context, QWidget *parent)
    : AssistentSeite(context, parent)
    , m_fields(new Tabelle(
          {u"fgKeysMessreihen"_qs, u"txtFGKeysMessreihen"_qs, u"Werte der Prüffelder"_qs},
          context.grid, this))
    , m_points(new Tabelle(
          {u"fgKeysPrüfpunkte"_qs, u"txtFGKeysPrüfpunkte"_qs, u"Namen der Prüfpunkte"_qs},
          context.grid, this))
    , m_cells(m_fields->grid())
    , m_pointNames(context.document, *m_points)
    , m_notice(new QLabel(this))
{
    auto *column = addColumn(2, u"Schritt 2: Werte der Prüffelder"_qs,
                             u"Geben Sie jedem Prüffeld seinen Wert der Kovariable und die Anzahl "
                             u"seiner Prüfpunkte."_qs);
    m_notice->setObjectName(u"labHinweis2"_qs);
    m_notice->setWordWrap(true);
    m_notice->hide();
    column->addWidget(m_notice);
    auto *row = new QHBoxLayout;
    row->setSpacing(fontMetrics().height());
    row->addWidget(labelled(u"We&rte der Prüffelder:"_qs, m_fields), 3);
    row->addWidget(labelled(u"&Namen der Prüfpunkte:"_qs, m_points), 2);
    column->addLayout(row, 1);

    connect(m_fields, &Tabelle::AfterCellEdit, this, &SeitePrueffelder::cellEdited);
    connect(m_fields, &Tabelle::changed, this, [this] {
        // Once for many cells that are cleared one by one.
        if (!std::exchange(m_showPointsPending, true))
            QMetaObject::invokeMethod(this, &SeitePrueffelder::showPoints, Qt::QueuedConnection);
    });
    for (const Tabelle *table : {m_fields, m_points})
        connect(table, &Tabelle::pastedTooMuch, this, &SeitePrueffelder::reportLeftOut);
}

QWidget *SeitePrueffelder::labelled(const QString &caption, Tabelle *table)
{
    auto *area = new QWidget(this);
    auto *column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(fontMetrics().height() / 4);
    auto *label = new QLabel(caption, area);
    label->setBuddy(table->grid().table());
    column->addWidget(label);
    column->addWidget(table, 1);
    return area;
}

void SeitePrueffelder::fill()
{
    QString trouble;
    std::int32_t count = 0;
    try {
        count = document().PrüffelderAnzahl();
        if (count > mostRows)
            throw RunTimeError(ErrorNumber::Overflow);
    } catch (const RunTimeError &error) {
        count = 0;
        trouble = errorReport(u"Die Prüffelder können nicht angezeigt werden:"_qs, error);
    }
    m_notice->setText(shownLines(trouble));
    m_notice->setVisible(!trouble.isEmpty());
    fillFields(std::max(count, 0));
    m_pointNames.fill();
    showPoints();
}

void SeitePrueffelder::fillFields(std::int32_t count)
{
    m_cells.clear();
    m_fieldCount = count;
    m_fields->setColumns(
        {u"Prüffeld"_qs, u"Anzahl Prüfpunkte"_qs, document().Kovariable().Bezeichung()}, 0,
        std::array{3.0, 2.0, 3.0});
    m_fields->grid().setColAlignment(PointsColumn, Qt::AlignRight);
    m_fields->grid().setColAlignment(ValueColumn, Qt::AlignRight);
    m_fields->grid().setSourcedRows(count + 1, [this](int row) { return fieldRow(row); });
    m_fields->showCell(1, NameColumn);
    m_fields->grid().refresh(); // all of it, not only what is laid out anew
}

QStringList SeitePrueffelder::fieldRow(int row)
{
    const Values &values = document().values();
    const std::int32_t field = row;
    const QStringList texts{
        document().PrüffeldName(field),
        orElse([&] { return values.text(Variant(document().PrüffeldPrüfpunkte(field))); }, {}),
        orElse(
            [&] {
                return values.display(document().PrüffeldWert(field),
                                      document().Kovariable().Nachkommastellen());
            },
            errorText)};
    m_cells.fill(row, texts);
    return texts;
}

// As many points as the largest field has, the typed numbers included.
int SeitePrueffelder::mostPoints() const
{
    std::int32_t most = 0;
    for (int row = 1; row <= m_fieldCount; ++row) {
        const std::int32_t count =
            m_cells.isChanged(row, PointsColumn)
                ? std::min(readCount(m_cells.text(row, PointsColumn)), maximumCount)
                : orElse([&] { return document().PrüffeldPrüfpunkte(row); }, 0);
        most = std::max(most, count);
    }
    return std::min(most, mostRows);
}

void SeitePrueffelder::showPoints()
{
    m_showPointsPending = false;
    m_pointNames.list(mostPoints());
}

void SeitePrueffelder::cellEdited(int row, int col, QString &newText, bool &cancel)
{
    const QString typed = newText;
    emit fieldEdited(row, col, newText, cancel);
    if (!cancel && col == ValueColumn)
        m_cells.typeNumber(
            row, col, typed, document().values(),
            orElse([&] { return std::optional(document().PrüffeldWert(row)); }, std::nullopt));
}

void SeitePrueffelder::formatEdited(int, int col, QString &newText) const
{
    const Values &values = document().values();
    if (col != ValueColumn || !values.isNumeric(newText))
        return;
    newText = orElse(
        [&] {
            return values.display(values.number(newText),
                                  document().Kovariable().Nachkommastellen());
        },
        newText);
}

bool SeitePrueffelder::takeOver(Anlass anlass)
{
    m_pointNames.takeOver();
    return takeFieldsOver(anlass);
}

bool SeitePrueffelder::takeFieldsOver(Anlass anlass)
{
    for (int row = 1; row <= m_fieldCount; ++row) {
        const bool needed = m_cells.isFilled(row);
        if (anlass != Anlass::Vor && !needed)
            continue; // never shown, so never changed
        const Fault bad = anlass == Anlass::Zurück ? Fault() : fault(row, anlass);
        if (needed)
            storeRow(row, bad);
        if (!bad.text.isEmpty()) {
            m_fields->showCell(row, bad.col);
            return refuse(exclamation, bad.text, m_fields);
        }
    }
    return true;
}

SeitePrueffelder::Fault SeitePrueffelder::fault(int row, Anlass anlass) const
{
    const bool forward = anlass == Anlass::Vor;
    if (forward && (m_cells.isChanged(row, NameColumn) ? m_cells.text(row, NameColumn)
                                                       : document().PrüffeldName(row))
                       .trimmed()
                       .isEmpty())
        return {u"Der Name einer Messreihe darf nicht leer sein."_qs, NameColumn};

    const QString points = m_cells.text(row, PointsColumn);
    const bool typed = m_cells.isChanged(row, PointsColumn);
    if (typed ? leadingNumber(points) < minimumCount
              : forward &&
                    orElse([&] { return document().PrüffeldPrüfpunkte(row); }, 0) < minimumCount)
        return {u"Die Anzahl der Prüfpunkte einer Messreihe darf nicht leer oder kleiner als 3 "
                u"sein."_qs,
                PointsColumn};
    if (typed && readCount(points) > maximumCount)
        return {u"Die Anzahl der Prüfpunkte einer Messreihe darf nicht größer als 9999 sein."_qs,
                PointsColumn};

    const bool number =
        m_cells.isChanged(row, ValueColumn)
            ? document().values().isNumeric(m_cells.text(row, ValueColumn))
            : !forward || orElse([&] { return document().PrüffeldWert(row), true; }, false);
    if (!number)
        return {u"Der Wert der Kovariable einer Messreihe muss eine Zahl sein."_qs, ValueColumn};
    return {};
}

// What was changed and can be stored; the rest keeps its old value, and so does what is refused.
void SeitePrueffelder::storeRow(int row, const Fault &refused)
{
    const bool nameRefused = !refused.text.isEmpty() && refused.col == NameColumn;
    if (m_cells.isChanged(row, NameColumn) && !nameRefused) {
        document().setPrüffeldName(row, m_cells.text(row, NameColumn));
        m_cells.setStored(row, NameColumn);
    }
    const QString points = m_cells.text(row, PointsColumn);
    const std::int32_t count = readCount(points);
    if (m_cells.isChanged(row, PointsColumn) && leadingNumber(points) >= minimumCount &&
        count <= maximumCount) {
        document().setPrüffeldPrüfpunkte(row, count);
        m_cells.setStored(row, PointsColumn);
    }
    const QString value = m_cells.text(row, ValueColumn);
    if (m_cells.isChanged(row, ValueColumn) && document().values().isNumeric(value)) {
        document().setPrüffeldWert(row, document().values().number(QStringView(value)));
        m_cells.setStored(row, ValueColumn);
    }
}

void SeitePrueffelder::finishEditing()
{
    m_fields->finishEditing();
    m_points->finishEditing();
    showPoints();
}

Eingaben SeitePrueffelder::entries() const
{
    Eingaben entries;
    m_cells.addEntries(entries, {NameColumn, PointsColumn, ValueColumn});
    m_pointNames.addEntries(entries);
    m_fields->addOpenEditor(entries);
    m_points->addOpenEditor(entries);
    return entries;
}

void SeitePrueffelder::restoreEntries(const Eingaben &entries)
{
    m_fields->restoreCells(entries);
    m_cells.restoreEntries(entries);
    showPoints(); // as many as the restored counts say
    m_pointNames.restoreEntries(entries);
    m_points->reopenEditor(entries);
    m_fields->reopenEditor(entries);
}

QWidget *SeitePrueffelder::firstControl() const
{
    return m_fields;
}
