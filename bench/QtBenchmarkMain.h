#pragma once
#include <benchmark/benchmark.h>

#include <QCoreApplication>

// BENCHMARK_MAIN for benchmarks that wait in Qt's event loop, which needs the application
// object.
#define TALLOWICK_QT_BENCHMARK_MAIN()             \
    int main(int argc, char** argv) {             \
        QCoreApplication application(argc, argv); \
        benchmark::Initialize(&argc, argv);       \
        benchmark::RunSpecifiedBenchmarks();      \
        benchmark::Shutdown();                    \
        return 0;                                 \
    }
