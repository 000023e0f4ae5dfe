#include "protocol/windows/diagramwidget.h"

#include "core/kalibrierung.h"
#include "protocol/pages/painting.h"
#include "protocol/pages/resultblocks.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

namespace {

constexpr double paddingCm = 0.2;

QString rangeText(const LabelledAxis &axis, const Values &values)
{
    return axis.title + u" von "_qs + values.text(axis.axis.dataMinimum) + u" bis "_qs +
           values.text(axis.axis.dataMaximum);
}

QString describe(Kalibrierung &document, const DiagramData &data, MerkmalEnum dependent,
                 MerkmalEnum independent)
{
    const QString equation =
        equationText(merkmalOf(document, dependent).Formelzeichen(),
                     document.StatistikKalibriergeradeAchsenabschnittString(dependent, independent),
                     document.StatistikKalibriergeradeAnstiegString(dependent, independent),
                     merkmalOf(document, independent).Formelzeichen());
    return u"%1 Punkte, waagerecht %2, senkrecht %3. Kalibriergerade %4."_qs.arg(
        QString::number(data.points.size()), rangeText(data.horizontal, document.values()),
        rangeText(data.vertical, document.values()), equation);
}

QString reasonFor(const RunTimeError &error)
{
    switch (static_cast<ErrorNumber>(error.number())) {
    case ErrorNumber::InvalidUseOfNull:
        return u"Es fehlen Messwerte."_qs;
    case ErrorNumber::InvalidProcedureCall:
        return u"Alle Werte eines Merkmals sind gleich, oder es gibt keine."_qs;
    case ErrorNumber::TypeMismatch:
        return u"Ein Messwert ist keine Zahl, oder die Kalibriergerade lässt sich nicht "
               u"berechnen."_qs;
    default:
        return error.description();
    }
}

// Of points that would be painted over each other one remains: a million of them would make every
// change of the window's size slow.
std::vector<QPointF> visiblePoints(const DiagramData &data, const QSize &pixels)
{
    std::unordered_set<qint64> taken;
    std::vector<QPointF> result;
    const auto cell = [](const Axis &axis, double value, int size) {
        return static_cast<qint64>(
            std::floor((value - axis.minimum) / (axis.maximum - axis.minimum) * size));
    };
    for (const QPointF &point : data.points) {
        const qint64 x = cell(data.horizontal.axis, point.x(), pixels.width());
        const qint64 y = cell(data.vertical.axis, point.y(), pixels.height());
        constexpr qint64 row = qint64(1) << 32;
        if (taken.insert(y * row + x).second)
            result.push_back(point);
    }
    return result;
}

} // namespace

DiagramWidget::DiagramWidget(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(160, 120);
}

void DiagramWidget::showPair(Kalibrierung &document, MerkmalEnum dependent, MerkmalEnum independent)
{
    setAccessibleName(u"Diagramm "_qs + merkmalOf(document, dependent).Formelzeichen() +
                      u" = f("_qs + merkmalOf(document, independent).Formelzeichen() + u')');
    m_reason.clear();
    m_diagram.reset();
    try {
        m_diagram = diagramData(document, dependent, independent);
        setAccessibleDescription(describe(document, *m_diagram, dependent, independent));
    } catch (const RunTimeError &error) {
        m_reason = u"Kein Diagramm: "_qs + reasonFor(error);
        setAccessibleDescription(m_reason);
    }
    setToolTip(u"<span>"_qs + accessibleDescription().toHtmlEscaped() + u"</span>"_qs);
    layOut();
}

QSize DiagramWidget::sizeHint() const
{
    return {400, 300};
}

// Texts come out a little smaller than on paper, where there is more room.
double DiagramWidget::pixelsPerCm() const
{
    constexpr double smaller = 0.85;
    return logicalDpiX() / centimetresPerInch * smaller;
}

void DiagramWidget::resizeEvent(QResizeEvent *)
{
    layOut();
}

void DiagramWidget::layOut()
{
    constexpr double smallestFrameCm = 2.0;
    constexpr double widestFor = 2.2; // times the height
    m_drawing = Drawing();
    update();
    if (!m_diagram)
        return;
    DiagramData shown = *m_diagram;
    shown.points = visiblePoints(*m_diagram, size() * devicePixelRatioF());
    const double width = this->width() / pixelsPerCm() - 2 * paddingCm;
    const double height = this->height() / pixelsPerCm() - 2 * paddingCm;
    DiagramSize frame{width, height, 0.0, width / 2, std::numeric_limits<double>::infinity()};
    // What the texts need depends on the frame; after two steps it hardly changes.
    for (int step = 0; step < 3; ++step) {
        frame.frameWidth = std::clamp(frame.frameWidth, smallestFrameCm,
                                      std::max(smallestFrameCm, frame.frameHeight * widestFor));
        frame.frameHeight = std::max(frame.frameHeight, smallestFrameCm);
        m_drawing = diagramDrawing(shown, m_measure, frame);
        const Extents &box = m_drawing.extents();
        frame.frameWidth += width - (box.right - box.left);
        frame.frameHeight += height - box.height();
    }
}

void DiagramWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white); // paper, whatever colours windows have
    if (!m_reason.isEmpty()) {
        painter.setPen(Qt::black);
        painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                         m_reason);
        return;
    }
    if (m_drawing.primitives().empty())
        return;
    const Extents &box = m_drawing.extents();
    const double boxWidth = box.right - box.left + 2 * paddingCm;
    const double boxHeight = box.height() + 2 * paddingCm;
    const double scale = std::min({pixelsPerCm(), width() / boxWidth, height() / boxHeight});
    painter.translate((width() - boxWidth * scale) / 2 + (paddingCm - box.left) * scale,
                      (height() - boxHeight * scale) / 2 + paddingCm * scale);
    paintDrawing(painter, m_drawing, box.upper, scale);
}
