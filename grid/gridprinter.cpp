#include "grid/gridprinter.h"

#include "grid/gridcontrol.h"

#include <QPagedPaintDevice>
#include <QPainter>

#include <cmath>

namespace {

constexpr double twipsPerInch = 1440;
/// Height of the text before scaling, in pixels of the grid, so that it keeps its proportion to the
/// columns on devices of any resolution.
constexpr double fontPixels = 14;
constexpr double padding = 3; ///< between border and text, in pixels of the grid
/// What rounding may add to a sum of widths or heights that fills the page exactly, in twips.
constexpr double tolerance = 1;

class GridPrinter
{
public:
    GridPrinter(const GridControl &grid, QPaintDevice &device, bool toOnePage);

    bool isEmpty() const
    {
        return sumOf(m_colWidths) <= 0 || sumOf(m_rowHeights) <= 0 || m_width <= 0 || m_height <= 0;
    }
    bool print(QPainter &painter, QPagedPaintDevice *pages, bool gridLines) const;

private:
    double sumOf(const std::vector<double> &sizes) const;
    double drawRow(QPainter &painter, int row, double top, bool gridLines) const;
    void drawCell(QPainter &painter, const QRectF &cell, int row, int col, bool gridLines) const;
    bool fits(double top, int row) const
    {
        return top + m_rowHeights[std::size_t(row)] * m_scaleY <= m_height + tolerance;
    }
    double printFixedRows(QPainter &painter, bool gridLines) const;

    const GridControl &m_grid;
    int m_dpiX; ///< of the device, or of the screen where the device has none
    int m_dpiY;
    std::vector<double> m_colWidths; ///< twips
    std::vector<double> m_rowHeights;
    double m_twipsPerPixel; ///< of the grid
    double m_width;         ///< of the device, twips
    double m_height;
    double m_scaleX = 1;
    double m_scaleY = 1;
};

GridPrinter::GridPrinter(const GridControl &grid, QPaintDevice &device, bool toOnePage)
    : m_grid(grid)
    , m_dpiX(device.logicalDpiX() > 0 ? device.logicalDpiX() : grid.logicalDpiX())
    , m_dpiY(device.logicalDpiY() > 0 ? device.logicalDpiY() : grid.logicalDpiY())
    , m_twipsPerPixel(twipsPerInch / grid.logicalDpiX())
    , m_width(device.width() * twipsPerInch / m_dpiX)
    , m_height(device.height() * twipsPerInch / m_dpiY)
{
    for (int col = 0; col < grid.cols(); ++col)
        m_colWidths.push_back(grid.colWidth(col) * m_twipsPerPixel);
    for (int row = 0; row < grid.rows(); ++row)
        m_rowHeights.push_back(grid.rowHeight(row) * m_twipsPerPixel);
    if (isEmpty())
        return;
    m_scaleX = m_width / sumOf(m_colWidths);
    m_scaleY = m_height / sumOf(m_rowHeights);
    if (toOnePage) {
        m_scaleX = std::min(m_scaleX, 1.0);
        m_scaleY = std::min(m_scaleY, 1.0);
    } else if (dynamic_cast<QPagedPaintDevice *>(&device)) {
        m_scaleY = m_scaleX;
    }
}

double GridPrinter::sumOf(const std::vector<double> &sizes) const
{
    double sum = 0;
    for (const double size : sizes)
        sum += size;
    return sum;
}

bool GridPrinter::print(QPainter &painter, QPagedPaintDevice *pages, bool gridLines) const
{
    painter.scale(m_dpiX / twipsPerInch, m_dpiY / twipsPerInch);
    QFont font(QStringLiteral("Arial"));
    font.setWeight(QFont::Normal);
    // Whole units, for sizes in pixels are: one is a twip here.
    font.setPixelSize(
        std::max(1, int(std::lround(fontPixels * m_twipsPerPixel * std::min(m_scaleX, m_scaleY)))));
    painter.setFont(font);
    painter.setPen(QPen(Qt::black, m_twipsPerPixel / 2));

    double top = printFixedRows(painter, gridLines);
    bool fresh = true;
    for (int row = m_grid.fixedRows(); row < m_grid.rows(); ++row) {
        if (!fits(top, row) && !fresh && pages) {
            if (!pages->newPage())
                return false;
            top = printFixedRows(painter, gridLines);
        } else if (!fits(top, row) && !pages) {
            break;
        }
        top = drawRow(painter, row, top, gridLines);
        fresh = false;
    }
    return true;
}

double GridPrinter::printFixedRows(QPainter &painter, bool gridLines) const
{
    double top = 0;
    for (int row = 0; row < m_grid.fixedRows(); ++row)
        top = drawRow(painter, row, top, gridLines);
    return top;
}

double GridPrinter::drawRow(QPainter &painter, int row, double top, bool gridLines) const
{
    const double height = m_rowHeights[std::size_t(row)] * m_scaleY;
    double left = 0;
    for (int col = 0; col < m_grid.cols(); ++col) {
        const double width = m_colWidths[std::size_t(col)] * m_scaleX;
        if (left + width > m_width + tolerance)
            break;
        drawCell(painter, QRectF(left, top, width, height), row, col, gridLines);
        left += width;
    }
    return top + height;
}

void GridPrinter::drawCell(QPainter &painter, const QRectF &cell, int row, int col,
                           bool gridLines) const
{
    if (gridLines)
        painter.drawRect(cell);
    const double inset = padding * m_twipsPerPixel * m_scaleX;
    const bool header = row < m_grid.fixedRows();
    const Qt::Alignment across = header ? Qt::AlignHCenter : m_grid.colAlignment(col);
    painter.drawText(cell.adjusted(inset, 0, -inset, 0),
                     int(across | Qt::AlignVCenter) | (header ? int(Qt::TextWordWrap) : 0),
                     m_grid.textMatrix(row, col));
}

} // namespace

bool printGrid(const GridControl &grid, QPaintDevice &device, bool toOnePage, bool gridLines)
{
    const GridPrinter printer(grid, device, toOnePage);
    if (printer.isEmpty())
        return false;
    QPainter painter;
    return painter.begin(&device) &&
           printer.print(painter, toOnePage ? nullptr : dynamic_cast<QPagedPaintDevice *>(&device),
                         gridLines);
}
