#pragma once

#include "protocol/pages/protocolrun.h"

#include <QBuffer>
#include <QByteArray>
#include <QPainter>
#include <QPdfWriter>
#include <QString>

#include <memory>

class AtomicFile;
class Kalibrierung;

/// Paints the pages that it gets into a PDF in memory: fonts embedded, with a title, in the
/// archival profile PDF/A-1b.
class PdfPages : public PageSink
{
public:
    explicit PdfPages(const PageFormat &format);
    ~PdfPages() override;

    void pageCompleted(const std::shared_ptr<Page> &page) override;
    std::int32_t pageCount() const { return m_pages; }

    /// Ends the document. \returns its bytes. Raises 57 where it could not be written.
    QByteArray finished();

private:
    QBuffer m_buffer;
    QPdfWriter m_writer;
    QPainter m_painter;
    std::int32_t m_pages = 0;
};

/// Composes a protocol and writes it as PDF, in steps. The target is replaced as a whole by
/// commit(); until then it is as it was.
class ProtocolPdfJob
{
public:
    /// Raises 70, 75 or 76 where there can be no file. \a document is borrowed.
    ProtocolPdfJob(Kalibrierung &document, const ProtocolOptions &options, const QString &target);
    ~ProtocolPdfJob();

    /// \returns whether there is more; raises what ProtocolRun::step() raises.
    bool step() { return m_run.step(); }
    std::int32_t pageCount() const { return m_pages.pageCount(); }
    /// Raises 57, 61, 70 or 75.
    void commit();

private:
    std::unique_ptr<AtomicFile> m_file;
    PdfPages m_pages;
    ProtocolRun m_run;
};

/// Writes the protocol of \a document to \a target as PDF.
///
/// Needs a QGuiApplication (or QApplication) object, whose platform may be "offscreen". Raises
/// RunTimeError: what composing raises, or 57, 61, 70, 75, 76 for the file; the target is as it was
/// then.
void writeProtocolPdf(Kalibrierung &document, ProtocolType type, const QString &target,
                      const PageFormat &format = {});
