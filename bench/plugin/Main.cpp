#include "bench/plugin/Roles.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>

/// A host has a user interface, and the libraries for it, before it loads the plug-in.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "minimal");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--sample"))
        return RunSample(arguments.value(2));
    if (arguments.value(1) == QLatin1String("--writer"))
        return RunWriter();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
