// Printing, printer set-up, editing and saving of the preview.

#include "core/kalibrierung.h"
#include "core/outputtarget.h"
#include "core/produkt.h"
#include "protocol/pages/protocolpdf.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/pagestack.h"
#include "protocol/windows/previewcontrols.h"
#include "protocol/windows/printpages.h"
#include "protocol/windows/protocolservices.h"

#include <QFileInfo>
#include <QPageSize>
#include <QPrinter>
#include <QStatusBar>

namespace {

// No selection, no page range, no file; copies are the printer driver's business.
constexpr QAbstractPrintDialog::PrintDialogOptions printOptions =
    QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintCollateCopies;

} // namespace

QPrinter &frmProtocollPreview::printer()
{
    if (!m_printer) {
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        m_printer->setPageSize(QPageSize(QPageSize::A4));
        m_printer->setFullPage(true);
        m_printer->setDocName(u"Protokoll"_qs);
        m_printer->setCreator(produkt::name());
    }
    return *m_printer;
}

void frmProtocollPreview::takeSheetFrom(const QPrinter &printer)
{
    constexpr double millimetresPerCentimetre = 10.0;
    QSizeF sheet = printer.pageLayout().fullRect(QPageLayout::Millimeter).size();
    const bool isWide = sheet.width() > sheet.height();
    // A driver's A4 may be some tenths of a millimetre off; pages must not break elsewhere for
    // that.
    sheet = QPageSize(isWide ? sheet.transposed() : sheet, QPageSize::Millimeter, {},
                      QPageSize::FuzzyMatch)
                .size(QPageSize::Millimeter);
    if (isWide)
        sheet.transpose();
    if (!sheet.isEmpty())
        m_format = {sheet.width() / millimetresPerCentimetre,
                    sheet.height() / millimetresPerCentimetre};
}

void frmProtocollPreview::print()
{
    if (!ask([this] { return m_services.choosePrinter(printer(), printOptions, this); }))
        return;
    // Before anything else is touched: a job that is refused leaves the preview as it is.
    auto pages = std::make_unique<PrintPages>(printer());
    m_slices.drop();
    m_composing = false;
    takeSheetFrom(printer());
    m_printPages = std::move(pages);
    m_printPages->onPageBegun = [this](std::int32_t number, std::int32_t pageCount) {
        reportNewPage(number, pageCount);
    };
    m_run = std::make_unique<ProtocolRun>(*m_document, options(), *m_printPages);
    m_slices.start(
        [this] {
            const bool more = m_run->step();
            if (!more)
                m_printPages->finish();
            return more;
        },
        [this](const std::exception_ptr &error) { printEnded(error); });
}

// A protocol that could not be finished is not printed in part.
void frmProtocollPreview::printEnded(const std::exception_ptr &error)
{
    if (error)
        m_printPages->abort();
    m_run.reset();
    m_printPages.reset();
    m_controls->setProgress({});
    if (error)
        report(error);
    compose(error);
}

void frmProtocollPreview::setUpPrinter()
{
    if (ask([this] { return m_services.setUpPrinter(printer(), this); }))
        takeSheetFrom(printer());
    rebuild();
}

void frmProtocollPreview::edit()
{
    ask([this] { m_document->ShowProtocollExtraData(true, this); });
    rebuild();
}

void frmProtocollPreview::saveAsPdf()
{
    const QString target =
        ask([this] { return m_services.choosePdfTarget(m_pdfSuggestion, this); });
    if (target.isEmpty())
        return;
    refuseCalibrationAsTarget(target, m_calibrationFile, u"das Protokoll"_qs);
    m_pdf = std::make_unique<ProtocolPdfJob>(*m_document, options(), target);
    m_composeAnew = m_slices.isRunning();
    m_slices.start(
        [this] {
            const bool more = m_pdf->step();
            if (!more)
                m_pdf->commit();
            return more;
        },
        [=, this](const std::exception_ptr &error) { pdfEnded(error, target); });
}

void frmProtocollPreview::pdfEnded(const std::exception_ptr &error, const QString &target)
{
    constexpr int milliseconds = 10'000;
    m_pdf.reset();
    m_controls->setProgress({});
    if (error)
        report(error);
    else
        statusBar()->showMessage(u"Gespeichert: "_qs + QFileInfo(target).fileName(), milliseconds);
    if (m_composeAnew)
        compose(error);
}

void frmProtocollPreview::cancelJob()
{
    const bool pagesAreMissing = m_printPages || (m_pdf && m_composeAnew);
    stopJob();
    if (pagesAreMissing)
        rebuild();
}

void frmProtocollPreview::stopJob()
{
    if (!m_slices.isRunning())
        return;
    m_slices.drop();
    m_incomplete = m_incomplete || (m_composing && !m_pdf);
    if (m_printPages)
        m_printPages->abort();
    else if (m_run)
        m_run->stop();
    m_pdf.reset();
    m_run.reset();
    m_printPages.reset();
    m_controls->setProgress({});
    m_composing = false;
    placeScrollBars();
    showPageCount();
}

void frmProtocollPreview::showProgress()
{
    constexpr std::size_t pagesWithoutProgress = 10;
    showPageCount();
    if (m_printPages)
        m_controls->setProgress(u"Seite %1 wird gedruckt"_qs.arg(m_printPages->pageCount()), true);
    else if (m_pdf)
        m_controls->setProgress(u"Seite %1 wird gespeichert"_qs.arg(m_pdf->pageCount()), true);
    else if (m_stack->pages().size() > pagesWithoutProgress)
        m_controls->setProgress(u"Seite %1 wird gesetzt"_qs.arg(m_stack->pages().size()));
}
