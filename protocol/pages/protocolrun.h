#pragma once

#include "core/runtimeerror.h"
#include "protocol/pages/clsbander.h"
#include "protocol/pages/page.h"
#include "protocol/pages/protocolcomposition.h"
#include "protocol/pages/textmeasure.h"

#include <QObject>

#include <exception>
#include <functional>
#include <memory>

class Kalibrierung;

/// No page can be made to draw on.
class DrawingUnavailable : public RunTimeError
{
public:
    DrawingUnavailable() : RunTimeError(ErrorNumber::OutOfMemory) {}
};

/// Takes the pages of a protocol while it is being composed.
class PageSink
{
public:
    virtual ~PageSink() = default;
    /// \a page has been made and is empty yet; \a pageCount is the composer's.
    virtual void pageBegun(const std::shared_ptr<Page> &page, std::int32_t pageCount);
    /// \a page gets no more bands.
    virtual void pageCompleted(const std::shared_ptr<Page> &page);
};

/// What a protocol is composed for.
struct ProtocolOptions
{
    ProtocolType type = ProtocolType::WithCalibrationField;
    PageFormat format;
    bool diagnostics = false; ///< debug mode: each page carries its name and extents
    /// Makes page number \a number. Pages are made plainly where it is empty.
    std::function<std::shared_ptr<Page>(std::int32_t number)> makePage = {};
};

/// One composition: a composer of its own, and the pages that it asks for. Screen, printer and PDF
/// get their pages from here.
class ProtocolRun : public QObject
{
    Q_OBJECT

public:
    /// \a document and \a sink are borrowed.
    ProtocolRun(Kalibrierung &document, ProtocolOptions options, PageSink &sink);

    /// Composes a little more. \returns whether there is more; after the last band the last page is
    /// completed. Raises RunTimeError (DrawingUnavailable where no page could be made) and has
    /// completed the unfinished page then.
    bool step();
    /// Ends early: completes the unfinished page.
    void stop();

    const clsBander &bander() const { return m_bander; }

private:
    void Bander_NewPage();
    void Bander_CompletePage();
    std::shared_ptr<Page> newPage(std::int32_t number);
    template <typename Action>
    void guarded(Action action);

    ProtocolOptions m_options;
    PageSink &m_sink;
    TextMeasure m_measure;
    clsBander m_bander;
    ProtocolComposition m_composition;
    std::shared_ptr<Page> m_page;   ///< the one being filled
    std::exception_ptr m_pageError; ///< of an event handler, until the composition has unwound
};
