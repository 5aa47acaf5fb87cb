// The development host: loads the plug-in, stands in for everything around it, and is driven by a person or by a
// script.

#include "devkit/core/Host.h"
#include "devkit/core/Printable.h"
#include "devkit/core/Replay.h"
#include "devkit/host/Options.h"
#include "devkit/host/Page.h"
#include "devkit/host/QtPlatform.h"
#include "devkit/jsonl/JsonLinesSession.h"
#include "devkit/process/StandardStreams.h"
#include "devkit/process/Termination.h"
#include "devkit/terminal/InteractiveSession.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSaveFile>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

constexpr int kUsageError = 2;

void PrintWarning(const QString& sentence)
{
    std::fprintf(stderr, "veridan-host: %s\n", qUtf8Printable(Printable(sentence)));
}

/// Ends the host when the system asks for it, also while nobody takes what it writes.
Termination EndWhenAsked(Host& host, StandardOutput& output)
{
    return Termination([&host, &output] {
        host.RequestQuit();
        output.Cancel();
    });
}

int RunJsonLines(const DataFolder& folder, const Options& options, StandardOutput& output)
{
    const QString problem = folder.Prepare();
    if (!problem.isEmpty())
        PrintWarning(problem);
    Host host(folder, {options.plugInFile, QCoreApplication::applicationDirPath(), options.openUrls, &PrintWarning});
    const Termination termination = EndWhenAsked(host, output);
    const Page page(host, options);
    if (!page.Problem().isEmpty())
        PrintWarning(page.Problem());
    const JsonLinesSession session(host, output, page.Address());
    return host.Run();
}

int RunInteractively(const DataFolder& folder, const Options& options, StandardOutput& output)
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
    const Termination termination = EndWhenAsked(host, output);
    const Page page(host, options);
    InteractiveSession session(host, output, page.Address());
    shown = &session;
    const QString failure = session.Start();
    if (!page.Problem().isEmpty())
        session.Warn(page.Problem());
    const int exitCode = failure.isEmpty() ? host.Run() : EXIT_FAILURE;
    shown = nullptr;
    if (!failure.isEmpty())
        PrintWarning(failure);
    return exitCode;
}

QString CannotBe(const QString& recording, const char* done, const QString& why)
{
    return QStringLiteral("The recording \"%1\" cannot be %2: %3.")
        .arg(QDir::toNativeSeparators(recording), QLatin1String(done), why);
}

int RunReplay(const Options& options, StandardOutput& output)
{
    QFile file(options.recording);
    if (!file.open(QIODevice::ReadOnly))
    {
        PrintWarning(CannotBe(options.recording, "read", file.errorString()));
        return Replay::Unusable;
    }
    const DataFolder folder;
    const auto ignore = [](const QString&) {}; // what the plug-in does is compared, not judged
    Host host(folder, {options.plugInFile, QCoreApplication::applicationDirPath(), options.openUrls, ignore});
    const Termination termination = EndWhenAsked(host, output);
    Replay replay(host, options.renew ? Replay::Aim::Renew : Replay::Aim::Compare, options.recording,
                  [&output](const QString& line) { output.Write(line.toUtf8() + '\n'); });
    const Replay::Outcome outcome = replay.Run(file.readAll());
    if (!options.renew || outcome == Replay::Unusable)
        return outcome;
    QSaveFile renewed(options.recording);
    if (renewed.open(QIODevice::WriteOnly) && renewed.write(replay.Renewed()) >= 0 && renewed.commit())
        return Replay::Same;
    PrintWarning(CannotBe(options.recording, "written", renewed.errorString()));
    return Replay::Unusable;
}

/// Without a front end of its own, for the pages that were open when another host ended.
int GoOn(const DataFolder& folder, const Options& options, StandardOutput& output)
{
    Host host(folder, {options.plugInFile, QCoreApplication::applicationDirPath(), options.openUrls, &PrintWarning});
    const Termination termination = EndWhenAsked(host, output);
    const Page page(host, options);
    return page.Problem().isEmpty() ? host.Run() : EXIT_FAILURE;
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
    PrepareStandardStreams();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QtPlatform());
    qInstallMessageHandler(&OnQtMessage);
    QCoreApplication::setApplicationName(QStringLiteral("veridan-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VERIDAN_VERSION));
    if (argc == 2 && std::strcmp(argv[1], Page::kWatchdogOption) == 0)
    {
        const QCoreApplication application(argc, argv);
        return Page::RunWatchdog();
    }
    const QGuiApplication application(argc, argv);

    const Options options = Options::FromCommandLine();
    if (!options.problem.isEmpty())
    {
        PrintWarning(options.problem);
        return kUsageError;
    }
    StandardOutput output;
    if (!options.recording.isEmpty())
        return RunReplay(options, output);
    const DataFolder folder = options.temporary ? DataFolder() : DataFolder(options.dataFolder);
    if (options.goesOn)
        return GoOn(folder, options, output);
    return options.jsonLines ? RunJsonLines(folder, options, output) : RunInteractively(folder, options, output);
}
