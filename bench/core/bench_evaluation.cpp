// Evaluation: all results of gathered samples, and what one edited value costs.

#include "bench/core/compare.h"
#include "bench/core/sampledocument.h"

#include <QString>

namespace {

void allResultsOfAMillionPoints(benchmark::State &state)
{
    constexpr int points = 1'000'000;
    const std::unique_ptr<Kalibrierung> document = sampleDocument(points);
    const std::vector<double> x(points, 1.25);
    const std::vector<double> y(points, 2.5);
    compare(
        state,
        [&] {
            Auswertung evaluation(*document);
            evaluation.gather();
            return evaluation;
        },
        [](Auswertung &evaluation) { benchmark::DoNotOptimize(allResults(evaluation)); },
        [&] {
            double sumX = 0.0;
            double sumY = 0.0;
            for (std::size_t i = 0; i < x.size(); ++i) {
                sumX += x[i];
                sumY += y[i];
            }
            benchmark::DoNotOptimize(sumX);
            benchmark::DoNotOptimize(sumY);
        });
}

void oneEditAndAllResultsAsShown(benchmark::State &state)
{
    const std::unique_ptr<Kalibrierung> document = sampleDocument(16);
    double value = 95.0;
    for ([[maybe_unused]] auto step : state) {
        value += 0.125;
        document->setMesswert(pmDirekt, 2, 3, value);
        for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
            benchmark::DoNotOptimize(document->StatistikMittelwertString(merkmal));
            benchmark::DoNotOptimize(document->StatistikVarianzString(merkmal));
            benchmark::DoNotOptimize(document->StatistikStandardabweichungString(merkmal));
        }
        for (const auto &[x, y] : {std::pair(mDirekt, mIndirekt), {mDirekt, mZ}, {mIndirekt, mZ}}) {
            benchmark::DoNotOptimize(document->StatistikKovarianzString(x, y));
            benchmark::DoNotOptimize(document->StatistikBestimmtheitsmaßString(x, y));
            for (const auto &[a, b] : {std::pair(x, y), {y, x}}) {
                benchmark::DoNotOptimize(document->StatistikKalibriergeradeAnstiegString(a, b));
                benchmark::DoNotOptimize(
                    document->StatistikKalibriergeradeAchsenabschnittString(a, b));
            }
        }
        benchmark::DoNotOptimize(document->StatistikBestimmtheitsmaßIndirektDirektOk());
    }
}

BENCHMARK(allResultsOfAMillionPoints)
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(oneEditAndAllResultsAsShown)->Unit(benchmark::kMicrosecond);

} // namespace
