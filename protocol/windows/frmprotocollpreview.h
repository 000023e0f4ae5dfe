#pragma once

#include "protocol/pages/protocolrun.h"
#include "protocol/windows/haltoffen.h"
#include "protocol/windows/slices.h"

#include <QMainWindow>
#include <QScopeGuard>
#include <QString>

#include <exception>
#include <functional>
#include <memory>

class Kalibrierung;
class PageStack;
class PreviewControls;
class PrintPages;
class ProtocolPdfJob;
class ProtocolServices;
class QPrinter;
class QScrollBar;

/// The protocol of a document on screen: type, zoom, pages; printing, printer set-up, saving as
/// PDF, and the way to the descriptive data. Modal to its parent.
class frmProtocollPreview : public QMainWindow, private PageSink
{
    Q_OBJECT

public:
    /// \a services is borrowed; with \a debugMode each new page reports itself.
    explicit frmProtocollPreview(ProtocolServices &services, bool debugMode = false,
                                 QWidget *parent = nullptr);
    ~frmProtocollPreview() override;

    /// The document, borrowed; set before the window is shown.
    void setKalibrierung(Kalibrierung &document) { m_document = &document; }
    /// The file that saving as PDF suggests: a name, or a path with it.
    void setPdfSuggestion(const QString &path) { m_pdfSuggestion = path; }
    /// The document's own file, which no PDF may replace; empty where it has none yet.
    void setCalibrationFile(const QString &path) { m_calibrationFile = path; }

    /// Makes the pages in place of the plain way.
    void setPageMaker(std::function<std::shared_ptr<Page>(std::int32_t)> maker);

    /// Composes the protocol again, in slices; its first page is there when this returns.
    void rebuild();
    /// Whether pages are still being composed, printed or saved.
    bool isBusy() const { return m_slices.isRunning(); }

    /// Runs a toolbar command: "refresh", "print", "printersetup", "edit" or "pdf". Failures are
    /// shown in a message box.
    void tbProtokoll_ButtonClick(const QString &key);

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    // the pages of the preview
    void pageBegun(const std::shared_ptr<Page> &page, std::int32_t pageCount) override;
    void pageCompleted(const std::shared_ptr<Page> &page) override;

    /// In debug mode each new page, on screen or paper, says which it is.
    void reportNewPage(std::int32_t number, std::int32_t pageCount);

    void Form_Load();
    void cboZoom_Change();
    void picWorkspace_KeyDown(int key);
    void wheelScroll(int horizontal, int vertical);
    void wheelZoom(int steps);
    void setZoom(const QString &text);
    void scrollBy(int horizontal, int vertical);
    void placeScrollBars();
    void VScroll1_Change();

    ProtocolOptions options() const;
    /// Composing waits while \a dialog runs, so that its failure is not reported over it.
    /// The window stays.
    template <typename Dialog>
    auto ask(const Dialog &dialog)
    {
        const HaltOffen open(this);
        m_slices.hold();
        const auto release = qScopeGuard([this] { m_slices.release(); });
        return dialog();
    }
    QPrinter &printer();
    void takeSheetFrom(const QPrinter &printer);
    void print();
    void setUpPrinter();
    void edit();
    void saveAsPdf();
    void cancelJob();
    void stopJob();

    void compose(const std::exception_ptr &reported);
    void printEnded(const std::exception_ptr &error);
    void pdfEnded(const std::exception_ptr &error, const QString &target);
    void message(const QString &text);
    void report(const std::exception_ptr &error);
    void showProgress();
    void showPageCount();

    ProtocolServices &m_services;
    bool m_debugMode;
    Kalibrierung *m_document = nullptr;
    PageFormat m_format;
    QString m_pdfSuggestion = QStringLiteral("Protokoll.pdf");
    QString m_calibrationFile;
    std::function<std::shared_ptr<Page>(std::int32_t)> m_pageMaker;
    std::unique_ptr<QPrinter> m_printer; ///< made when first needed: asking the system takes time

    PreviewControls *m_controls;
    PageStack *m_stack;
    QScrollBar *m_vertical;
    QScrollBar *m_horizontal;
    QString m_zoomText; ///< the last one that was a factor
    bool m_loaded = false;
    bool m_incomplete = false;  ///< composing was cancelled or failed: pages are missing
    bool m_composeAnew = false; ///< saving has displaced an unfinished composition
    bool m_composing = false;   ///< the scroll bars keep their range: the view stays where it is

    // Declared after what their steps use, so that they end first.
    std::unique_ptr<ProtocolRun> m_run; ///< of the preview or the printer
    std::unique_ptr<PrintPages> m_printPages;
    std::unique_ptr<ProtocolPdfJob> m_pdf;
    Slices m_slices;
};
