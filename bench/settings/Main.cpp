#include "bench/support/OwnStore.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const StoreLibrary library;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
