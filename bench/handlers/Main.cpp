#include "delay_load/ModuleHandler.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <iostream>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ModuleHandler modules;
    if (!modules.LoadDll())
    {
        std::cerr << "The suite's libraries are not beside the program.\n";
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
