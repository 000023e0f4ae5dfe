#include "protocol/pages/cells.h"
#include "protocol/pages/diagram.h"
#include "protocol/pages/pageformat.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

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

// What a text may cover, seen from an edge of the frame.
struct Obstacle
{
    double outside = 0.0; ///< from the edge away from the frame
    double along = 0.0;   ///< along the edge, from the frame's lower left corner
    int weight = 0;
};

constexpr int markerWeight = 1000; // a digit under a marker can't be read, one under the line can
constexpr int lineWeight = 1;

// The room of a text, seen like an obstacle.
struct Room
{
    double from = 0.0; ///< from the edge away from the frame
    double to = 0.0;
    double low = 0.0; ///< along the edge
    double high = 0.0;
};

// How far the texts are moved away from the frame, at least \a nearest and at most \a farthest, so
// that as little as possible lies where they stand: \a wanted where that is nothing.
double freeDistance(const std::vector<Obstacle> &obstacles, const std::vector<Room> &texts,
                    double nearest, double wanted, double farthest)
{
    // Each pair of a text and an obstacle rules out a stretch of distances.
    std::vector<std::pair<double, int>> changes;
    std::int64_t cost = 0;       // at the nearest
    std::int64_t wantedCost = 0; // at the wanted one
    for (const Obstacle &obstacle : obstacles) {
        for (const Room &text : texts) {
            if (obstacle.along < text.low - markerCm || obstacle.along > text.high + markerCm)
                continue;
            const double from = obstacle.outside - markerCm - text.to;
            const double to = obstacle.outside + markerCm - text.from;
            if (to <= nearest || from >= farthest)
                continue;
            if (from < wanted && to > wanted)
                wantedCost += obstacle.weight;
            if (from < nearest)
                cost += obstacle.weight;
            else
                changes.emplace_back(from, obstacle.weight);
            changes.emplace_back(to, -obstacle.weight);
        }
    }
    if (wantedCost == 0)
        return wanted;
    std::sort(changes.begin(), changes.end());
    double best = nearest;
    std::int64_t least = cost;
    for (const auto &[distance, change] : changes) {
        if (distance > farthest)
            break;
        cost += change;
        if (cost < least) {
            least = cost;
            best = distance;
        }
    }
    return best;
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
        m_verticalTitleStyle = measure.shrunk(data.vertical.title, m_titleStyle, size.frameHeight);
        placeFrame();
        chooseHorizontalStyle();
        placeHorizontalLabels();
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

    QPointF inFrame(const QPointF &value) const
    {
        return {positionOn(m_data.horizontal.axis, value.x()) * m_size.frameWidth,
                positionOn(m_data.vertical.axis, value.y()) * m_size.frameHeight};
    }

    // \a see makes an obstacle of a place in the frame.
    template <typename See>
    std::vector<Obstacle> obstacles(const See &see) const
    {
        std::vector<Obstacle> result;
        const auto add = [&](const QPointF &place, int weight) {
            const Obstacle obstacle = see(place, weight);
            if (obstacle.outside > -markerCm)
                result.push_back(obstacle);
        };
        for (const QPointF &point : m_data.points)
            add(inFrame(point), markerWeight);
        const QPointF start = inFrame(m_data.lineStart);
        const QPointF way = inFrame(m_data.lineEnd) - start;
        constexpr int pieces = 400; // each shorter than a marker
        for (int i = 0; i <= pieces; ++i)
            add(start + way * i / pieces, lineWeight);
        return result;
    }

    void placeFrame()
    {
        double outside = 0.0;
        const auto makeRoomFor = [&](const QPointF &point) {
            const QPointF place = inFrame(point);
            outside = std::max(outside, -place.x());
            push(m_leftOfFrame, -place.x());
            push(m_belowFrame, -place.y());
        };
        std::for_each(m_data.points.begin(), m_data.points.end(), makeRoomFor);
        makeRoomFor(m_data.lineStart);
        makeRoomFor(m_data.lineEnd);
        const double titleEnd = placeVerticalTexts() + gapCm;
        const double needed = std::max(titleEnd, outside + markerCm);
        m_left =
            std::clamp(needed, (m_size.contentWidth - m_size.frameWidth) / 2, m_size.farthestFrame);
        m_bottom = -aboveFrameCm - m_size.frameHeight;
    }

    // Returns how far the title reaches from the frame.
    double placeVerticalTexts()
    {
        const std::vector<Obstacle> around = obstacles([](const QPointF &place, int weight) {
            return Obstacle{-place.x(), place.y(), weight};
        });
        const std::vector<QString> &labels = m_data.vertical.labels;
        const double titleHeight = m_measure.lineHeight(m_titleStyle);
        const double first = tickCm + gapCm;
        std::vector<Room> rooms;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const double middle = tickY(i) - m_bottom;
            const double half = digitMiddle(m_verticalStyle);
            rooms.push_back({first, first + m_measure.width(labels[i], m_verticalStyle),
                             middle - half, middle + half});
        }
        const double farthest = std::max(
            m_size.farthestFrame - first - m_verticalLabelWidth - 2 * gapCm - titleHeight, 0.0);
        m_leftOfFrame =
            freeDistance(around, rooms, 0.0, std::min(m_leftOfFrame, farthest), farthest);

        const double length = m_measure.width(m_data.vertical.title, m_verticalTitleStyle);
        const double low = (m_size.frameHeight - length) / 2;
        const Room title{0.0, titleHeight, low, low + length};
        const double nearest = m_leftOfFrame + first + m_verticalLabelWidth + gapCm;
        m_leftOfLabels =
            freeDistance(around, {title}, nearest, nearest,
                         std::max(nearest, m_size.farthestFrame - gapCm - titleHeight));
        return m_leftOfLabels + titleHeight;
    }

    QPointF at(const QPointF &value) const { return inFrame(value) + QPointF(m_left, m_bottom); }

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
        const TextStyle &style = m_verticalTitleStyle;
        text(title, m_left - m_leftOfLabels - m_measure.descent(style),
             m_bottom + (m_size.frameHeight - m_measure.width(title, style)) / 2, style, true);
    }

    // Labels that would touch or leave the sheet get smaller; where that isn't enough, they are
    // turned.
    void chooseHorizontalStyle()
    {
        const std::vector<QString> &labels = m_data.horizontal.labels;
        const double right = m_left + m_size.frameWidth;
        constexpr double beyondFrame = 0.5; // also of a frame that stands farther right than texts
        const double outside = std::max(m_size.farthestText - right, beyondFrame);
        const double between = tickX(1) - tickX(0) - 2 * gapCm;
        m_horizontalStyle = styleOfPoints(10);
        const QString widestLabel = widest(m_measure, labels, m_horizontalStyle);
        const auto isTooWide = [&] {
            return m_measure.width(widestLabel, m_horizontalStyle) > between ||
                   m_measure.width(labels.back(), m_horizontalStyle) / 2 > outside;
        };
        if (isTooWide())
            m_horizontalStyle = styleOfPoints(8);
        m_turned = isTooWide();
        if (m_turned)
            m_horizontalStyle =
                m_measure.shrunk(widestLabel, styleOfPoints(10), longestTurnedLabelCm);
        m_horizontalHeight = m_turned ? m_measure.width(widestLabel, m_horizontalStyle)
                                      : m_measure.lineHeight(m_horizontalStyle);
    }

    void placeHorizontalLabels()
    {
        const std::vector<Obstacle> around = obstacles([](const QPointF &place, int weight) {
            return Obstacle{-place.y(), place.x(), weight};
        });
        double lowest = m_belowFrame;
        for (const Obstacle &obstacle : around)
            lowest = std::max(lowest, obstacle.outside + markerCm);
        const double first = tickCm + gapCm;
        std::vector<Room> rooms;
        for (std::size_t i = 0; i < m_data.horizontal.labels.size(); ++i) {
            const double middle = tickX(i) - m_left;
            const double width = m_measure.width(m_data.horizontal.labels[i], m_horizontalStyle);
            const double half = m_turned ? digitMiddle(m_horizontalStyle) : width / 2;
            rooms.push_back({first, first + (m_turned ? width : m_horizontalHeight), middle - half,
                             middle + half});
        }
        m_belowFrame = freeDistance(around, rooms, 0.0, m_belowFrame, lowest);
    }

    double drawHorizontalLabels()
    {
        const std::vector<QString> &labels = m_data.horizontal.labels;
        const TextStyle &style = m_horizontalStyle;
        const double top = m_bottom - m_belowFrame - tickCm - gapCm;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const double width = m_measure.width(labels[i], style);
            if (m_turned)
                text(labels[i], tickX(i) + digitMiddle(style), top - width, style, true);
            else
                text(labels[i], tickX(i) - width / 2, top - m_measure.ascent(style), style);
        }
        return top - m_horizontalHeight;
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
    TextStyle m_horizontalStyle;
    TextStyle m_titleStyle;
    TextStyle m_verticalTitleStyle;
    bool m_turned = false; ///< whether the horizontal labels are
    double m_verticalLabelWidth = 0.0;
    double m_horizontalHeight = 0.0; ///< of the row of labels
    double m_left = 0.0;
    double m_leftOfFrame = 0.0;  ///< between the frame and the labels
    double m_leftOfLabels = 0.0; ///< between the frame and the title
    double m_belowFrame = 0.0;
    double m_bottom = 0.0;
};

} // namespace

Drawing diagramDrawing(const DiagramData &data, const TextMeasure &measure, const DiagramSize &size)
{
    return DiagramDrawer(data, measure, size).drawn();
}
