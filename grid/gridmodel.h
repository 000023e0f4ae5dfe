#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

#include <functional>

/// The texts of a grid whose rows and columns are counted with the fixed ones.
///
/// Views see the rows below the fixed rows; the fixed rows' texts are the column headers, one
/// header line per fixed row. Fixed columns are ordinary cells without the editable flag. Rows that
/// hold no text cost 24 bytes.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit GridModel(QObject *parent = nullptr);

    int rows() const { return int(m_rows.size()); }
    int cols() const { return m_cols; }
    int fixedRows() const { return m_fixedRows; }
    int fixedCols() const { return m_fixedCols; }
    /// New rows are empty and come last. Never below the number of fixed rows.
    void setRows(int rows);
    /// The cell texts of a row, counted with the fixed ones; never an empty list. Texts beyond the
    /// last column are dropped.
    using RowSource = std::function<QStringList(int row)>;
    /// Throws all rows away that are not fixed, for others up to \a rows in all. Their texts, and
    /// those of rows that setRows adds later, come from \a source when they are first asked for.
    void setSourcedRows(int rows, RowSource source);
    void setCols(int cols);
    void setFixedRows(int rows);
    void setFixedCols(int cols);

    bool contains(int row, int col) const;
    bool isFixed(int row, int col) const { return row < m_fixedRows || col < m_fixedCols; }
    /// Empty outside of the grid.
    QString text(int row, int col) const;
    /// Does nothing outside of the grid.
    void setText(int row, int col, const QString &text);
    /// Inserts \a lines as rows before \a row, which lies between the fixed rows and rows().
    void insertRows(int row, const QList<QStringList> &lines);
    /// Removes a row that is not fixed.
    void removeRow(int row);

    Qt::Alignment colAlignment(int col) const;
    void setColAlignment(int col, Qt::Alignment alignment);

    /// While changes are held, changed texts are announced once, by the end of the hold.
    void setChangesHeld(bool held);

    /// The view's index of a cell; invalid for cells of fixed rows.
    QModelIndex cell(int row, int col) const;
    int gridRow(const QModelIndex &index) const { return index.row() + m_fixedRows; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QStringList &cells(int row) const;
    void loadAll();
    void announce(int row, int col);
    void announceHeld();

    mutable QList<QStringList> m_rows; ///< of rows not asked for, and of empty ones, empty lists
    RowSource m_source;
    int m_sourceEnd = 0; ///< first row behind those that the source knows
    QList<Qt::Alignment> m_alignments;
    int m_cols = 2;
    int m_fixedRows = 1;
    int m_fixedCols = 0;
    bool m_held = false;
    int m_heldFirst = -1; ///< first and last grid row with an unannounced change, -1 for none
    int m_heldLast = -1;
};
