// Many files in one call of the program, against one process per file, in the same run.

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr int fileCount = 2000;

qint64 run(const QStringList &files)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QStringLiteral(PROGRAM), QStringList{u"--format"_qs, u"json"_qs} + files);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return -1;
    return timer.nsecsElapsed();
}

void oneCallForAllFiles(benchmark::State &state)
{
    const QTemporaryDir folder;
    QStringList files;
    for (int i = 0; i < fileCount; ++i) {
        files += folder.filePath(QString::number(i) + u".xml"_qs);
        QFile::copy(QStringLiteral(EXAMPLE), files.last());
    }
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

BENCHMARK(oneCallForAllFiles)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
