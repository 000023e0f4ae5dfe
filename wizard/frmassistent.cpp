#include "wizard/frmassistent.h"

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "wizard/bilder.h"
#include "wizard/ctlassistent.h"
#include "wizard/letztedateien.h"
#include "wizard/schrittanzeige.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QStackedLayout>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

// The one file that is dropped, or nothing.
QString droppedFile(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

// As a copy even where a move is proposed: the file stays where it is.
void acceptAsCopy(QDropEvent &event)
{
    if (!(event.possibleActions() & Qt::CopyAction))
        return;
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

frmAssistent::frmAssistent(Kalibrierung &document, const AssistentDienste &services,
                           QWidget *parent)
    : QMainWindow(parent)
    , m_document(document)
    , m_services(services)
    , m_settings(services.settings)
    , m_files(document, services.dialogs, *this)
    , ctlAssistent1(new ctlAssistent)
{
    setObjectName(QStringLiteral("frmAssistent"));
    setAcceptDrops(true);
    m_services.help.setHelpFile(m_services.programFolder + u"/Wendral.chm"_qs);
    buildPanels();
    buildMenus();
    connect(ctlAssistent1, &ctlAssistent::LeavePage, this, &frmAssistent::ctlAssistent1_LeavePage);
    connect(ctlAssistent1, &ctlAssistent::ChangePage, this,
            &frmAssistent::ctlAssistent1_ChangePage);
    connect(ctlAssistent1, &ctlAssistent::EnterPage, this, &frmAssistent::ctlAssistent1_EnterPage);
    connect(ctlAssistent1, &ctlAssistent::Cancel, this, &QWidget::close);

    enterFirstPage();
    placeWindow();
    m_recentFiles->refresh();
    fileNameChanged();
}

frmAssistent::~frmAssistent() = default;

void frmAssistent::buildPanels()
{
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_steps = new Schrittanzeige({u"Eingangsparameter"_qs, u"Prüffelder"_qs, u"Messwerte"_qs,
                                  u"Plausibilität"_qs, u"Ausgabe"_qs},
                                 centre);
    column->addWidget(m_steps);
    m_panels = new QStackedLayout; // all pages lie on top of each other, one shows
    for (int i = 0; i < pageCount; ++i) {
        auto *panel = new QScrollArea(centre);
        panel->setObjectName(u"picContainer"_qs + QString::number(i));
        panel->setFrameShape(QFrame::NoFrame);
        panel->setWidgetResizable(true);
        panel->setFocusPolicy(Qt::NoFocus);
        m_panels->addWidget(panel);
        picContainer[static_cast<std::size_t>(i)] = panel;
    }
    column->addLayout(m_panels, 1);
    ctlAssistent1->setObjectName(QStringLiteral("ctlAssistent1"));
    column->addWidget(ctlAssistent1);
    setCentralWidget(centre);
}

void frmAssistent::placeWindow()
{
    if (restoreGeometry(m_settings.windowGeometry()))
        return;
    const QRect free = screen()->availableGeometry();
    const int em = fontMetrics().height();
    resize(QSize(em * 66, em * 47).boundedTo(free.size() * 0.95));
    move(free.center() - rect().center());
}

void frmAssistent::fileNameChanged()
{
    QString title = produkt::name();
    if (!FileName().isEmpty())
        title += u" - "_qs + QFileInfo(FileName()).fileName().trimmed();
    setWindowTitle(title.replace(u"[*]"_qs, u"[*][*]"_qs)); // else Qt's mark of a changed document
}

void frmAssistent::fileOpened(const QString &path)
{
    m_recentFiles->refresh(path);
}

bool frmAssistent::takeOverVisiblePage()
{
    visiblePage()->finishEditing();
    return visiblePage()->takeOver(AssistentSeite::Anlass::Befehl);
}

bool frmAssistent::visiblePageHasChanges()
{
    visiblePage()->finishEditing();
    return visiblePage()->hasChanges();
}

Arbeitsstand frmAssistent::work() const
{
    // None where building it failed.
    const AssistentSeite *visible = m_pages[static_cast<std::size_t>(activePage())];
    return {FileName(), m_files.contentOnDisk(), activePage(),
            visible ? visible->entries() : Eingaben{}};
}

void frmAssistent::restoreWork(const Arbeitsstand &work)
{
    m_document.setIsDirty(true);
    m_files.restoreFile(work.fileName, work.contentOnDisk);
    enterPage(work.page);
    if (activePage() == work.page)
        visiblePage()->restoreEntries(work.entries);
}

void frmAssistent::showNotice(const QString &text)
{
    auto *label = findChild<QLabel *>(u"labHinweis"_qs);
    if (!label) {
        if (text.isEmpty())
            return; // a window without a notice has no bar for it
        // No message of the bar: every menu's status tip would wipe that away.
        label = new QLabel(statusBar());
        label->setObjectName(u"labHinweis"_qs);
        label->setTextFormat(Qt::PlainText);
        label->setMargin(fontMetrics().height() / 4);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // keeps no window wide
        statusBar()->addPermanentWidget(label, 1);
    }
    label->setText(text);
    label->setToolTip(text);
    statusBar()->setVisible(!text.isEmpty());
}

bool frmAssistent::event(QEvent *event)
{
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::Paint && windowIcon().isNull()) {
        // After the first picture of the window, which need not wait for it.
        QMetaObject::invokeMethod(
            this, [this] { setWindowIcon(bilder::programmsymbol()); }, Qt::QueuedConnection);
    }
    return handled;
}

void frmAssistent::closeEvent(QCloseEvent *event)
{
    if (!m_files.mayProceed()) {
        event->ignore();
        return;
    }
    m_settings.setWindowGeometry(saveGeometry());
    event->accept();
    emit closing();
}

void frmAssistent::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFile(*event->mimeData()).isEmpty())
        acceptAsCopy(*event);
}

void frmAssistent::dropEvent(QDropEvent *event)
{
    const QString path = droppedFile(*event->mimeData());
    acceptAsCopy(*event);
    // A question must not keep the program waiting from which the file was dragged.
    QMetaObject::invokeMethod(
        this, [this, path] { m_files.openPath(path); }, Qt::QueuedConnection);
}
