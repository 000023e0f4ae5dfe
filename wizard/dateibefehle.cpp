#include "wizard/dateibefehle.h"

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "core/runtimeerror.h"
#include "wizard/fehlerbericht.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cmath>

namespace {

const QString activePageKey = QStringLiteral("AssistentActivePage");

// Of the content, since a file that was only touched or copied back is still the same.
QByteArray digestOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result();
}

std::optional<int> storedPage(const Kalibrierung &document)
{
    const Variant *stored = document.DataStore().find(activePageKey);
    if (!stored)
        return std::nullopt;
    try {
        const double page = document.values().number(*stored);
        if (page != std::floor(page) || std::abs(page) > 1000.0)
            return std::nullopt;
        return static_cast<int>(page);
    } catch (const RunTimeError &) {
        return std::nullopt;
    }
}

} // namespace

Dateibefehle::Dateibefehle(Kalibrierung &document, Dialogs &dialogs, Fenster &window)
    : m_document(document), m_dialogs(dialogs), m_window(window)
{
}

void Dateibefehle::setFileName(const QString &path)
{
    m_fileName = path;
    m_contentOnDisk.clear();
    m_window.fileNameChanged();
}

void Dateibefehle::restoreFile(const QString &path, const QByteArray &contentOnDisk)
{
    setFileName(path);
    m_contentOnDisk = contentOnDisk;
}

bool Dateibefehle::mayProceed()
{
    // Asked in any case: it also closes an open editor, which must not outlive the document.
    const bool pageChanged = m_window.visiblePageHasChanges();
    if (!m_document.IsDirty() && !pageChanged)
        return true;
    switch (m_dialogs.question(m_window.widget(), produkt::name(),
                               u"Sollen die Änderungen gespeichert werden?"_qs)) {
    case Dialogs::Answer::Yes:
        return save() && !m_document.IsDirty();
    case Dialogs::Answer::No:
        return true;
    case Dialogs::Answer::Cancel:
        break;
    }
    return false;
}

void Dateibefehle::newDocument()
{
    if (!mayProceed())
        return;
    m_document.Reset();
    setFileName({});
    m_window.enterFirstPage();
}

void Dateibefehle::open()
{
    if (!mayProceed())
        return;
    if (const auto path = m_dialogs.openFileName(m_window.widget(), m_fileName)) {
        fehlerbericht::guarded(m_dialogs,
                               {m_window.widget(), Dialogs::Icon::Exclamation, produkt::name(),
                                u"Beim Öffnen der Datei ist ein Fehler aufgetreten:"_qs},
                               [&] { load(*path); });
    }
}

void Dateibefehle::openPath(const QString &path)
{
    if (!mayProceed())
        return;
    fehlerbericht::guarded(m_dialogs,
                           {m_window.widget(), Dialogs::Icon::Exclamation, produkt::name(),
                            u"Beim Öffnen der Datei ist ein Fehler aufgetreten:"_qs},
                           [&] { load(path); });
}

bool Dateibefehle::save()
{
    if (!m_window.takeOverVisiblePage())
        return false;
    if (m_fileName.isEmpty())
        return saveAs();
    if (!changedOnDisk(m_fileName))
        return saveTo(m_fileName);
    switch (m_dialogs.conflict(
        m_window.widget(), produkt::name(),
        u"Die Datei „%1“ wurde inzwischen geändert, etwa von einem anderen Programm.\r\nSoll sie "
        u"durch Ihre Fassung ersetzt werden?"_qs.arg(QFileInfo(m_fileName).fileName()))) {
    case Dialogs::Conflict::KeepMine:
        return saveTo(m_fileName);
    case Dialogs::Conflict::OtherName:
        return saveAs();
    case Dialogs::Conflict::Cancel:
        break;
    }
    return false;
}

bool Dateibefehle::saveAs()
{
    if (!m_window.takeOverVisiblePage())
        return false;
    const auto path = m_dialogs.saveFileName(m_window.widget(), m_fileName);
    if (!path)
        return false;
    return saveTo(QDir::cleanPath(QFileInfo(*path).absoluteFilePath()));
}

bool Dateibefehle::saveTo(const QString &path)
{
    return fehlerbericht::guarded(m_dialogs,
                                  {m_window.widget(), Dialogs::Icon::Exclamation, produkt::name(),
                                   u"Beim Speichern der Datei ist ein Fehler aufgetreten:"_qs},
                                  [&] {
                                      write(path);
                                      if (path == m_fileName)
                                          return;
                                      // Not before: while the box about a failure waits, the work
                                      // still belongs to the old file.
                                      setFileName(path);
                                      m_contentOnDisk = digestOf(path);
                                  });
}

void Dateibefehle::load(const QString &path)
{
    const QString fullPath = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    m_document.LoadFile(fullPath);
    m_document.setIsDirty(false);
    setFileName(fullPath);
    m_contentOnDisk = digestOf(fullPath);
    m_window.fileOpened(fullPath);
    m_window.enterPage(storedPage(m_document));
}

void Dateibefehle::write(const QString &path)
{
    KeyedStore &store = m_document.DataStore();
    const Variant *stored = store.find(activePageKey);
    const std::optional<Variant> before = stored ? std::optional(*stored) : std::nullopt;
    auto restorePage = qScopeGuard([&] {
        if (before)
            store.set(activePageKey, *before);
        else
            store.remove(activePageKey);
    });
    store.set(activePageKey, std::int32_t{m_window.activePage()});
    m_document.SaveFile(path);
    restorePage.dismiss();
    m_document.setIsDirty(false);
    if (path == m_fileName)
        m_contentOnDisk = digestOf(path);
}

bool Dateibefehle::changedOnDisk(const QString &path) const
{
    if (!QFileInfo(path).isFile())
        return false; // a file that is gone holds nothing that could be lost
    // A file that was neither opened nor saved here is another program's.
    return m_contentOnDisk.isEmpty() || digestOf(path) != m_contentOnDisk;
}
