// How long the window takes: from the start of a process to the first painted window, and from page
// to page.

#include "core/kalibrierung.h"
#include "wizard/assistentdienste.h"
#include "wizard/frmassistent.h"
#include "wizard/qtdialogs.h"

#include <benchmark/benchmark.h>

#include <QApplication>
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
}
BENCHMARK(startToFirstPaint)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);

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
