#pragma once

#include "protocol/pages/drawing.h"
#include "protocol/pages/page.h"

#include <QRectF>

class QPainter;

/// Paints \a drawing; its point (0, \a topCm) lies at the painter's origin. \a pixelsPerCm is the
/// painter's scale. What lies outside of \a visible (centimetres of the drawing, y is the lower
/// edge) may be left out; a null rectangle means everything.
void paintDrawing(QPainter &painter, const Drawing &drawing, double topCm, double pixelsPerCm,
                  const QRectF &visible = {});

/// Paints \a page with the sheet's upper left corner at the painter's origin. \a pixelsPerCm counts
/// for centimetres of the sheet; \a visible is in pixels from that corner, null for everything.
/// Preview, printer and PDF all paint through this.
void paintPage(QPainter &painter, const Page &page, double pixelsPerCm, const QRectF &visible = {});
