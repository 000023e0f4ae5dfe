#pragma once

#include <QObject>

class GridModel;

/// Walks a run of a grid's rows and keeps its place while rows are inserted and removed around it,
/// so that a text meant for a row never lands in another one.
class RowTracker : public QObject
{
public:
    /// Stands on \a first and ends with \a last; both count the fixed rows.
    RowTracker(const GridModel &model, int first, int last);

    int row() const { return m_row; }
    /// Whether the row that this stands on is still there.
    bool isThere() const { return m_there; }
    /// Goes to the next row of the run; false at its end.
    bool next();
    /// Rows of the run behind this one.
    int remaining() const { return m_last - m_row; }

private:
    void inserted(int first, int count);
    void removed(int first, int count);

    int m_row;
    int m_last;
    bool m_there = true;
};
