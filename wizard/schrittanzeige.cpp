#include "wizard/schrittanzeige.h"

#include <QPainter>

Schrittanzeige::Schrittanzeige(const QStringList &steps, QWidget *parent)
    : QWidget(parent), m_steps(steps)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    setForegroundRole(QPalette::Text);
}

void Schrittanzeige::setCurrent(int step)
{
    m_current = step;
    const QString name = m_steps.value(step - 1);
    setAccessibleName(u"Schritt %1 von %2: %3"_qs.arg(QString::number(step),
                                                      QString::number(m_steps.size()), name));
    update();
}

int Schrittanzeige::circleSize() const
{
    return fontMetrics().height() * 3 / 2;
}

QSize Schrittanzeige::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 20 * static_cast<int>(m_steps.size()),
            circleSize() + fontMetrics().height() * 2};
}

QSize Schrittanzeige::minimumSizeHint() const
{
    return {circleSize() * static_cast<int>(m_steps.size()), sizeHint().height()};
}

void Schrittanzeige::drawCircle(QPainter &painter, const QRectF &circle, int step) const
{
    const bool reached = step <= m_current;
    const QColor ink = palette().color(QPalette::Text);
    QColor faint = ink;
    faint.setAlphaF(0.45F);
    const QColor accent = palette().color(QPalette::Highlight);
    painter.setPen(QPen(reached ? accent : faint, 1.5));
    painter.setBrush(step == m_current ? QBrush(accent) : QBrush(Qt::NoBrush));
    painter.drawEllipse(circle);
    painter.setPen(step == m_current ? palette().color(QPalette::HighlightedText) : ink);
    painter.drawText(circle, Qt::AlignCenter, QString::number(step));
}

void Schrittanzeige::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto count = static_cast<int>(m_steps.size());
    const qreal slot = static_cast<qreal>(width()) / count;
    const qreal size = circleSize();
    const qreal top = fontMetrics().height() / 2.0;
    QColor line = palette().color(QPalette::Text);
    line.setAlphaF(0.3F);
    for (int step = 1; step <= count; ++step) {
        const QRectF circle(slot * (step - 1) + (slot - size) / 2.0, top, size, size);
        if (step < count) {
            painter.setPen(
                QPen(step < m_current ? palette().color(QPalette::Highlight) : line, 1.5));
            painter.drawLine(QPointF(circle.right() + 6.0, circle.center().y()),
                             QPointF(circle.left() + slot - 6.0, circle.center().y()));
        }
        drawCircle(painter, circle, step);

        QFont font = this->font();
        font.setBold(step == m_current);
        painter.setFont(font);
        painter.setPen(palette().color(QPalette::Text));
        const QRectF below(slot * (step - 1) + 2.0, circle.bottom() + 1.0, slot - 4.0,
                           fontMetrics().height() + 2.0);
        painter.drawText(
            below, Qt::AlignCenter,
            QFontMetricsF(font).elidedText(m_steps.at(step - 1), Qt::ElideRight, below.width()));
        painter.setFont(this->font());
    }
}
