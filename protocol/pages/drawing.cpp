#include "protocol/pages/drawing.h"

#include <algorithm>
#include <utility>

void Drawing::add(PlacedText text, double ascent, double descent)
{
    const double x = text.at.x();
    const double y = text.at.y();
    if (text.upward)
        include({x - ascent, x + descent, y, y + text.width});
    else
        include({x, x + text.width, y - descent, y + ascent});
    m_primitives.emplace_back(std::move(text));
}

// The pen's width is left out: a rule on a band's edge must not make the band grow.
void Drawing::add(const PlacedLine &line)
{
    const auto [left, right] = std::minmax({line.from.x(), line.to.x()});
    const auto [lower, upper] = std::minmax({line.from.y(), line.to.y()});
    include({left, right, lower, upper});
    m_primitives.emplace_back(line);
}

void Drawing::add(const PlacedPoint &point)
{
    const double radius = point.diameter / 2;
    include({point.at.x() - radius, point.at.x() + radius, point.at.y() - radius,
             point.at.y() + radius});
    m_primitives.emplace_back(point);
}

void Drawing::reserve(double height)
{
    // Blank room has no width of its own.
    const double x = m_hasExtents ? m_extents.left : 0.0;
    include({x, x, -height, 0.0});
}

void Drawing::insert(const Drawing &other)
{
    if (!other.m_hasExtents)
        return;
    const QPointF by = m_insertionPoint;
    m_primitives.reserve(m_primitives.size() + other.m_primitives.size());
    for (const Primitive &primitive : other.m_primitives) {
        Primitive &copy = m_primitives.emplace_back(primitive);
        if (auto *line = std::get_if<PlacedLine>(&copy)) {
            line->from += by;
            line->to += by;
        } else if (auto *text = std::get_if<PlacedText>(&copy)) {
            text->at += by;
        } else if (auto *point = std::get_if<PlacedPoint>(&copy)) {
            point->at += by;
        }
    }
    const Extents &box = other.m_extents;
    include({box.left + by.x(), box.right + by.x(), box.lower + by.y(), box.upper + by.y()});
}

void Drawing::include(const Extents &box)
{
    if (!m_hasExtents) {
        m_extents = box;
        m_hasExtents = true;
        return;
    }
    m_extents.left = std::min(m_extents.left, box.left);
    m_extents.right = std::max(m_extents.right, box.right);
    m_extents.lower = std::min(m_extents.lower, box.lower);
    m_extents.upper = std::max(m_extents.upper, box.upper);
}
