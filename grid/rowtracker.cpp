#include "grid/rowtracker.h"

#include "grid/gridmodel.h"

#include <algorithm>

RowTracker::RowTracker(const GridModel &model, int first, int last) : m_row(first), m_last(last)
{
    // Before the change, so that whoever hears of the change itself finds the new place here.
    connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [this, &model](const QModelIndex &, int from, int to) {
                inserted(from + model.fixedRows(), to - from + 1);
            });
    connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this, &model](const QModelIndex &, int from, int to) {
                removed(from + model.fixedRows(), to - from + 1);
            });
    // Other contents have other rows: none of them is the one that was meant.
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        m_there = false;
        m_last = m_row;
    });
}

bool RowTracker::next()
{
    if (m_row >= m_last)
        return false;
    ++m_row;
    m_there = true;
    return true;
}

void RowTracker::inserted(int first, int count)
{
    // Where the row itself is gone, m_row is the one before its place, and moves all the same.
    if (first <= m_row)
        m_row += count;
    if (first <= m_last)
        m_last += count;
}

void RowTracker::removed(int first, int count)
{
    const int end = first + count;
    const auto after = [first, end, count](int row) {
        return row < first ? row : row >= end ? row - count : first - 1;
    };
    if (m_row >= first && m_row < end)
        m_there = false;
    m_row = after(m_row);
    m_last = after(m_last);
}
