#pragma once

#include "protocol/pages/protocolrun.h"

#include <QPainter>

#include <functional>

class QPrinter;

/// Paints the pages that it gets onto a printer, a sheet each.
///
/// A white point opens the job before the first page, and another one in the weakest of greys keeps
/// every sheet from being empty.
class PrintPages : public PageSink
{
public:
    /// Opens the print job. Raises 57 where the printer can't be reached. \a printer is borrowed.
    explicit PrintPages(QPrinter &printer);
    ~PrintPages() override;

    /// Called when a page has been begun, with its number and the composer's count.
    std::function<void(std::int32_t number, std::int32_t pageCount)> onPageBegun;

    void pageBegun(const std::shared_ptr<Page> &page, std::int32_t pageCount) override;
    void pageCompleted(const std::shared_ptr<Page> &page) override;
    std::int32_t pageCount() const { return m_pages; }

    /// Ends the job. Raises 57 where the printer reports a failure.
    void finish();
    /// Ends the job so that nothing is printed, where the platform can still stop it.
    void abort();

private:
    void drawPoint(const QPoint &at, const QColor &colour);

    QPrinter &m_printer;
    QPainter m_painter;
    std::int32_t m_pages = 0;
};
