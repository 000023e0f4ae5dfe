#include "grid/gridmodel.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {
constexpr int unlimited = std::numeric_limits<int>::max();
}

GridModel::GridModel(QObject *parent) : QAbstractTableModel(parent)
{
    m_rows.resize(2);
}

void GridModel::setRows(int rows)
{
    rows = std::max(rows, m_fixedRows);
    if (rows == this->rows())
        return;
    announceHeld();
    if (rows > this->rows()) {
        beginInsertRows({}, rowCount(), rows - m_fixedRows - 1);
        m_rows.resize(rows);
        endInsertRows();
    } else {
        beginRemoveRows({}, rows - m_fixedRows, rowCount() - 1);
        m_rows.resize(rows);
        if (m_sourceEnd != unlimited)
            m_sourceEnd = std::min(m_sourceEnd, rows);
        endRemoveRows();
    }
}

void GridModel::setSourcedRows(int rows, RowSource source)
{
    beginResetModel();
    m_rows.resize(m_fixedRows);
    m_rows.resize(std::max(rows, m_fixedRows));
    m_source = std::move(source);
    m_sourceEnd = unlimited;
    m_heldFirst = m_heldLast = -1;
    endResetModel();
}

QStringList &GridModel::cells(int row) const
{
    if (m_rows.at(row).isEmpty() && m_source && row >= m_fixedRows && row < m_sourceEnd) {
        QStringList texts = m_source(row);
        if (texts.size() > m_cols)
            texts.resize(m_cols);
        m_rows[row] = std::move(texts);
    }
    return m_rows[row];
}

void GridModel::loadAll()
{
    for (int row = m_fixedRows; m_source && row < rows(); ++row)
        cells(row);
    m_source = nullptr; // it knows rows by the numbers that they had
}

void GridModel::setCols(int cols)
{
    cols = std::max(cols, 0);
    if (cols == m_cols)
        return;
    loadAll();
    announceHeld();
    if (cols > m_cols) {
        beginInsertColumns({}, m_cols, cols - 1);
        m_cols = cols;
        endInsertColumns();
    } else {
        beginRemoveColumns({}, cols, m_cols - 1);
        m_cols = cols;
        for (QStringList &row : m_rows) {
            if (row.size() > cols)
                row.resize(cols);
        }
        endRemoveColumns();
    }
}

void GridModel::setFixedRows(int rows)
{
    loadAll();
    beginResetModel();
    m_fixedRows = std::max(rows, 0);
    m_rows.resize(std::max(m_rows.size(), qsizetype(m_fixedRows)));
    m_heldFirst = m_heldLast = -1;
    endResetModel();
}

void GridModel::setFixedCols(int cols)
{
    beginResetModel();
    m_fixedCols = std::max(cols, 0);
    m_heldFirst = m_heldLast = -1;
    endResetModel();
}

bool GridModel::contains(int row, int col) const
{
    return row >= 0 && row < rows() && col >= 0 && col < m_cols;
}

QString GridModel::text(int row, int col) const
{
    return contains(row, col) ? cells(row).value(col) : QString();
}

void GridModel::setText(int row, int col, const QString &text)
{
    if (!contains(row, col) || cells(row).value(col) == text)
        return;
    QStringList &texts = cells(row);
    if (texts.size() <= col)
        texts.resize(m_cols);
    texts[col] = text;
    announce(row, col);
}

void GridModel::insertRows(int row, const QList<QStringList> &lines)
{
    if (row < m_fixedRows || row > rows() || lines.isEmpty())
        return;
    loadAll();
    announceHeld();
    const int at = row - m_fixedRows;
    beginInsertRows({}, at, at + int(lines.size()) - 1);
    const bool areAll = rows() == m_fixedRows;
    m_rows.insert(row, lines.size(), QStringList());
    if (areAll) {
        // Sharing 100,000 lists one by one takes longer than showing the grid: only when needed.
        m_source = [lines, row](int wanted) { return lines.at(wanted - row); };
        m_sourceEnd = rows();
    } else {
        for (const QStringList &line : lines)
            m_rows[row++] = line.size() > m_cols ? line.first(m_cols) : line;
    }
    endInsertRows();
}

void GridModel::removeRow(int row)
{
    if (row < m_fixedRows || row >= rows())
        return;
    loadAll();
    announceHeld();
    beginRemoveRows({}, row - m_fixedRows, row - m_fixedRows);
    m_rows.removeAt(row);
    endRemoveRows();
}

Qt::Alignment GridModel::colAlignment(int col) const
{
    return m_alignments.value(col, Qt::AlignLeft);
}

void GridModel::setColAlignment(int col, Qt::Alignment alignment)
{
    if (col < 0 || col >= m_cols)
        return;
    while (m_alignments.size() <= col)
        m_alignments.append(Qt::AlignLeft);
    m_alignments[col] = alignment & Qt::AlignHorizontal_Mask;
    if (rowCount() > 0)
        emit dataChanged(index(0, col), index(rowCount() - 1, col), {Qt::TextAlignmentRole});
}

void GridModel::setChangesHeld(bool held)
{
    m_held = held;
    if (!held)
        announceHeld();
}

void GridModel::announce(int row, int col)
{
    if (m_held) {
        m_heldFirst = m_heldFirst < 0 ? row : std::min(m_heldFirst, row);
        m_heldLast = std::max(m_heldLast, row);
    } else if (row < m_fixedRows) {
        emit headerDataChanged(Qt::Horizontal, col, col);
    } else {
        emit dataChanged(cell(row, col), cell(row, col), {Qt::DisplayRole, Qt::EditRole});
    }
}

void GridModel::announceHeld()
{
    if (m_heldFirst < 0)
        return;
    const int first = std::max(m_heldFirst, m_fixedRows);
    const int last = m_heldLast;
    const bool headers = m_heldFirst < m_fixedRows;
    m_heldFirst = m_heldLast = -1;
    if (headers)
        emit headerDataChanged(Qt::Horizontal, 0, m_cols - 1);
    if (first <= last)
        emit dataChanged(cell(first, 0), cell(last, m_cols - 1), {Qt::DisplayRole, Qt::EditRole});
}

QModelIndex GridModel::cell(int row, int col) const
{
    return index(row - m_fixedRows, col);
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows() - m_fixedRows;
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return cells(gridRow(index)).value(index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | colAlignment(index.column()));
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role != Qt::DisplayRole || section < 0 || section >= m_cols)
        return {};
    QStringList lines;
    for (int row = 0; row < m_fixedRows; ++row)
        lines.append(text(row, section));
    return lines.join(u'\n');
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags always = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.column() < m_fixedCols ? always
                                        : always | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}
