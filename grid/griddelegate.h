#pragma once

#include "grid/cellrange.h"

#include <QColor>
#include <QStyledItemDelegate>

#include <optional>

class GridModel;

/// Paints the cells: fixed columns like headers, the current cell in its own colours with a frame.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Both are borrowed and outlive the delegate.
    GridDelegate(const GridModel &model, const GridCursor &cursor, QObject *parent = nullptr);

    void setCurrentCellColors(std::optional<QColor> back, std::optional<QColor> text);
    /// Width of the frame around the current cell.
    static int frameWidth() { return 2; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    void paintFixed(QPainter *painter, QStyleOptionViewItem option) const;
    void paintCurrent(QPainter *painter, QStyleOptionViewItem option) const;

    const GridModel &m_model;
    const GridCursor &m_cursor;
    std::optional<QColor> m_back;
    std::optional<QColor> m_text;
};
