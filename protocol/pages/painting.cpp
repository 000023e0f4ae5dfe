#include "protocol/pages/painting.h"

#include "protocol/pages/textmeasure.h"

#include <QPainter>

#include <vector>

namespace {

// Paints in the pixels that texts were measured in; the painter's transformation does the rest.
class PrimitivePainter
{
public:
    PrimitivePainter(QPainter &painter, double topCm) : m_painter(painter), m_top(topCm) {}

    void operator()(const PlacedText &text)
    {
        useFont(text.style);
        m_painter.setPen(Qt::black);
        const QPointF at = device(text.at);
        if (!text.upward) {
            m_painter.drawText(at, text.text);
            if (text.style.underlined)
                underline(text, at);
            return;
        }
        m_painter.save();
        m_painter.translate(at);
        m_painter.rotate(-90.0);
        m_painter.drawText(QPointF(0.0, 0.0), text.text);
        m_painter.restore();
    }

    void operator()(const PlacedLine &line)
    {
        m_painter.setPen({QColor(line.colour), line.width * layoutPixelsPerCentimetre,
                          Qt::SolidLine, Qt::FlatCap});
        m_painter.drawLine(device(line.from), device(line.to));
    }

    void operator()(const PlacedPoint &point)
    {
        // A disc, not a short line with round ends: readers of PDF pinch those to a grid.
        const double radius = point.diameter / 2 * layoutPixelsPerCentimetre;
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(QColor(point.colour));
        m_painter.drawEllipse(device(point.at), radius, radius);
        m_painter.setBrush(Qt::NoBrush);
    }

private:
    QPointF device(const QPointF &at) const
    {
        return {at.x() * layoutPixelsPerCentimetre, (m_top - at.y()) * layoutPixelsPerCentimetre};
    }

    void underline(const PlacedText &text, const QPointF &at)
    {
        constexpr double below = 0.13; // of the font's size
        constexpr double thickness = 0.06;
        const double size = text.style.pixelSize;
        QString words = text.text;
        while (words.endsWith(u' '))
            words.chop(1);
        const double width = QFontMetricsF(m_painter.font()).horizontalAdvance(words);
        const QPointF start = at + QPointF(0.0, below * size);
        m_painter.setPen(QPen(Qt::black, thickness * size, Qt::SolidLine, Qt::FlatCap));
        m_painter.drawLine(start, start + QPointF(width, 0.0));
    }

    void useFont(const TextStyle &style)
    {
        for (const auto &[known, font] : m_fonts) {
            if (known == style) {
                m_painter.setFont(font);
                return;
            }
        }
        m_painter.setFont(m_fonts.emplace_back(style, protocolFont(style)).second);
    }

    QPainter &m_painter;
    double m_top;
    std::vector<std::pair<TextStyle, QFont>> m_fonts;
};

// A box around the primitive, generous where exact metrics would cost more than painting it.
QRectF boxOf(const Primitive &primitive)
{
    if (const auto *text = std::get_if<PlacedText>(&primitive)) {
        const double size = 1.5 * text->style.pixelSize / layoutPixelsPerCentimetre;
        if (text->upward)
            return {text->at.x() - size, text->at.y(), 2 * size, text->width};
        return {text->at.x(), text->at.y() - size, text->width, 2 * size};
    }
    if (const auto *line = std::get_if<PlacedLine>(&primitive)) {
        const double w = line->width;
        return QRectF(line->from, line->to).normalized().adjusted(-w, -w, w, w);
    }
    const auto &point = std::get<PlacedPoint>(primitive);
    const double d = point.diameter;
    return {point.at.x() - d, point.at.y() - d, 2 * d, 2 * d};
}

} // namespace

void paintDrawing(QPainter &painter, const Drawing &drawing, double topCm, double pixelsPerCm,
                  const QRectF &visible)
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const double factor = pixelsPerCm / layoutPixelsPerCentimetre;
    painter.scale(factor, factor);
    PrimitivePainter paint(painter, topCm);
    for (const Primitive &primitive : drawing.primitives()) {
        if (visible.isNull() || visible.intersects(boxOf(primitive)))
            std::visit(paint, primitive);
    }
    painter.restore();
}

void paintPage(QPainter &painter, const Page &page, double pixelsPerCm, const QRectF &visible)
{
    const double scaled = pixelsPerCm * page.format.scale();
    const double top = page.format.pageHeight();
    QRectF shown;
    if (!visible.isNull())
        shown = QRectF(visible.x() / scaled, top - visible.bottom() / scaled,
                       visible.width() / scaled, visible.height() / scaled);
    paintDrawing(painter, page.drawing, top, scaled, shown);
}
