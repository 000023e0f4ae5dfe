// Many files in one call of the program: against one process per file, and on two processors
// against one, each in the same run.

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <limits>
#include <thread>

namespace {

constexpr int fileCount = 2000;

QStringList copies(const QTemporaryDir &folder)
{
    QStringList files;
    for (int i = 0; i < fileCount; ++i) {
        files += folder.filePath(QString::number(i) + u".xml"_qs);
        QFile::copy(QStringLiteral(EXAMPLE), files.last());
    }
    return files;
}

qint64 run(const QStringList &files, const QString &threads = u"1"_qs)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QStringLiteral(PROGRAM),
                  QStringList{u"--format"_qs, u"json"_qs, u"--parallel"_qs, threads} + files);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return -1;
    return timer.nsecsElapsed();
}

void oneCallForAllFiles(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QStringList files = copies(folder);
    for (auto _ : state) {
        const qint64 together = run(files);
        qint64 apart = 0;
        for (const QString &file : files)
            apart += run({file});
        state.SetIterationTime(double(together) * 1e-9);
        state.counters["ratio"] = double(together) / double(apart);
        state.counters["us_per_file"] = double(together) * 1e-3 / fileCount;
    }
}

// What two threads gain here and now with nothing but arithmetic: near 1 on a machine that others
// use, and then no program gains more.
double gainOfArithmetic()
{
    const auto sum = [](int count) {
        double total = 0;
        for (int i = 1; i <= count; ++i)
            benchmark::DoNotOptimize(total += 1.0 / i);
    };
    constexpr int count = 50'000'000;
    QElapsedTimer timer;
    timer.start();
    sum(count);
    const qint64 one = timer.nsecsElapsed();
    timer.start();
    std::thread other([&] { sum(count / 2); });
    sum(count / 2);
    other.join();
    return double(timer.nsecsElapsed()) / double(one);
}

void twoProcessorsAgainstOne(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QStringList files = copies(folder);
    for (auto _ : state) {
        constexpr int rounds = 5;
        qint64 one = std::numeric_limits<qint64>::max();
        qint64 two = one;
        for (int round = 0; round < rounds; ++round) {
            one = std::min(one, run(files, u"1"_qs));
            two = std::min(two, run(files, u"2"_qs));
        }
        state.SetIterationTime(double(two) * 1e-9);
        state.counters["ratio"] = double(two) / double(one);
        state.counters["arithmetic"] = gainOfArithmetic();
        state.counters["us_per_file"] = double(two) * 1e-3 / fileCount;
    }
}

BENCHMARK(twoProcessorsAgainstOne)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(oneCallForAllFiles)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
