#include "protocol/pages/cells.h"
#include "protocol/pages/diagram.h"
#include "protocol/pages/pageformat.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double tickCm = 0.12;
constexpr double gapCm = 0.1;
constexpr double aboveFrameCm = 0.35;
constexpr double belowTitleCm = 0.1;
constexpr double frameLineCm = 0.02;
constexpr double gridLineCm = 0.01;
constexpr double lineCm = 0.03;
constexpr double markerCm = 0.12;
constexpr QRgb gridColour = qRgb(200, 200, 200);
constexpr QRgb lineColour = qRgb(0, 60, 140);

constexpr double widestVerticalLabelCm = 5.0;
constexpr double longestTurnedLabelCm = 3.5;

double positionOn(const Axis &axis, double value)
{
    return (value - axis.minimum) / (axis.maximum - axis.minimum);
}

QString widest(const TextMeasure &measure, const std::vector<QString> &texts,
               const TextStyle &style)
{
    QString result;
    double width = -1.0;
    for (const QString &text : texts) {
        if (const double w = measure.width(text, style); w > width) {
            width = w;
            result = text;
        }
    }
    return result;
}

class DiagramDrawer
{
public:
    DiagramDrawer(const DiagramData &data, const TextMeasure &measure, const DiagramSize &size)
        : m_data(data), m_measure(measure), m_size(size)
    {
        const TextStyle style = styleOfPoints(10);
        const QString widestLabel = widest(measure, data.vertical.labels, style);
        m_verticalStyle = lowEnough(measure.shrunk(widestLabel, style, widestVerticalLabelCm));
        m_verticalLabelWidth = measure.width(widestLabel, m_verticalStyle);
        m_titleStyle = styleOfPoints(11);
        placeFrame();
    }

    Drawing drawn()
    {
        drawGrid();
        drawVerticalTexts();
        const double belowLabels = drawHorizontalLabels();
        m_drawing.add(PlacedLine{at(m_data.lineStart), at(m_data.lineEnd), lineCm, lineColour});
        for (const QPointF &point : m_data.points)
            m_drawing.add(PlacedPoint{at(point), markerCm});
        drawHorizontalTitle(std::min(belowLabels, m_drawing.extents().lower));
        m_drawing.reserve(-m_drawing.extents().lower + belowTitleCm);
        return std::move(m_drawing);
    }

private:
    // Labels one above the other must not touch either.
    TextStyle lowEnough(TextStyle style) const
    {
        const auto steps = static_cast<double>(m_data.vertical.labels.size() - 1);
        const double room = m_size.frameHeight / steps;
        const double needed = m_measure.lineHeight(style);
        if (needed > room)
            style.pixelSize = std::max(1, static_cast<int>(style.pixelSize * room / needed));
        return style;
    }

    // What is drawn a little outside of the frame pushes the labels away from it; what lies far
    // outside is drawn beyond them.
    static void push(double &labels, double outside)
    {
        constexpr double farthestLabel = 1.5;
        if (outside > 0.0 && outside + markerCm < farthestLabel)
            labels = std::max(labels, outside + markerCm);
    }

    void placeFrame()
    {
        double outside = 0.0;
        const auto makeRoomFor = [&](const QPointF &point) {
            const double left = -positionOn(m_data.horizontal.axis, point.x()) * m_size.frameWidth;
            outside = std::max(outside, left);
            push(m_leftOfFrame, left);
            push(m_belowFrame, -positionOn(m_data.vertical.axis, point.y()) * m_size.frameHeight);
        };
        std::for_each(m_data.points.begin(), m_data.points.end(), makeRoomFor);
        makeRoomFor(m_data.lineStart);
        makeRoomFor(m_data.lineEnd);
        const double forTexts = m_leftOfFrame + tickCm + 3 * gapCm + m_verticalLabelWidth +
                                m_measure.lineHeight(m_titleStyle);
        const double needed = std::max(forTexts, outside + markerCm);
        m_left =
            std::clamp(needed, (m_size.contentWidth - m_size.frameWidth) / 2, m_size.farthestFrame);
        m_bottom = -aboveFrameCm - m_size.frameHeight;
    }

    QPointF at(const QPointF &value) const
    {
        return {m_left + positionOn(m_data.horizontal.axis, value.x()) * m_size.frameWidth,
                m_bottom + positionOn(m_data.vertical.axis, value.y()) * m_size.frameHeight};
    }

    double tickX(std::size_t i) const
    {
        const auto steps = static_cast<double>(m_data.horizontal.labels.size() - 1);
        return m_left + m_size.frameWidth * static_cast<double>(i) / steps;
    }
    double tickY(std::size_t i) const
    {
        const auto steps = static_cast<double>(m_data.vertical.labels.size() - 1);
        return m_bottom + m_size.frameHeight * static_cast<double>(i) / steps;
    }

