// The development host: loads the plug-in, stands in for everything around it, and is driven by a person or by a
// script.

#include "devkit/host/Host.h"
#include "devkit/host/JsonLinesSession.h"
#include "devkit/host/Options.h"
#include "devkit/host/Termination.h"

#include <QGuiApplication>

#include <cstdio>

namespace
{

void PrintWarning(const QString& sentence)
{
    std::fprintf(stderr, "veridan-host: %s\n", qUtf8Printable(sentence));
}

int RunJsonLines(const DataFolder& folder, const Options& options)
{
    const QString problem = folder.Prepare();
    if (!problem.isEmpty())
    {
        PrintWarning(problem);
    }
    Host host(folder, {options.plugInFile, QCoreApplication::applicationDirPath(), options.openUrls, &PrintWarning});
    const Termination termination([&host] { host.RequestQuit(); });
    const JsonLinesSession session(host);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    {
        qputenv("QT_QPA_PLATFORM", "minimal");
    }
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veridan-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VERIDAN_VERSION));

    const Options options = Options::FromCommandLine();
    const DataFolder folder = options.temporary ? DataFolder() : DataFolder(options.dataFolder);
    return RunJsonLines(folder, options);
}
