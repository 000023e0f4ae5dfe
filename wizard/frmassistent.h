#pragma once

#include "wizard/assistentdienste.h"
#include "wizard/assistentseite.h"
#include "wizard/dateibefehle.h"
#include "wizard/einstellungen.h"

#include <QHash>
#include <QMainWindow>

#include <array>
#include <functional>

class ctlAssistent;
class LetzteDateien;
class QScrollArea;
class QStackedLayout;
class Schrittanzeige;
class SeiteMesswerte;
class SeitePrueffelder;

/// What of the work in a window would be lost without its file, beside the document itself.
struct Arbeitsstand
{
    QString fileName;         ///< empty where the work was never saved
    QByteArray contentOnDisk; ///< digest of the file that the work is based on
    int page = 0;
    Eingaben entries; ///< of the visible page
    bool operator==(const Arbeitsstand &) const = default;
};

/// The main window: six pages, the frame that walks through them, and the commands of the menus.
///
/// It orders the pages and knows nothing of their controls. A page is built when it is entered for
/// the first time.
class frmAssistent final : public QMainWindow, private Dateibefehle::Fenster
{
    Q_OBJECT

public:
    /// Works on \a document, which outlives the window or belongs to it.
    frmAssistent(Kalibrierung &document, const AssistentDienste &services,
                 QWidget *parent = nullptr);
    ~frmAssistent() override;

    /// Path of the document's file; empty for one that was never saved.
    QString FileName() const { return m_files.fileName(); }
    void setFileName(const QString &path) { m_files.setFileName(path); }

    /// Loads a file into the document and returns to the page it was saved on. Raises 53, 57, 70,
    /// 75, 76 or 321; nothing has changed then.
    void FileOpen(const QString &path) { m_files.load(path); }
    /// Writes the document, as it is, to a file. Raises 57, 61, 70, 75, 76, 94 or 321.
    void FileSave(const QString &path) { m_files.write(path); }

    /// The present work. Changes nothing: no entry is taken over, no event raised, no editor
    /// closed.
    Arbeitsstand work() const;
    /// The document has been replaced by unsaved work; takes over the rest of it.
    void restoreWork(const Arbeitsstand &work);
    /// Shows \a text below the pages until there is another one; an empty text takes it away.
    void showNotice(const QString &text);

    /// Whether the wizard may go to page \a pageIndex; false outside of 0 to 5.
    bool PageShowable(int pageIndex) const;
    /// Ignored outside of 0 to 5.
    void setPageShowable(int pageIndex, bool showable);

    /// The tables call these before an edited text is written into a cell; a number gets the form
    /// of its column.
    void egKeysMessreihen_AfterCellEdit(int row, int col, QString &newText, bool &cancel);
    void egMesswerte_AfterCellEdit(int row, int col, QString &newText, bool &cancel);

signals:
    /// The window closes, and what has not been saved is not wanted any more.
    void closing();

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    static constexpr int pageCount = 6;

    void buildMenus();
    void buildPanels();
    void placeWindow();
    AssistentSeite *makePage(int page);
    AssistentSeite *page(int number);
    AssistentSeite *visiblePage() { return page(activePage()); }
    void setActivePage(int number);
    int startPage() const;
    AssistentSeite *makeWelcomePage(const Seitenkontext &context);
    AssistentSeite *makeOutputPage(const Seitenkontext &context);
    void showWindow(const std::function<void()> &open);

    void ctlAssistent1_LeavePage(int direction, bool &cancel);
    void ctlAssistent1_ChangePage(int direction, bool &cancel);
    void ctlAssistent1_EnterPage(bool &newNextEnabled, bool &newPreviousEnabled,
                                 bool &newCancelEnabled);
    void chkDontShowPage0_Click(bool checked);
    void mh_Info_Click();
    void cmdPlausibilitaetOptionen_Click();
    void cmdOutProtocoll_Click();
    void cmdOutExport_Click();

    // What the file commands ask of the window.
    QWidget *widget() override { return this; }
    bool takeOverVisiblePage() override;
    bool visiblePageHasChanges() override;
    int activePage() const override;
    void enterFirstPage() override;
    void enterPage(std::optional<int> number) override;
    void fileNameChanged() override;
    void fileOpened(const QString &path) override;

    Kalibrierung &m_document;
    AssistentDienste m_services;
    Einstellungen m_settings;
    Dateibefehle m_files;
    LetzteDateien *m_recentFiles = nullptr;
    Schrittanzeige *m_steps = nullptr;
    QStackedLayout *m_panels = nullptr;
    std::array<QScrollArea *, pageCount> picContainer{};
    std::array<AssistentSeite *, pageCount> m_pages{};
    SeitePrueffelder *m_fieldsPage = nullptr;
    SeiteMesswerte *m_valuesPage = nullptr;
    ctlAssistent *ctlAssistent1;
    QHash<QString, bool> m_showable;
};