    void line(double x1, double y1, double x2, double y2, double width, QRgb colour = qRgb(0, 0, 0))
    {
        m_drawing.add(PlacedLine{{x1, y1}, {x2, y2}, width, colour});
    }

    void drawGrid()
    {
        const double right = m_left + m_size.frameWidth;
        const double top = m_bottom + m_size.frameHeight;
        for (std::size_t i = 0; i < m_data.horizontal.labels.size(); ++i) {
            line(tickX(i), m_bottom, tickX(i), top, gridLineCm, gridColour);
            line(tickX(i), m_bottom - tickCm, tickX(i), m_bottom, frameLineCm);
        }
        for (std::size_t i = 0; i < m_data.vertical.labels.size(); ++i) {
            line(m_left, tickY(i), right, tickY(i), gridLineCm, gridColour);
            line(m_left - tickCm, tickY(i), m_left, tickY(i), frameLineCm);
        }
        line(m_left, m_bottom, right, m_bottom, frameLineCm);
        line(right, m_bottom, right, top, frameLineCm);
        line(right, top, m_left, top, frameLineCm);
        line(m_left, top, m_left, m_bottom, frameLineCm);
    }

    // Half of what stands above the baseline, so that digits are centred on their tick.
    double digitMiddle(const TextStyle &style) const
    {
        constexpr double digitHeight = 0.66; // of the font's size
        return style.pixelSize * digitHeight / 2 / layoutPixelsPerCentimetre;
    }

    void text(const QString &content, double x, double y, const TextStyle &style,
              bool upward = false)
    {
        PlacedText placed = m_measure.placed(content, {x, y}, style);
        placed.upward = upward;
        m_measure.add(m_drawing, placed);
    }

    void drawVerticalTexts()
    {
        const double right = m_left - m_leftOfFrame - tickCm - gapCm;
        for (std::size_t i = 0; i < m_data.vertical.labels.size(); ++i) {
            const QString &label = m_data.vertical.labels[i];
            text(label, right - m_measure.width(label, m_verticalStyle),
                 tickY(i) - digitMiddle(m_verticalStyle), m_verticalStyle);
        }
        const QString &title = m_data.vertical.title;
        const TextStyle style = m_measure.shrunk(title, m_titleStyle, m_size.frameHeight);
        text(title, right - m_verticalLabelWidth - gapCm - m_measure.descent(style),
             m_bottom + (m_size.frameHeight - m_measure.width(title, style)) / 2, style, true);
    }

    // Labels that would touch get smaller; where that isn't enough, they are turned.
    double drawHorizontalLabels()
    {
        const std::vector<QString> &labels = m_data.horizontal.labels;
        const double top = m_bottom - m_belowFrame - tickCm - gapCm;
        const double room = tickX(1) - tickX(0) - 2 * gapCm;
        TextStyle style = styleOfPoints(10);
        const QString widestLabel = widest(m_measure, labels, style);
        const TextStyle small = styleOfPoints(8);
        if (m_measure.width(widestLabel, style) > room)
            style = small;
        const bool turned = m_measure.width(widestLabel, style) > room;
        if (turned)
            style = m_measure.shrunk(widestLabel, styleOfPoints(10), longestTurnedLabelCm);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const double width = m_measure.width(labels[i], style);
            if (turned)
                text(labels[i], tickX(i) + digitMiddle(style), top - width, style, true);
            else
                text(labels[i], tickX(i) - width / 2, top - m_measure.ascent(style), style);
        }
        return top - (turned ? m_measure.width(widestLabel, style) : m_measure.lineHeight(style));
    }

    void drawHorizontalTitle(double top)
    {
        constexpr int mostLines = 3;
        const FittedText title = fittedText(m_measure, m_data.horizontal.title, m_titleStyle,
                                            m_size.frameWidth, mostLines);
        double baseline = top - gapCm - m_measure.ascent(title.style);
        for (const QString &content : title.lines) {
            const double width = m_measure.width(content, title.style);
            text(content, m_left + (m_size.frameWidth - width) / 2, baseline, title.style);
            baseline -= m_measure.lineHeight(title.style);
        }
    }

    const DiagramData &m_data;
    const TextMeasure &m_measure;
    const DiagramSize &m_size;
    Drawing m_drawing;
    TextStyle m_verticalStyle;
    TextStyle m_titleStyle;
    double m_verticalLabelWidth = 0.0;
    double m_left = 0.0;
    double m_leftOfFrame = 0.0; ///< between the frame and the labels
    double m_belowFrame = 0.0;
    double m_bottom = 0.0;
};

} // namespace

Drawing diagramDrawing(const DiagramData &data, const TextMeasure &measure, const DiagramSize &size)
{
    return DiagramDrawer(data, measure, size).drawn();
}
