#include "protocol/windows/frmprotocollpreview.h"

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "protocol/pages/protocolpdf.h"
#include "protocol/windows/pagestack.h"
#include "protocol/windows/previewcontrols.h"
#include "protocol/windows/printpages.h"
#include "protocol/windows/protocolservices.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QPrinter>
#include <QScrollBar>
#include <QShowEvent>

#include <utility>

namespace {

constexpr int smallChangePixels = 40;

QString messageOf(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const DrawingUnavailable &) {
        return u"Die Komponente VecorDraw ist nicht ordnungsgemäß installiert. \r\n"
               u"Deinstallieren Sie das Programm und führen Sie die Installation des Programmes "
               u"erneut aus."_qs;
    } catch (const RunTimeError &failure) {
        return errorReport(u"Folgender Fehler ist aufgetreten:"_qs, failure);
    } catch (const std::exception &) {
        return errorReport(u"Folgender Fehler ist aufgetreten:"_qs,
                           RunTimeError(ErrorNumber::OutOfMemory));
    }
}

QScrollBar *scrollBar(const QString &name, Qt::Orientation orientation, QWidget *parent)
{
    auto *bar = new QScrollBar(orientation, parent);
    bar->setObjectName(name);
    bar->setSingleStep(smallChangePixels);
    return bar;
}

} // namespace

frmProtocollPreview::frmProtocollPreview(ProtocolServices &services, bool debugMode,
                                         QWidget *parent)
    : QMainWindow(parent, Qt::Window)
    , m_services(services)
    , m_debugMode(debugMode)
    , m_controls(new PreviewControls(*this))
    , m_stack(new PageStack)
    , m_zoomText(m_controls->zoomText())
{
    setObjectName(u"frmProtocollPreview"_qs);
    setWindowTitle(u"Protokoll"_qs);
    setWindowModality(Qt::WindowModal);
    resize(980, 800);

    auto *client = new QWidget(this);
    auto *layout = new QGridLayout(client);
    m_vertical = scrollBar(u"VScroll1"_qs, Qt::Vertical, client);
    m_horizontal = scrollBar(u"HScroll1"_qs, Qt::Horizontal, client);
    m_vertical->setAccessibleName(u"Senkrecht blättern"_qs);
    m_horizontal->setAccessibleName(u"Waagerecht blättern"_qs);
    m_stack->setObjectName(u"picWorkspace"_qs);
    m_stack->setAccessibleName(u"Seiten"_qs);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_stack, 0, 0);
    layout->addWidget(m_vertical, 0, 1);
    layout->addWidget(m_horizontal, 1, 0);
    setCentralWidget(client);
    m_stack->setFocus();

    connect(m_controls, &PreviewControls::buttonClicked, this,
            &frmProtocollPreview::tbProtokoll_ButtonClick);
    connect(m_controls, &PreviewControls::typeChanged, this, &frmProtocollPreview::rebuild);
    connect(m_controls, &PreviewControls::zoomChanged, this, &frmProtocollPreview::cboZoom_Change);
    connect(m_controls, &PreviewControls::cancelled, this, &frmProtocollPreview::cancelJob);
    connect(m_stack, &PageStack::keyPressed, this, &frmProtocollPreview::picWorkspace_KeyDown);
    connect(m_stack, &PageStack::wheelTurned, this, &frmProtocollPreview::wheelScroll);
    connect(m_stack, &PageStack::wheelZoomed, this, &frmProtocollPreview::wheelZoom);
    connect(m_stack, &PageStack::resized, this, &frmProtocollPreview::placeScrollBars);
    connect(m_vertical, &QScrollBar::valueChanged, this, &frmProtocollPreview::VScroll1_Change);
    connect(m_horizontal, &QScrollBar::valueChanged, this, &frmProtocollPreview::VScroll1_Change);
    connect(&m_slices, &Slices::progressed, this, &frmProtocollPreview::showProgress);
}

frmProtocollPreview::~frmProtocollPreview()
{
    m_slices.drop();
}

void frmProtocollPreview::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (!m_loaded) {
        m_loaded = true;
        // After the window is there, so that a message box stands before it.
        QMetaObject::invokeMethod(this, &frmProtocollPreview::Form_Load, Qt::QueuedConnection);
    }
}

void frmProtocollPreview::closeEvent(QCloseEvent *event)
{
    stopJob();
    QMainWindow::closeEvent(event);
}

void frmProtocollPreview::Form_Load()
{
    rebuild();
    if (!m_services.isPrinterInstalled())
        message(u"Es ist kein Drucker installiert. Während der Ausführung kann es deshalb zu "
                u"Darstellungsfehlern kommen. Installieren Sie einen Drucker und starten Sie das "
                u"Programm erneut."_qs);
}

void frmProtocollPreview::setPageMaker(std::function<std::shared_ptr<Page>(std::int32_t)> maker)
{
    m_pageMaker = std::move(maker);
}

ProtocolOptions frmProtocollPreview::options() const
{
    return {static_cast<ProtocolType>(m_controls->protocolType()), m_format, m_debugMode,
            m_pageMaker};
}

void frmProtocollPreview::rebuild()
{
    compose(nullptr);
}

void frmProtocollPreview::compose(const std::exception_ptr &reported)
{
    if (!m_document)
        return;
    m_slices.drop();
    m_stack->clear();
    m_composing = true;
    m_incomplete = false;
    m_run = std::make_unique<ProtocolRun>(*m_document, options(), static_cast<PageSink &>(*this));
    m_slices.start([run = m_run.get()] { return run->step(); },
                   [=, this](const std::exception_ptr &error) {
                       m_controls->setProgress({});
                       m_composing = false;
                       m_incomplete = error && !m_stack->pages().empty();
                       placeScrollBars();
                       showPageCount();
                       // What has been reported is not reported once more.
                       if (error && (!reported || messageOf(error) != messageOf(reported)))
                           report(error);
                   });
    VScroll1_Change();
}

void frmProtocollPreview::pageBegun(const std::shared_ptr<Page> &page, std::int32_t pageCount)
{
    m_stack->append(page);
    placeScrollBars();
    reportNewPage(page->number, pageCount);
}

void frmProtocollPreview::reportNewPage(std::int32_t number, std::int32_t pageCount)
{
    if (m_debugMode)
        m_services.message(this, ProtocolServices::Icon::Information, u"Debug-Modus"_qs,
                           u"Seite %1\r\nSeitenzahl: %2"_qs.arg(number).arg(pageCount + 1));
}

void frmProtocollPreview::pageCompleted(const std::shared_ptr<Page> &page)
{
    m_stack->refresh(page->number);
    if (page->number == 1)
        m_slices.pause(); // the first page is shown while the others are composed
}

void frmProtocollPreview::message(const QString &text)
{
    ask([&] {
        m_services.message(this, ProtocolServices::Icon::Exclamation, produkt::name(), text);
    });
}

void frmProtocollPreview::report(const std::exception_ptr &error)
{
    message(messageOf(error));
}

void frmProtocollPreview::tbProtokoll_ButtonClick(const QString &key)
{
    try {
        if (key == u"refresh"_qs)
            rebuild();
        else if (key == u"print"_qs)
            print();
        else if (key == u"printersetup"_qs)
            setUpPrinter();
        else if (key == u"edit"_qs)
            edit();
        else if (key == u"pdf"_qs)
            saveAsPdf();
    } catch (...) {
        report(std::current_exception());
    }
}
