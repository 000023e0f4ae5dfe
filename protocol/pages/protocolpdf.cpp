#include "protocol/pages/protocolpdf.h"

#include "core/atomicfile.h"
#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "protocol/pages/painting.h"

#include <QPageLayout>
#include <QPageSize>

PdfPages::PdfPages(const PageFormat &format) : m_writer(&m_buffer)
{
    constexpr double millimetresPerCentimetre = 10.0;
    m_buffer.open(QIODevice::WriteOnly);
    m_writer.setPdfVersion(QPdfWriter::PdfVersion_A1b);
    m_writer.setResolution(static_cast<int>(layoutDotsPerInch));
    m_writer.setTitle(u"Kalibrierung eines direkten und eines indirekten Prüfmerkmals "
                      u"nach Wendral (Ausgabe 2003)"_qs);
    m_writer.setCreator(produkt::name());
    const QSizeF size = QSizeF(format.sheetWidth, format.sheetHeight) * millimetresPerCentimetre;
    m_writer.setPageLayout(
        QPageLayout(QPageSize(size, QPageSize::Millimeter), QPageLayout::Portrait, QMarginsF()));
}

PdfPages::~PdfPages() = default;

void PdfPages::pageCompleted(const std::shared_ptr<Page> &page)
{
    const bool ready = m_pages == 0 ? m_painter.begin(&m_writer) : m_writer.newPage();
    if (!ready)
        throw RunTimeError(ErrorNumber::DeviceIo);
    ++m_pages;
    paintPage(m_painter, *page, layoutPixelsPerCentimetre);
}

QByteArray PdfPages::finished()
{
    if (!m_painter.end())
        throw RunTimeError(ErrorNumber::DeviceIo);
    return m_buffer.data();
}

ProtocolPdfJob::ProtocolPdfJob(Kalibrierung &document, const ProtocolOptions &options,
                               const QString &target)
    : m_file(std::make_unique<AtomicFile>(target))
    , m_pages(options.format)
    , m_run(document, options, m_pages)
{
}

ProtocolPdfJob::~ProtocolPdfJob() = default;

void ProtocolPdfJob::commit()
{
    m_file->write(m_pages.finished());
    m_file->commit();
}

void writeProtocolPdf(Kalibrierung &document, ProtocolType type, const QString &target,
                      const PageFormat &format)
{
    ProtocolPdfJob job(document, {type, format, false, {}}, target);
    while (job.step()) {
        // nobody waits for the pages in between
    }
    job.commit();
}
