#include "wizard/punktnamen.h"

#include "core/kalibrierung.h"
#include "grid/gridcontrol.h"
#include "wizard/tabelle.h"

#include <array>

namespace {

constexpr int numberColumn = 0;
constexpr int nameColumn = 1;

} // namespace

void Punktnamen::fill()
{
    m_filled.clear();
    m_hidden.clear();
    m_table.setColumns({u"Nr."_qs, u"Prüfpunkt"_qs}, 1, std::array{1.0, 4.0});
    m_table.grid().setColAlignment(numberColumn, Qt::AlignRight);
    m_table.grid().setSourcedRows(1, [this](int point) { return row(point); });
}

QStringList Punktnamen::row(int point)
{
    const QString name = m_document.PrüfpunktName(point);
    m_filled.insert(point, name);
    return {QString::number(point), m_hidden.contains(point) ? m_hidden.take(point) : name};
}

void Punktnamen::list(int count)
{
    GridControl &grid = m_table.grid();
    for (int point = count + 1; point < grid.rows(); ++point) {
        const auto filled = m_filled.constFind(point);
        if (filled == m_filled.constEnd())
            continue;
        if (grid.textMatrix(point, nameColumn) != *filled)
            m_hidden.insert(point, grid.textMatrix(point, nameColumn));
        m_filled.erase(filled);
    }
    grid.setRows(count + 1);
}

void Punktnamen::takeOver()
{
    for (auto filled = m_filled.begin(); filled != m_filled.end(); ++filled) {
        const QString name = m_table.grid().textMatrix(filled.key(), nameColumn);
        if (name == *filled)
            continue;
        store(filled.key(), name);
        *filled = name;
    }
    for (auto typed = m_hidden.constBegin(); typed != m_hidden.constEnd(); ++typed)
        store(typed.key(), *typed);
    m_hidden.clear();
}

void Punktnamen::store(int point, const QString &name)
{
    m_document.setPrüfpunktName(point,
                                name.trimmed().isEmpty() ? m_document.PrüfpunktKey(point) : name);
}

void Punktnamen::addEntries(Eingaben &entries) const
{
    const GridControl &grid = m_table.grid();
    const auto insert = [&](int point, const QString &name) {
        entries.insert(eingaben::cell(grid.objectName(), point, nameColumn), name);
    };
    for (auto filled = m_filled.constBegin(); filled != m_filled.constEnd(); ++filled) {
        const QString name = grid.textMatrix(filled.key(), nameColumn);
        if (name != *filled)
            insert(filled.key(), name);
    }
    for (auto typed = m_hidden.constBegin(); typed != m_hidden.constEnd(); ++typed)
        insert(typed.key(), *typed);
}

void Punktnamen::restoreEntries(const Eingaben &entries)
{
    const auto restore = [this](int point, int, const QString &name) {
        if (point < m_table.grid().rows())
            m_table.grid().setTextMatrix(point, nameColumn, name);
        else
            m_hidden.insert(point, name);
    };
    eingaben::forEachCell(entries, m_table.grid().objectName(), restore);
}
