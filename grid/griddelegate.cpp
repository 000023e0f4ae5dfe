#include "grid/griddelegate.h"

#include "grid/gridmodel.h"

#include <QApplication>
#include <QPainter>

GridDelegate::GridDelegate(const GridModel &model, const GridCursor &cursor, QObject *parent)
    : QStyledItemDelegate(parent), m_model(model), m_cursor(cursor)
{
}

void GridDelegate::setCurrentCellColors(std::optional<QColor> back, std::optional<QColor> text)
{
    m_back = back;
    m_text = text;
}

void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.state &= ~QStyle::State_HasFocus;
    const int row = m_model.gridRow(index);
    if (m_model.isFixed(row, index.column()))
        paintFixed(painter, cell);
    else if (row == m_cursor.row && index.column() == m_cursor.col)
        paintCurrent(painter, cell);
    else
        cell.widget->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
}

void GridDelegate::paintFixed(QPainter *painter, QStyleOptionViewItem option) const
{
    painter->fillRect(option.rect, option.palette.button());
    option.palette.setBrush(QPalette::Text, option.palette.buttonText());
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
}

void GridDelegate::paintCurrent(QPainter *painter, QStyleOptionViewItem option) const
{
    // Inside a selection the current cell stands out by not being marked.
    option.state &= ~QStyle::State_Selected;
    // The table has already filled a selected cell's background.
    painter->fillRect(option.rect, m_back ? QBrush(*m_back) : option.palette.base());
    if (m_text)
        option.palette.setColor(QPalette::Text, *m_text);
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
    // The editor lies beside the table in the same frame: with either the grid is in use.
    const bool inUse = option.widget->parentWidget()->isAncestorOf(QApplication::focusWidget());
    const QPalette::ColorRole role = inUse ? QPalette::Highlight : QPalette::Mid;
    const QRect &r = option.rect;
    const int w = frameWidth();
    const QBrush brush = option.palette.brush(role);
    painter->fillRect(r.left(), r.top(), r.width(), w, brush);
    painter->fillRect(r.left(), r.bottom() - w + 1, r.width(), w, brush);
    painter->fillRect(r.left(), r.top(), w, r.height(), brush);
    painter->fillRect(r.right() - w + 1, r.top(), w, r.height(), brush);
}
