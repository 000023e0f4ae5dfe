#include "bench/core/peakmemory.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], peakArgument) == 0)
        return loadEvaluateAndSave(QString::fromLocal8Bit(argv[2]));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
