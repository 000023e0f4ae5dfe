// How long the window takes: from the start of a process to the first painted window, and from page
// to page. A ratio is good up to its reach.
//
// The start counts where there is a display: without one an empty window loads no font at all, and
// half of what the wizard's takes longer is the font database.

#include "app/wiederherstellung.h"
#include "core/kalibrierung.h"
#include "grid/clseditgrid.h"
#include "grid/gridcontrol.h"
#include "wizard/assistentdienste.h"
#include "wizard/ctlassistent.h"
#include "wizard/frmassistent.h"
#include "wizard/qtdialogs.h"
#include "wizard/tabelle.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QClipboard>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

class NoHelp : public Hilfe
{
public:
    void setHelpFile(const QString &) override {}
    void showHelp() override {}
};

// Ends the process after the first paint event of a window.
class QuitOnPaint : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // At once, since tearing down is no part of the start; queued, so that it is painted.
        if (event->type() == QEvent::Paint && watched->isWidgetType())
            QMetaObject::invokeMethod(
                qApp, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return false;
    }
};

// What the started process does: shows one window and ends when it is painted.
int showOneWindow(bool wizard)
{
    int count = 1;
    std::array<char, 6> name{"start"};
    std::array<char *, 2> words{name.data(), nullptr};
    QApplication application(count, words.data());
    const QTemporaryDir folder;
    QSettings settings(folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
    QtDialogs dialogs;
    NoHelp help;
    Kalibrierung document(QLocale(QLocale::German, QLocale::Germany));
    std::unique_ptr<QMainWindow> window;
    if (wizard)
        window = std::make_unique<frmAssistent>(
            document, AssistentDienste{dialogs, settings, help, folder.path()});
    else
        window = std::make_unique<QMainWindow>();
    window->resize(900, 650);
    QuitOnPaint quit;
    window->installEventFilter(&quit);
    window->show();
    return QApplication::exec();
}

double secondsToStart(const QString &window)
{
    const auto start = std::chrono::steady_clock::now();
    const int result = QProcess::execute(QCoreApplication::applicationFilePath(),
                                         {QStringLiteral("--show=") + window});
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return result == 0 ? taken.count() : -1.0;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// Both windows in turn, so that they see the same machine; the medians' ratio is what counts.
void startToFirstPaint(benchmark::State &state)
{
    std::vector<double> empty;
    std::vector<double> wizard;
    for (auto _ : state) {
        empty.push_back(secondsToStart(QStringLiteral("empty")));
        wizard.push_back(secondsToStart(QStringLiteral("wizard")));
        if (empty.back() < 0.0 || wizard.back() < 0.0)
            state.SkipWithError("a window did not start");
        state.SetIterationTime(wizard.back());
    }
    state.counters["empty_ms"] = median(empty) * 1000.0;
    state.counters["wizard_ms"] = median(wizard) * 1000.0;
    state.counters["ratio"] = median(wizard) / median(empty);
    state.counters["reach"] = 1.5;
}
BENCHMARK(startToFirstPaint)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);

// A window on a made-up document, shown.
class OpenWindow
{
public:
    OpenWindow(int fields, int points)
        : m_settings(m_folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat)
        , m_document(QLocale(QLocale::German, QLocale::Germany))
    {
        for (Prüfmerkmal *m :
             {&m_document.DirektesPrüfmerkmal(), &m_document.IndirektesPrüfmerkmal()}) {
            m->setName(QStringLiteral("Beispiel"));
            m->setFormelzeichen(QStringLiteral("B"));
            m->setEinheit(QStringLiteral("%"));
        }
        m_document.setPrüffelderAnzahl(fields);
        for (int field = 1; field <= fields; ++field) {
            m_document.setPrüffeldPrüfpunkte(field, points);
            for (int point = 1; point <= points; ++point) {
                m_document.setMesswert(pmDirekt, field, point, 95.0 + field + point / 8.0);
                m_document.setMesswert(pmIndirekt, field, point, 20.0 + 5.0 * field + point / 4.0);
            }
        }
        m_window = std::make_unique<frmAssistent>(
            m_document, AssistentDienste{m_dialogs, m_settings, m_help, m_folder.path()});
        m_window->resize(900, 650);
        m_window->show();
        QCoreApplication::processEvents();
        m_frame = m_window->findChild<ctlAssistent *>();
    }

    Kalibrierung &document() { return m_document; }
    frmAssistent &window() { return *m_window; }

    int page() const { return m_frame->property("Tag").toInt(); }

    /// Seconds of one step, the painted page included.
    double step(int direction)
    {
        const auto start = std::chrono::steady_clock::now();
        m_frame->GoToPage(direction);
        QCoreApplication::processEvents();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    void goTo(int target)
    {
        while (page() != target)
            step(page() < target ? 1 : -1);
    }

private:
    QTemporaryDir m_folder;
    QSettings m_settings;
    QtDialogs m_dialogs;
    NoHelp m_help;
    Kalibrierung m_document;
    std::unique_ptr<frmAssistent> m_window;
    ctlAssistent *m_frame = nullptr;
};

// The page of the measured values with 10,000 points beside the same with 12.
void enterValuesPage(benchmark::State &state)
{
    OpenWindow small(3, 4);
    OpenWindow large(100, 100);
    small.goTo(3); // builds the pages
    large.goTo(3);
    std::vector<double> smallTimes;
    std::vector<double> largeTimes;
    for (auto _ : state) {
        small.goTo(2);
        large.goTo(2);
        smallTimes.push_back(small.step(1));
        largeTimes.push_back(large.step(1));
        state.SetIterationTime(largeTimes.back());
    }
    state.counters["small_ms"] = median(smallTimes) * 1000.0;
    state.counters["large_ms"] = median(largeTimes) * 1000.0;
    state.counters["ratio"] = median(largeTimes) / median(smallTimes);
    state.counters["reach"] = 3.0;
}
BENCHMARK(enterValuesPage)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);

// Keeping unsaved work beside saving the same document: it happens while somebody types.
void keepUnsavedWork(benchmark::State &state)
{
    const auto points = static_cast<int>(state.range(0));
    const QTemporaryDir folder;
    OpenWindow window(100, points / 100);
    const auto ask = [](QWidget *, const Wiederherstellung::Fund &) {
        return Wiederherstellung::Antwort::Später;
    };
    QtDialogs dialogs;
    Wiederherstellung recovery({folder.filePath(QStringLiteral("w")), QDateTime::currentDateTime,
                                ask, std::chrono::hours(1)},
                               dialogs);
    recovery.watch(window.document(), window.window());
    window.goTo(3);
    const auto secondsOf = [](const auto &work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    std::vector<double> keeping;
    std::vector<double> saving;
    double value = 0.0;
    for (auto _ : state) {
        window.document().setMesswert(pmDirekt, 1, 1, value += 0.125);
        keeping.push_back(secondsOf([&] { recovery.check(); }));
        saving.push_back(secondsOf(
            [&] { window.document().SaveFile(folder.filePath(QStringLiteral("a.xml"))); }));
        state.SetIterationTime(keeping.back());
    }
    state.counters["keep_ms"] = median(keeping) * 1000.0;
    state.counters["save_ms"] = median(saving) * 1000.0;
    state.counters["ratio"] = median(keeping) / median(saving);
    state.counters["reach"] = 2.0;
}
BENCHMARK(keepUnsavedWork)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(keepUnsavedWork)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

// A look at a page into which a whole block was pasted and that was not left since: every cell is
// an entry then.
void lookAtPastedValues(benchmark::State &state)
{
    OpenWindow window(100, 100);
    window.goTo(3);
    QGuiApplication::clipboard()->setText(QStringLiteral("1\t2\r\n").repeated(10'000));
    const auto *grid = window.window().findChild<GridControl *>(QStringLiteral("fgMesswerte"));
    static_cast<Tabelle *>(grid->parentWidget())->controller().ClipboardPasteOver();
    qsizetype entries = 0;
    for (auto _ : state)
        entries = window.window().work().entries.size();
    state.counters["entries"] = static_cast<double>(entries);
}
BENCHMARK(lookAtPastedValues)->Unit(benchmark::kMillisecond);

// One step forward onto every page of a usual calibration, built before.
void pageChange(benchmark::State &state)
{
    const auto target = static_cast<int>(state.range(0));
    OpenWindow window(6, 8);
    window.goTo(5);
    for (auto _ : state) {
        window.goTo(target - 1);
        state.SetIterationTime(window.step(1));
    }
}
BENCHMARK(pageChange)
    ->DenseRange(1, 5)
    ->UseManualTime()
    ->Iterations(25)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray word(argv[i]);
        if (word == "--show=empty" || word == "--show=wizard")
            return showOneWindow(word == "--show=wizard");
    }
    benchmark::Initialize(&argc, argv);
    const QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
