#include "protocol/windows/printpages.h"

#include "protocol/pages/painting.h"

#include <QPrinter>

namespace {

[[noreturn]] void raisePrinterFailure()
{
    throw RunTimeError(ErrorNumber::DeviceIo, u"der Drucker nimmt den Auftrag nicht an"_qs);
}

} // namespace

PrintPages::PrintPages(QPrinter &printer) : m_printer(printer)
{
    m_printer.setFullPage(true);
    if (!m_painter.begin(&m_printer))
        raisePrinterFailure();
    drawPoint({0, 0}, QColor(255, 255, 255));
}

PrintPages::~PrintPages() = default;

void PrintPages::pageBegun(const std::shared_ptr<Page> &page, std::int32_t pageCount)
{
    if (onPageBegun)
        onPageBegun(page->number, pageCount);
}

void PrintPages::pageCompleted(const std::shared_ptr<Page> &page)
{
    if (m_pages > 0 && !m_printer.newPage())
        raisePrinterFailure();
    ++m_pages;
    paintPage(m_painter, *page, m_printer.resolution() / centimetresPerInch);
    drawPoint({10, 10}, QColor(255, 255, 254));
}

void PrintPages::drawPoint(const QPoint &at, const QColor &colour)
{
    m_painter.setPen(QPen(colour, 1));
    m_painter.drawPoint(at);
}

void PrintPages::finish()
{
    if (!m_painter.end() || m_printer.printerState() == QPrinter::Error)
        raisePrinterFailure();
}

void PrintPages::abort()
{
    m_printer.abort();
    m_painter.end();
}
