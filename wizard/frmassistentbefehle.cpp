// The menus, and the commands that open windows.

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "wizard/ctlassistent.h"
#include "wizard/fehlerbericht.h"
#include "wizard/frmassistent.h"
#include "wizard/letztedateien.h"

#include <QAction>
#include <QMenuBar>

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
