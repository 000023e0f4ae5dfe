#pragma once

#include "wizard/eingaben.h"

#include <QHash>
#include <QStringList>

#include <cstdint>
#include <initializer_list>
#include <optional>

class GridControl;
class Values;

/// What filling wrote into the cells of a table, row by row as rows are needed, and what a user has
/// typed over it.
///
/// A cell that shows what filling wrote is not to be written back: the value behind it may have
/// more places than the cell shows. That holds also for a text that stands there again, unless
/// another number was typed that is shown by the same text.
class Zellenstand
{
public:
    /// \a grid is where the cells are, and outlives this object.
    explicit Zellenstand(const GridControl &grid) : m_grid(grid) {}

    void clear() { m_rows.clear(); }
    /// Row \a row is filled with \a texts, by column.
    void fill(int row, const QStringList &texts) { m_rows.insert(row, {texts, 0}); }
    bool isFilled(int row) const { return m_rows.contains(row); }

    QString text(int row, int col) const;
    /// Whether the text of the cell is to be written back; false for a row that was never needed.
    bool isChanged(int row, int col) const;

    /// To be told of every number, as it was typed or pasted, before it gets its form and while the
    /// cell has its old text. \a stored is the value in the document, if that is a number.
    void typeNumber(int row, int col, const QString &typed, const Values &values,
                    std::optional<double> stored);
    /// The document has the text of the cell now.
    void setStored(int row, int col);

    /// The changed cells of \a columns among the entries of a page.
    void addEntries(Eingaben &entries, std::initializer_list<int> columns) const;
    /// Counts the cells among \a entries as typed. They are in the table already.
    void restoreEntries(const Eingaben &entries);

private:
    struct Row
    {
        QStringList shown;
        std::uint32_t typed; ///< a bit for each column whose number was typed
    };

    const GridControl &m_grid;
    QHash<int, Row> m_rows;
};
