#include "protocol/pages/protocolrun.h"

#include "core/kalibrierung.h"

#include <new>
#include <utility>

void PageSink::pageBegun(const std::shared_ptr<Page> &, std::int32_t) {}

void PageSink::pageCompleted(const std::shared_ptr<Page> &) {}

ProtocolRun::ProtocolRun(Kalibrierung &document, ProtocolOptions options, PageSink &sink)
    : m_options(std::move(options))
    , m_sink(sink)
    , m_composition(document, m_options.type, m_bander, m_measure)
{
    connect(&m_bander, &clsBanderEvents::NewPage, this, &ProtocolRun::Bander_NewPage);
    connect(&m_bander, &clsBanderEvents::CompletePage, this, &ProtocolRun::Bander_CompletePage);
}

bool ProtocolRun::step()
{
    try {
        const bool more = m_composition.step();
        if (m_pageError)
            std::rethrow_exception(m_pageError);
        if (!more)
            stop();
        if (m_pageError)
            std::rethrow_exception(m_pageError);
        return more;
    } catch (...) {
        const std::exception_ptr cause = m_pageError ? m_pageError : std::current_exception();
        m_pageError = nullptr;
        stop();
        try {
            std::rethrow_exception(cause);
        } catch (const std::bad_alloc &) {
            throw RunTimeError(ErrorNumber::OutOfMemory);
        }
    }
}

void ProtocolRun::stop()
{
    if (m_page)
        Bander_CompletePage();
}

// Errors must not cross the signal that asked for the page: without a Target the composer stops at
// its next band, and step() raises what has happened here.
template <typename Action>
void ProtocolRun::guarded(Action action)
{
    try {
        action();
    } catch (...) {
        m_bander.Target = nullptr;
        if (!m_pageError)
            m_pageError = std::current_exception();
    }
}

std::shared_ptr<Page> ProtocolRun::newPage(std::int32_t number)
{
    try {
        std::shared_ptr<Page> page =
            m_options.makePage ? m_options.makePage(number)
                               : std::make_shared<Page>(makePage(number, m_options.format,
                                                                 m_measure, m_options.diagnostics));
        if (page)
            return page;
    } catch (const std::bad_alloc &) {
        // the same as no page
    }
    throw DrawingUnavailable();
}

void ProtocolRun::Bander_NewPage()
{
    guarded([this] {
        m_page = newPage(m_bander.PageCount + 1);
        m_bander.Target = &m_page->drawing;
        m_bander.PageHeight = m_page->format.pageHeight();
        m_bander.TopMargin = pageMarginCm;
        m_bander.BottomMargin = pageMarginCm;
        m_sink.pageBegun(m_page, m_bander.PageCount);
    });
}

void ProtocolRun::Bander_CompletePage()
{
    guarded([this] {
        const std::shared_ptr<Page> page = std::exchange(m_page, nullptr);
        m_bander.Target = nullptr;
        if (page)
            m_sink.pageCompleted(page);
    });
}
