#pragma once

#include "tests/support/testregistry.h"

#include <QTest>

#include <cstdio>

/// Runs the test class that the first argument names with the remaining arguments, or all without
/// one.
inline int runClasses(int argc, char **argv)
{
    const std::string wanted = argc > 1 && argv[1][0] != '-' ? argv[1] : "";
    if (!wanted.empty()) {
        argv[1] = argv[0];
        --argc;
        ++argv;
    }
    int failed = 0;
    int run = 0;
    for (const auto &[name, make] : testregistry::classes()) {
        if (!wanted.empty() && wanted != name)
            continue;
        ++run;
        const std::unique_ptr<QObject> test = make();
        failed += QTest::qExec(test.get(), argc, argv);
    }
    if (run == 0)
        std::fprintf(stderr, "no test class %s\n", wanted.c_str());
    return run > 0 && failed == 0 ? 0 : 1;
}
