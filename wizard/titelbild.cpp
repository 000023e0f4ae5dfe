#include "wizard/titelbild.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <array>

namespace {

// The picture's own coordinates: 300 wide, from the ground line (0) up and down.
constexpr qreal pictureWidth = 300.0;

void drawSoil(QPainter &painter, const QRectF &below, bool dark)
{
    const std::array<QColor, 4> light{QColor(0xb9, 0x8f, 0x5e), QColor(0xa3, 0x79, 0x4b),
                                      QColor(0x8a, 0x63, 0x3c), QColor(0x70, 0x4f, 0x30)};
    const qreal layer = below.height() / static_cast<qreal>(light.size());
    painter.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < light.size(); ++i) {
        painter.setBrush(dark ? light[i].darker(150) : light[i]);
        painter.drawRect(QRectF(below.left(), below.top() + layer * static_cast<qreal>(i),
                                below.width(), layer + 1.0));
    }
}

void drawRoller(QPainter &painter)
{
    const QColor body(0xf2, 0xb3, 0x2a);
    const QColor steel(0x4a, 0x55, 0x62);
    painter.setPen(Qt::NoPen);
    painter.setBrush(steel);
    painter.drawEllipse(QPointF(95, -31), 31, 31);  // drum
    painter.drawEllipse(QPointF(205, -28), 28, 28); // wheel
    painter.setBrush(QColor(0x8b, 0x97, 0xa5));
    painter.drawEllipse(QPointF(95, -31), 20, 20);
    painter.drawEllipse(QPointF(205, -28), 13, 13);
    painter.setBrush(body);
    painter.drawRoundedRect(QRectF(88, -38, 70, 12), 4, 4); // frame to the drum
    QPainterPath hull;
    hull.moveTo(148, -36);
    hull.lineTo(148, -66);
    hull.lineTo(238, -66);
    hull.quadTo(250, -66, 250, -52);
    hull.lineTo(250, -36);
    hull.closeSubpath();
    painter.drawPath(hull);
    painter.drawRoundedRect(QRectF(150, -118, 62, 8), 3, 3); // roof
    painter.setBrush(steel);
    painter.drawRect(QRectF(154, -112, 5, 48));
    painter.drawRect(QRectF(202, -112, 5, 48));
}

void drawMeasurement(QPainter &painter, const QColor &ink)
{
    const std::array<QPointF, 9> points{QPointF(52, -186),  QPointF(80, -208),  QPointF(104, -200),
                                        QPointF(130, -232), QPointF(158, -226), QPointF(180, -254),
                                        QPointF(206, -250), QPointF(228, -276), QPointF(252, -268)};
    painter.setPen(QPen(ink, 2.0));
    painter.drawLine(QPointF(36, -164), QPointF(36, -290));
    painter.drawLine(QPointF(36, -164), QPointF(268, -164));
    painter.setPen(QPen(QColor(0xf2, 0xb3, 0x2a), 3.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(44, -186), QPointF(262, -282));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    for (const QPointF &point : points)
        painter.drawEllipse(point, 4.0, 4.0);
}

} // namespace

Titelbild::Titelbild(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize Titelbild::sizeHint() const
{
    const int em = fontMetrics().height();
    return {em * 18, em * 24};
}

void Titelbild::paintEvent(QPaintEvent *)
{
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, height());
    sky.setColorAt(0.0, dark ? QColor(0x1c, 0x2a, 0x38) : QColor(0x2f, 0x5d, 0x86));
    sky.setColorAt(1.0, dark ? QColor(0x2c, 0x40, 0x52) : QColor(0x8f, 0xb9, 0xd6));
    painter.fillRect(rect(), sky);

    const qreal scale = qMin(width() / pictureWidth, height() / 420.0);
    const qreal ground = height() - 100.0 * scale;
    drawSoil(painter, QRectF(0, ground, width(), height() - ground), dark);
    painter.translate((width() - pictureWidth * scale) / 2.0, ground);
    painter.scale(scale, scale);
    drawRoller(painter);
    drawMeasurement(painter, QColor(0xf4, 0xf7, 0xfa));
}
