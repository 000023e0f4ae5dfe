#include "wizard/zellenstand.h"

#include "core/values.h"
#include "grid/gridcontrol.h"

namespace {

std::uint32_t bit(int col)
{
    return std::uint32_t{1} << static_cast<unsigned>(col);
}

} // namespace

QString Zellenstand::text(int row, int col) const
{
    return m_grid.textMatrix(row, col);
}

bool Zellenstand::isChanged(int row, int col) const
{
    const auto filled = m_rows.constFind(row);
    return filled != m_rows.constEnd() &&
           ((filled->typed & bit(col)) != 0 || text(row, col) != filled->shown.at(col));
}

void Zellenstand::typeNumber(int row, int col, const QString &typed, const Values &values,
                             std::optional<double> stored)
{
    const auto filled = m_rows.find(row);
    // An editor that was only opened and closed hands back what the cell showed.
    if (filled == m_rows.end() || typed == text(row, col))
        return;
    const auto number = [&](const QString &text) {
        const Values::Reading reading = values.read(text);
        return reading.status == Values::Reading::Status::Number ? std::optional(reading.value)
                                                                 : std::nullopt;
    };
    const std::optional<double> entered = number(typed);
    const bool isOther = entered && entered != stored && entered != number(filled->shown.at(col));
    filled->typed = isOther ? filled->typed | bit(col) : filled->typed & ~bit(col);
}

void Zellenstand::setStored(int row, int col)
{
    const auto filled = m_rows.find(row);
    if (filled == m_rows.end())
        return;
    filled->shown[col] = text(row, col);
    filled->typed &= ~bit(col);
}

void Zellenstand::addEntries(Eingaben &entries, std::initializer_list<int> columns) const
{
    for (auto row = m_rows.constBegin(); row != m_rows.constEnd(); ++row) {
        for (const int col : columns) {
            if (isChanged(row.key(), col))
                entries.insert(eingaben::cell(m_grid.objectName(), row.key(), col),
                               text(row.key(), col));
        }
    }
}

void Zellenstand::restoreEntries(const Eingaben &entries)
{
    const auto mark = [this](int row, int col, const QString &) {
        const auto filled = m_rows.find(row);
        if (filled != m_rows.end() && col >= 0 && col < filled->shown.size())
            filled->typed |= bit(col);
    };
    eingaben::forEachCell(entries, m_grid.objectName(), mark);
}
