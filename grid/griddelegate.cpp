#include "grid/griddelegate.h"

#include "grid/gridmodel.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionHeader>

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

void GridDelegate::paintFixed(QPainter *painter, const QStyleOptionViewItem &option) const
{
    const QStyle *style = option.widget->style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    painter->fillRect(option.rect, option.palette.button());
    style->drawItemText(painter, option.rect.adjusted(margin, 0, -margin, 0),
                        int(option.displayAlignment), option.palette,
                        option.state.testFlag(QStyle::State_Enabled),
                        option.fontMetrics.elidedText(option.text, Qt::ElideRight,
                                                      option.rect.width() - 2 * margin),
                        QPalette::ButtonText);
}

void GridDelegate::paintCurrent(QPainter *painter, QStyleOptionViewItem option) const
{
    // Inside a selection the current cell stands out by not being marked.
    option.state &= ~QStyle::State_Selected;
    if (m_back)
        option.backgroundBrush = *m_back;
    if (m_text)
        option.palette.setColor(QPalette::Text, *m_text);
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
    const QPalette::ColorRole role =
        option.widget->hasFocus() ? QPalette::Highlight : QPalette::Mid;
    const QRect &r = option.rect;
    const int w = frameWidth();
    const QBrush brush = option.palette.brush(role);
    painter->fillRect(r.left(), r.top(), r.width(), w, brush);
    painter->fillRect(r.left(), r.bottom() - w + 1, r.width(), w, brush);
    painter->fillRect(r.left(), r.top(), w, r.height(), brush);
    painter->fillRect(r.right() - w + 1, r.top(), w, r.height(), brush);
}
