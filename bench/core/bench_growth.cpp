// How time and memory grow with the number of points.

#include "bench/core/compare.h"
#include "bench/core/peakmemory.h"
#include "bench/core/sampledocument.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

void loadEvaluateSave(benchmark::State &state)
{
    const auto points = static_cast<int>(state.range(0));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    sampleDocument(points)->SaveFile(path);
    for ([[maybe_unused]] auto step : state) {
        Kalibrierung document(benchLocale);
        document.LoadFile(path);
        Auswertung evaluation(document);
        benchmark::DoNotOptimize(allResults(evaluation));
        document.SaveFile(path);
    }
    state.counters["per_point"] = benchmark::Counter(static_cast<double>(points),
                                                     benchmark::Counter::kIsIterationInvariantRate |
                                                         benchmark::Counter::kInvert);
    state.SetComplexityN(points);
}

void peakMemoryOfAMillionPoints(benchmark::State &state)
{
    constexpr int points = 1'000'000;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    sampleDocument(points)->SaveFile(path);
    const auto size = static_cast<double>(QFile(path).size());
    for ([[maybe_unused]] auto step : state) {
        const double peak = peakOfChild(path);
        if (peak <= 0.0) {
            state.SkipWithError("the child process failed");
            return;
        }
        state.counters["ratio"] = peak / size;
        state.counters["file_MB"] = size / 1e6;
        state.counters["peak_MB"] = peak / 1e6;
    }
}

BENCHMARK(peakMemoryOfAMillionPoints)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(loadEvaluateSave)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->MeasureProcessCPUTime()
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

} // namespace
