#include "app/wiederherstellung.h"

#include "app/wiederherstellungsdatei.h"
#include "app/wiederherstellungsplatz.h"
#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "core/runtimeerror.h"
#include "wizard/dialogs.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>
#include <new>
#include <utility>

namespace {

// Keeping a very large document takes a while, and must not take it all the time.
constexpr int shareOfTime = 20;

} // namespace

Wiederherstellung::Wiederherstellung(Umgebung environment, Dialogs &dialogs)
    : m_environment(std::move(environment)), m_dialogs(dialogs)
{
    connect(&m_timer, &QTimer::timeout, this, &Wiederherstellung::check);
}

Wiederherstellung::~Wiederherstellung()
{
    end();
}

void Wiederherstellung::watch(Kalibrierung &document, frmAssistent &window)
{
    m_document = &document;
    m_window = &window;
    connect(&window, &frmAssistent::closing, this, &Wiederherstellung::end);
    // After the command that has saved or replaced the document.
    connect(
        &document, &Kalibrierung::IsDirtyChanged, this,
        [this] {
            if (m_written)
                check();
        },
        Qt::QueuedConnection);
    m_timer.start(m_environment.delay);
}

void Wiederherstellung::check()
{
    if (!m_window || !m_document)
        return;
    QElapsedTimer taken;
    taken.start();
    const Arbeitsstand work = m_window->work();
    if (!m_document->IsDirty() && work.entries.isEmpty())
        forget();
    else if (m_written != work || m_writtenRevision != m_document->DataStore().revision())
        write(work);
    m_timer.start(
        std::max(m_environment.delay, std::chrono::milliseconds(taken.elapsed() * shareOfTime)));
}

void Wiederherstellung::write(const Arbeitsstand &work)
try {
    if (!m_place || !QFileInfo::exists(m_environment.folder)) // it may have been cleared away
        m_place = Wiederherstellungsplatz::create(m_environment.folder);
    Wiederherstellungsdatei::write(m_place->path(), *m_document, work, m_environment.now());
    m_written = work;
    m_writtenRevision = m_document->DataStore().revision();
    if (std::exchange(m_failing, false))
        m_window->showNotice({});
} catch (const RunTimeError &error) {
    tellOnce(error);
} catch (const std::bad_alloc &) {
    tellOnce(RunTimeError(ErrorNumber::OutOfMemory));
}

void Wiederherstellung::tellOnce(const RunTimeError &error)
{
    if (std::exchange(m_told, true))
        return;
    m_failing = true;
    // In one line, so without the details.
    m_window->showNotice(
        u"Ungespeicherte Arbeit kann zurzeit nicht gesichert werden (%1, %2). Bitte speichern Sie öfter."_qs
            .arg(RunTimeError::textOf(error.errorNumber()), QString::number(error.number())));
}

void Wiederherstellung::forget()
{
    if (m_place)
        m_place->removeFile();
    m_written.reset();
    if (std::exchange(m_failing, false))
        m_window->showNotice({});
}

void Wiederherstellung::end()
{
    m_timer.stop();
    m_window = nullptr;
    if (m_place)
        m_place->removeFile();
    m_place.reset();
    m_written.reset();
}

void Wiederherstellung::offer()
{
    Wiederherstellungsplatz::tidy(m_environment.folder);
    for (const QString &path : Wiederherstellungsplatz::filesIn(m_environment.folder)) {
        auto place = Wiederherstellungsplatz::takeOver(path);
        if (place && offerFile(std::move(place)))
            break;
    }
    if (std::exchange(m_unreadable, 0) > 0)
        m_dialogs.message(m_window, Dialogs::Icon::Information, produkt::name(),
                          u"Ungespeicherte Arbeit aus einem früheren Programmlauf konnte nicht "
                          u"gelesen werden.\r\nIhre gespeicherten Dateien sind davon nicht "
                          u"betroffen."_qs);
}

// Whether its work is in the window now. The file and its lock become this program's own then, so
// that the work is never without one.
bool Wiederherstellung::offerFile(std::unique_ptr<Wiederherstellungsplatz> place)
try {
    if (QFileInfo(place->path()).size() == 0) { // its program was gone before it wrote anything
        place->removeFile();
        return false;
    }
    const Wiederherstellungsdatei file(place->path());
    switch (m_environment.ask(m_window, {file.time(), file.work().fileName})) {
    case Antwort::Wiederherstellen:
        file.loadInto(*m_document);
        m_place = std::move(place);
        m_written = file.work();
        m_window->restoreWork(file.work());
        return true;
    case Antwort::Verwerfen:
        place->removeFile();
        break;
    case Antwort::Später:
        break;
    }
    return false;
} catch (const RunTimeError &error) {
    ++m_unreadable;
    if (place && error.errorNumber() == ErrorNumber::InvalidFileFormat)
        place->setAside(); // it would be no better the next time
    return false;
} catch (const std::bad_alloc &) {
    ++m_unreadable;
    return false;
}
