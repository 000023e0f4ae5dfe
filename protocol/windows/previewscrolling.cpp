// Zoom and scrolling of the preview.

#include "core/kalibrierung.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/pagestack.h"
#include "protocol/windows/previewcontrols.h"
#include "protocol/windows/zoom.h"

#include <QScrollBar>

#include <algorithm>
#include <cmath>

void frmProtocollPreview::cboZoom_Change()
{
    const QString text = m_controls->zoomText();
    if (m_document && text != m_zoomText)
        setZoom(text);
}

void frmProtocollPreview::setZoom(const QString &text)
{
    try {
        const double factor = zoom::factorOf(text, m_document->values());
        const double ratio = factor / m_stack->zoom();
        // What is in the middle stays there.
        const auto kept = [ratio](const QScrollBar &bar) {
            const double half = bar.pageStep() / 2.0;
            return (bar.value() + half) * ratio - half;
        };
        const double x = kept(*m_horizontal);
        const double y = kept(*m_vertical);
        m_stack->setZoom(factor);
        m_zoomText = text;
        m_controls->setZoomText(text);
        placeScrollBars();
        m_horizontal->setValue(static_cast<int>(std::lround(x)));
        m_vertical->setValue(static_cast<int>(std::lround(y)));
        VScroll1_Change();
    } catch (const RunTimeError &) {
        m_controls->setZoomText(m_zoomText); // first, or leaving the box for the message asks again
        report(std::current_exception());
    }
}

void frmProtocollPreview::wheelZoom(int steps)
{
    if (!m_document)
        return;
    for (int i = 0; i < std::abs(steps); ++i) {
        const QString text = zoom::neighbour(m_stack->zoom(), steps, m_document->values());
        if (!text.isEmpty())
            setZoom(text);
    }
}

void frmProtocollPreview::wheelScroll(int horizontal, int vertical)
{
    constexpr int notch = 120; // eighths of a degree
    constexpr int stepsPerNotch = 3;
    const auto pixels = [](int turn, const QScrollBar &bar) {
        return -turn * stepsPerNotch * bar.singleStep() / notch;
    };
    scrollBy(pixels(horizontal, *m_horizontal), pixels(vertical, *m_vertical));
}

void frmProtocollPreview::picWorkspace_KeyDown(int key)
{
    switch (key) {
    case Qt::Key_PageUp:
        scrollBy(0, -m_vertical->pageStep());
        break;
    case Qt::Key_PageDown:
        scrollBy(0, m_vertical->pageStep());
        break;
    case Qt::Key_Up:
        scrollBy(0, -m_vertical->singleStep());
        break;
    case Qt::Key_Down:
        scrollBy(0, m_vertical->singleStep());
        break;
    case Qt::Key_Left:
        scrollBy(-m_horizontal->singleStep(), 0);
        break;
    case Qt::Key_Right:
        scrollBy(m_horizontal->singleStep(), 0);
        break;
    default:
        break;
    }
}

void frmProtocollPreview::scrollBy(int horizontal, int vertical)
{
    const auto moved = [](const QScrollBar &bar, int by) {
        const qint64 value = qint64{bar.value()} + by;
        return static_cast<int>(std::clamp<qint64>(value, bar.minimum(), bar.maximum()));
    };
    m_horizontal->setValue(moved(*m_horizontal, horizontal));
    m_vertical->setValue(moved(*m_vertical, vertical));
}

void frmProtocollPreview::placeScrollBars()
{
    const QSize all = m_stack->stackSize();
    m_horizontal->setPageStep(m_stack->width());
    m_vertical->setPageStep(m_stack->height());
    m_horizontal->setRange(0, std::max(0, all.width() - m_stack->width()));
    const int least = m_composing ? m_vertical->maximum() : 0;
    m_vertical->setRange(0, std::max(least, all.height() - m_stack->height()));
}

void frmProtocollPreview::VScroll1_Change()
{
    m_stack->scrollTo({m_horizontal->value(), m_vertical->value()});
    showPageCount();
}

void frmProtocollPreview::showPageCount()
{
    const auto count = m_stack->pages().size();
    QString text = count == 0 ? u"Keine Seiten"_qs
                              : u"Seite %1 von %2"_qs.arg(m_stack->currentPage()).arg(count);
    if (m_incomplete)
        text += u" (abgebrochen, unvollständig)"_qs;
    m_controls->setPageText(text);
}
