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

Wiederherstellung::~Wiederherstellung() = default;

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
    try {
        look();
    } catch (const RunTimeError &error) {
        tellOnce(error.errorNumber());
    } catch (const std::bad_alloc &) {
        tellOnce(ErrorNumber::OutOfMemory);
    }
    m_timer.start(
        std::max(m_environment.delay, std::chrono::milliseconds(taken.elapsed() * shareOfTime)));
}

void Wiederherstellung::look()
{
    const Arbeitsstand work = m_window->work();
    if (!m_document->IsDirty() && work.entries.isEmpty())
        forget();
    else if (m_written != work || m_writtenRevision != m_document->DataStore().revision() ||
             !m_place->isIntact())
        write(work);
}

void Wiederherstellung::write(const Arbeitsstand &work)
{
    // The lock may have been cleared away, with the whole folder even.
    if (!m_place || !m_place->renewLock())
        m_place = Wiederherstellungsplatz::create(m_environment.folder);
    Wiederherstellungsdatei::write(m_place->path(), *m_document, work, m_environment.now());
    m_written = work;
    m_writtenRevision = m_document->DataStore().revision();
    if (std::exchange(m_failing, false))
        m_window->showNotice({});
}

void Wiederherstellung::tellOnce(ErrorNumber reason)
try {
    if (m_told)
        return;
    // In one line, so without the details.
    m_window->showNotice(
        u"Ungespeicherte Arbeit kann zurzeit nicht gesichert werden (%1, %2). Bitte speichern Sie öfter."_qs
            .arg(RunTimeError::textOf(reason), QString::number(static_cast<int>(reason))));
    m_told = true;
    m_failing = true;
} catch (const std::bad_alloc &) {
    // The next look tells it.
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
        if (offerFile(path))
            break;
    }
    for (const QString &text : std::exchange(m_reports, {}))
        m_dialogs.message(m_window, Dialogs::Icon::Information, produkt::name(), text);
}

void Wiederherstellung::report(const QString &text)
{
    if (!m_reports.contains(text))
        m_reports.append(text);
}

void Wiederherstellung::reportUnreadable()
{
    report(u"Ungespeicherte Arbeit aus einem früheren Programmlauf konnte nicht gelesen werden."
           u"\r\nIhre gespeicherten Dateien sind davon nicht betroffen."_qs);
}

// Whether the offers end with this one: its work is in the window now.
bool Wiederherstellung::offerFile(const QString &path)
{
    std::unique_ptr<Wiederherstellungsplatz> place;
    try {
        place = Wiederherstellungsplatz::takeOver(path);
        return place && offerWork(place);
    } catch (const RunTimeError &error) {
        reportUnreadable();
        if (place && error.errorNumber() == ErrorNumber::InvalidFileFormat)
            place->setAside(); // it would be no better the next time
    } catch (const std::bad_alloc &) {
        reportUnreadable();
    }
    return false;
}

bool Wiederherstellung::offerWork(std::unique_ptr<Wiederherstellungsplatz> &place)
{
    if (QFileInfo(place->path()).size() == 0) { // its program was gone before it wrote anything
        place->removeFile();
        return false;
    }
    const Wiederherstellungsdatei file(place->path());
    if (file.isOfNewerProgram()) {
        report(u"Ungespeicherte Arbeit aus einer neueren Fassung dieses Programms ist noch "
               u"vorhanden.\r\nBitte öffnen Sie die neuere Fassung, um sie wiederherzustellen."_qs);
        return false;
    }
    if (!file.hasNumbersOf(m_document->values().locale())) {
        report(
            u"Ungespeicherte Arbeit wurde gesichert, als Zahlen anders geschrieben wurden. Damit "
            u"keine Zahl falsch gelesen wird, bleibt sie liegen.\r\nBitte stellen Sie das "
            u"frühere Zahlenformat ein und starten Sie das Programm noch einmal."_qs);
        return false;
    }
    switch (m_environment.ask(m_window, {file.time(), file.work().fileName})) {
    case Antwort::Wiederherstellen:
        file.loadInto(*m_document);
        restore(file.work(), place);
        return true;
    case Antwort::Verwerfen:
        place->removeFile();
        break;
    case Antwort::Später:
        break;
    }
    return false;
}

// The file and its lock become this program's own, so that the work is never without one; but not
// if some entries didn't come back, for what is kept next has not got them.
void Wiederherstellung::restore(const Arbeitsstand &work,
                                std::unique_ptr<Wiederherstellungsplatz> &place)
try {
    m_window->restoreWork(work);
    m_place = std::move(place);
    m_written = work;
} catch (const RunTimeError &) {
    reportUnreadable();
} catch (const std::bad_alloc &) {
    reportUnreadable();
}
