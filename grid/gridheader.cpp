#include "grid/gridheader.h"

#include <QStyle>

namespace {
constexpr int wrappedCentred = int(Qt::AlignCenter) | int(Qt::TextWordWrap);
}

GridHeader::GridHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent)
{
    // The flag reaches the style through the alignment; there is no other way to it.
    setDefaultAlignment(Qt::Alignment(wrappedCentred));
    setSectionsClickable(false);
    setHighlightSections(false);
    setMinimumSectionSize(3 * fontMetrics().averageCharWidth());
    connect(this, &QHeaderView::sectionResized, this, &QHeaderView::geometriesChanged);
}

QSize GridHeader::sectionSizeFromContents(int logicalIndex) const
{
    ensurePolished();
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const int width = qMax(1, sectionSize(logicalIndex) - 2 * margin);
    const QString text =
        model()->headerData(logicalIndex, Qt::Horizontal, Qt::DisplayRole).toString();
    const QSize size =
        fontMetrics().boundingRect(0, 0, width, QWIDGETSIZE_MAX, wrappedCentred, text).size();
    return size + QSize(2 * margin, 2 * margin);
}
