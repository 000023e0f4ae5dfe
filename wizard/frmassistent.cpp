#include "wizard/frmassistent.h"

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "core/runtimeerror.h"
#include "wizard/ausgabeseite.h"
#include "wizard/bilder.h"
#include "wizard/ctlassistent.h"
#include "wizard/fehlerbericht.h"
#include "wizard/letztedateien.h"
#include "wizard/plausibilitaetsseite.h"
#include "wizard/schrittanzeige.h"
#include "wizard/seitemesswerte.h"
#include "wizard/seiteparameter.h"
#include "wizard/seiteprueffelder.h"
#include "wizard/seitewillkommen.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int fieldsPageNumber = 2;
constexpr int valuesPageNumber = 3;
constexpr const char *pageTag = "Tag"; // property of the frame in which its host keeps the page

QString pageKey(int page)
{
    return QStringLiteral("Page") + QString::number(page);
}

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

void frmAssistent::buildMenus()
{
    // Save As, Quit and Help get their keys by name: not every platform has a standard key for
    // them.
    const auto entry = [this](QMenu *menu, const QString &name, const QString &caption,
                              const QKeySequence &key, auto handler) {
        QAction *action = menu->addAction(caption, this, handler);
        action->setObjectName(name);
        action->setShortcut(key);
    };
    QMenu *file = menuBar()->addMenu(QStringLiteral("&Datei"));
    file->setObjectName(QStringLiteral("m_File"));
    entry(file, QStringLiteral("mf_new"), QStringLiteral("&Neu"), QKeySequence::New,
          [this] { m_files.newDocument(); });
    entry(file, QStringLiteral("mf_open"), u"Ö&ffnen..."_qs, QKeySequence::Open,
          [this] { m_files.open(); });
    entry(file, QStringLiteral("mf_save"), QStringLiteral("&Speichern"), QKeySequence::Save,
          [this] { m_files.save(); });
    entry(file, QStringLiteral("mf_saveas"), QStringLiteral("Speichern &unter..."),
          Qt::CTRL | Qt::SHIFT | Qt::Key_S, [this] { m_files.saveAs(); });
    file->addSeparator();
    m_recentFiles = new LetzteDateien(m_settings, file);
    connect(m_recentFiles, &LetzteDateien::chosen, this,
            [this](const QString &path) { m_files.openPath(path); });
    entry(file, QStringLiteral("mf_exit"), QStringLiteral("&Beenden"), Qt::CTRL | Qt::Key_Q,
          [this] { close(); });

    QMenu *help = menuBar()->addMenu(QStringLiteral("&Hilfe"));
    help->setObjectName(QStringLiteral("m_Help"));
    entry(help, QStringLiteral("mh_Helpthemes"), QStringLiteral("&Hilfethemen"), Qt::Key_F1,
          [this] { m_services.help.showHelp(); });
    entry(help, QStringLiteral("mh_Info"), QStringLiteral("&Info..."), QKeySequence(),
          [this] { mh_Info_Click(); });
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

AssistentSeite *frmAssistent::makePage(int number)
{
    const Seitenkontext context{m_document, m_services.dialogs, m_services.grid};
    switch (number) {
    case 0:
        return makeWelcomePage(context);
    case 1:
        return new SeiteParameter(context);
    case 2:
        m_fieldsPage = new SeitePrueffelder(context);
        connect(m_fieldsPage, &SeitePrueffelder::fieldEdited, this,
                &frmAssistent::egKeysMessreihen_AfterCellEdit);
        return m_fieldsPage;
    case 3:
        m_valuesPage = new SeiteMesswerte(context);
        connect(m_valuesPage, &SeiteMesswerte::valueEdited, this,
                &frmAssistent::egMesswerte_AfterCellEdit);
        return m_valuesPage;
    case 4: {
        auto *results = new Plausibilitaetsseite(context);
        connect(results, &Plausibilitaetsseite::optionsClicked, this,
                &frmAssistent::cmdPlausibilitaetOptionen_Click);
        return results;
    }
    default:
        return makeOutputPage(context);
    }
}

AssistentSeite *frmAssistent::makeWelcomePage(const Seitenkontext &context)
{
    auto *welcome = new SeiteWillkommen(context);
    welcome->setDontShowAgain(m_settings.dontShowPage0());
    connect(welcome, &SeiteWillkommen::infoClicked, this, &frmAssistent::mh_Info_Click);
    connect(welcome, &SeiteWillkommen::dontShowAgainClicked, this,
            &frmAssistent::chkDontShowPage0_Click);
    return welcome;
}

AssistentSeite *frmAssistent::makeOutputPage(const Seitenkontext &context)
{
    auto *output = new Ausgabeseite(context);
    connect(output, &Ausgabeseite::saveClicked, this, [this] { m_files.save(); });
    connect(output, &Ausgabeseite::protocolClicked, this, &frmAssistent::cmdOutProtocoll_Click);
    connect(output, &Ausgabeseite::exportClicked, this, &frmAssistent::cmdOutExport_Click);
    const auto offer = [output](const QString &name, bool available) {
        auto *button = output->findChild<QPushButton *>(name);
        button->setEnabled(available);
        if (!available)
            button->setToolTip(u"In dieser Fassung des Programms noch nicht enthalten."_qs);
    };
    offer(u"cmdOutProtocoll"_qs, static_cast<bool>(m_services.showProtocol));
    offer(u"cmdOutExport"_qs, static_cast<bool>(m_services.showExport));
    return output;
}

AssistentSeite *frmAssistent::page(int number)
{
    const auto index = static_cast<std::size_t>(number);
    if (!m_pages[index]) {
        m_pages[index] = makePage(number);
        picContainer[index]->setWidget(m_pages[index]);
    }
    return m_pages[index];
}

bool frmAssistent::PageShowable(int pageIndex) const
{
    return pageIndex >= 0 && pageIndex < pageCount && m_showable.value(pageKey(pageIndex), true);
}

void frmAssistent::setPageShowable(int pageIndex, bool showable)
{
    if (pageIndex >= 0 && pageIndex < pageCount)
        m_showable.insert(pageKey(pageIndex), showable);
}

int frmAssistent::activePage() const
{
    return ctlAssistent1->property(pageTag).toInt();
}

void frmAssistent::setActivePage(int number)
{
    ctlAssistent1->setProperty(pageTag, number);
}

int frmAssistent::startPage() const
{
    return m_settings.dontShowPage0() ? 1 : 0;
}

void frmAssistent::ctlAssistent1_LeavePage(int direction, bool &cancel)
{
    AssistentSeite *left = visiblePage();
    left->finishEditing(); // an open editor must not outlive what it edits
    if (direction == 0)
        return; // the document is newer than what the page still shows
    if (direction > 0 && !left->check()) {
        cancel = true;
        return;
    }
    cancel = !left->takeOver(direction > 0 ? AssistentSeite::Anlass::Vor
                                           : AssistentSeite::Anlass::Zurück);
}

void frmAssistent::ctlAssistent1_ChangePage(int direction, bool &cancel)
{
    const int target = activePage() + direction;
    if (!PageShowable(target)) {
        cancel = true;
        return;
    }
    setActivePage(target);
    page(target);
    m_panels->setCurrentIndex(target);
    m_steps->setCurrent(target);
    m_steps->setVisible(target > 0);
}

void frmAssistent::ctlAssistent1_EnterPage(bool &newNextEnabled, bool &newPreviousEnabled,
                                           bool &newCancelEnabled)
{
    newNextEnabled = PageShowable(activePage() + 1);
    newPreviousEnabled = activePage() > 0;
    newCancelEnabled = true;
    AssistentSeite *entered = visiblePage();
    entered->fill();
    if (QWidget *first = entered->firstControl())
        entered->moveFocus(first);
    else
        QMetaObject::invokeMethod(ctlAssistent1, &ctlAssistent::focusNextButton,
                                  Qt::QueuedConnection); // the button is still disabled
}

void frmAssistent::chkDontShowPage0_Click(bool checked)
{
    m_settings.setDontShowPage0(checked);
}

void frmAssistent::egKeysMessreihen_AfterCellEdit(int row, int col, QString &newText, bool &)
{
    page(fieldsPageNumber);
    m_fieldsPage->formatEdited(row, col, newText);
}

void frmAssistent::egMesswerte_AfterCellEdit(int row, int col, QString &newText, bool &)
{
    page(valuesPageNumber);
    m_valuesPage->formatEdited(row, col, newText);
}

void frmAssistent::showWindow(const std::function<void()> &open)
{
    fehlerbericht::guarded(m_services.dialogs,
                           {this, Dialogs::Icon::Exclamation, produkt::name(),
                            u"Beim Öffnen des Fensters ist ein Fehler aufgetreten:"_qs},
                           open);
}

void frmAssistent::mh_Info_Click()
{
    showWindow([this] { m_document.ShowInfo(true, this); });
}

void frmAssistent::cmdPlausibilitaetOptionen_Click()
{
    showWindow([this] { m_document.ShowCalcOptions(true, this); });
    ctlAssistent1->GoToPage(0); // the list follows the options
}

void frmAssistent::cmdOutProtocoll_Click()
{
    if (!takeOverVisiblePage())
        return;
    // The box is titled with the application's title, as the platform has it.
    fehlerbericht::guarded(m_services.dialogs,
                           {this,
                            Dialogs::Icon::Critical,
                            {},
                            u"Währen der Programmausführung ist ein Fehler aufgetreten:"_qs},
                           [this] { m_services.showProtocol(m_document, this); });
}

void frmAssistent::cmdOutExport_Click()
{
    if (takeOverVisiblePage())
        showWindow([this] { m_services.showExport(m_document, this); });
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

void frmAssistent::enterFirstPage()
{
    enterPage(startPage());
}

void frmAssistent::enterPage(std::optional<int> number)
{
    if (number && PageShowable(*number))
        setActivePage(*number);
    ctlAssistent1->GoToPage(0);
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
