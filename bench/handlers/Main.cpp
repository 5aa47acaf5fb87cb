#include "delay_load/ModuleHandler.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ModuleHandler modules;
    if (!modules.LoadDll())
    {
        std::fputs("The suite's libraries are not beside the program.\n", stderr);
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
