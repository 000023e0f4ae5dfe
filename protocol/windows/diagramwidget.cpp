#include "protocol/windows/diagramwidget.h"

#include "core/kalibrierung.h"
#include "protocol/pages/diagram.h"
#include "protocol/pages/painting.h"
#include "protocol/pages/resultblocks.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace {

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
    try {
        const DiagramData diagram = diagramData(document, dependent, independent);
        m_drawing = diagramDrawing(diagram, m_measure);
        setAccessibleDescription(describe(document, diagram, dependent, independent));
    } catch (const RunTimeError &error) {
        m_drawing = Drawing();
        m_reason = u"Kein Diagramm: "_qs + error.description();
        setAccessibleDescription(m_reason);
    }
    update();
}

QSize DiagramWidget::sizeHint() const
{
    return {400, 300};
}

void DiagramWidget::paintEvent(QPaintEvent *)
{
    constexpr double paddingCm = 0.2;
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
    const double width = box.right - box.left + 2 * paddingCm;
    const double height = box.height() + 2 * paddingCm;
    const double pixelsPerCm = std::min(this->width() / width, this->height() / height);
    painter.translate((this->width() - width * pixelsPerCm) / 2 +
                          (paddingCm - box.left) * pixelsPerCm,
                      (this->height() - height * pixelsPerCm) / 2 + paddingCm * pixelsPerCm);
    paintDrawing(painter, m_drawing, box.upper, pixelsPerCm);
}
