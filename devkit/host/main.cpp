// The development host: loads the plug-in, stands in for everything around it, and is driven by a person or by a
// script.

#include "devkit/core/Host.h"
#include "devkit/host/Options.h"
#include "devkit/host/QtPlatform.h"
#include "devkit/jsonl/JsonLinesSession.h"
#include "devkit/process/Termination.h"
#include "devkit/terminal/InteractiveSession.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

namespace
{

constexpr int UsageError = 2;

void PrintWarning(const QString& sentence)
{
    std::fprintf(stderr, "veridan-host: %s\n", qUtf8Printable(sentence));
}

int RunJsonLines(const DataFolder& folder, const Options& options)
{
    const QString problem = folder.Prepare();
    if (!problem.isEmpty())
        PrintWarning(problem);
    Host host(folder, {options.plugInFile, QCoreApplication::applicationDirPath(), options.openUrls, &PrintWarning});
    const Termination termination([&host] { host.RequestQuit(); });
    const JsonLinesSession session(host);
    return host.Run();
}

int RunInteractively(const DataFolder& folder, const Options& options)
{
    const QString problem = folder.Prepare();
    if (!problem.isEmpty())
    {
        PrintWarning(problem);
        return EXIT_FAILURE;
    }
    InteractiveSession* shown = nullptr;
    const auto warn = [&shown](const QString& sentence) { shown ? shown->Warn(sentence) : PrintWarning(sentence); };
    Host host(folder, {options.plugInFile, QCoreApplication::applicationDirPath(), options.openUrls, warn});
    const Answer store = host.store.List(QStringLiteral("system"), QString());
    if (!store.Ok())
    {
        PrintWarning(store.error);
        return EXIT_FAILURE;
    }
    const Termination termination([&host] { host.RequestQuit(); });
    InteractiveSession session(host);
    shown = &session;
    const QString failure = session.Start();
    const int exitCode = failure.isEmpty() ? host.Run() : EXIT_FAILURE;
    shown = nullptr;
    if (!failure.isEmpty())
        PrintWarning(failure);
    return exitCode;
}

/// Qt's own messages go where the host's do. One is about a folder for sockets, of which the host has none.
void OnQtMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    if (!message.contains(QLatin1String("XDG_RUNTIME_DIR")))
        PrintWarning(message);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QtPlatform());
    qInstallMessageHandler(&OnQtMessage);
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veridan-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VERIDAN_VERSION));

    const Options options = Options::FromCommandLine();
    if (!options.problem.isEmpty())
    {
        PrintWarning(options.problem);
        return UsageError;
    }
    const DataFolder folder = options.temporary ? DataFolder() : DataFolder(options.dataFolder);
    return options.jsonLines ? RunJsonLines(folder, options) : RunInteractively(folder, options);
}
