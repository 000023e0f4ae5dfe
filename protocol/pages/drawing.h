#pragma once

#include <QPointF>
#include <QRgb>
#include <QString>

#include <variant>
#include <vector>

/// How a text looks. The size is a whole number of pixels at the resolution texts are measured at.
struct TextStyle
{
    int pixelSize = 0; ///< 20 pixels are one point, see textmeasure.h
    bool bold = false;
    bool underlined = false;

    bool operator==(const TextStyle &) const = default;
};

// All lengths of a drawing are centimetres; x grows to the right and y upwards.

/// One line of text.
struct PlacedText
{
    QString text;
    QPointF at; ///< left end of the baseline
    TextStyle style;
    double width = 0.0;  ///< along the baseline
    bool upward = false; ///< turned by 90 degrees, reads from bottom to top

    bool operator==(const PlacedText &) const = default;
};

struct PlacedLine
{
    QPointF from;
    QPointF to;
    double width = 0.0;
    QRgb colour = qRgb(0, 0, 0);

    bool operator==(const PlacedLine &) const = default;
};

/// A round dot.
struct PlacedPoint
{
    QPointF at;
    double diameter = 0.0;
    QRgb colour = qRgb(0, 0, 0);

    bool operator==(const PlacedPoint &) const = default;
};

using Primitive = std::variant<PlacedText, PlacedLine, PlacedPoint>;

/// The rectangle that a drawing takes up; all zero for an empty one.
struct Extents
{
    double left = 0.0;
    double right = 0.0;
    double lower = 0.0;
    double upper = 0.0;

    double height() const { return upper - lower; }
    bool operator==(const Extents &) const = default;
};

/// A list of texts, lines and points, with the extents of all of them and a point at which other
/// drawings are inserted.
class Drawing
{
public:
    /// \a ascent and \a descent are the style's, for the extents.
    void add(PlacedText text, double ascent, double descent);
    void add(const PlacedLine &line);
    void add(const PlacedPoint &point);
    /// Makes the extents reach from the top 0 down to -\a height, so that blank room counts.
    void reserve(double height);
    /// Copies \a other so that its origin lies at the insertion point.
    void insert(const Drawing &other);

    const Extents &extents() const { return m_extents; }
    const std::vector<Primitive> &primitives() const { return m_primitives; }

    QPointF insertionPoint() const { return m_insertionPoint; }
    void setInsertionPoint(const QPointF &point) { m_insertionPoint = point; }
    /// Moves the insertion point by (\a dx, \a dy).
    void offsetInsertionPoint(double dx, double dy) { m_insertionPoint += QPointF(dx, dy); }

private:
    void include(const Extents &box);

    std::vector<Primitive> m_primitives;
    Extents m_extents;
    bool m_hasExtents = false;
    QPointF m_insertionPoint;
};
