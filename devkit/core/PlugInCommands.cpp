#include "devkit/core/Host.h"
#include "devkit/core/HostCommands.h"

namespace
{

Answer Load(Host& host, const Arguments& arguments)
{
    if (host.plugIn.IsLoaded())
        return Answer::Failure(QStringLiteral("The plug-in is already loaded."));
    const PlugInEnvironment::MissingLibraries missing(host.registry, arguments.Strings("missing"));
    const PlugInLoader::Outcome outcome = host.plugIn.Load();
    host.feeds.TellHost();
    QVariantMap result{{QStringLiteral("initialized"), outcome.initialized},
                       {QStringLiteral("loaded"), outcome.loaded}};
    if (!outcome.error.isEmpty())
        result.insert(QStringLiteral("error"), outcome.error);
    return {result, {}};
}

Answer Unload(Host& host)
{
    if (!host.plugIn.IsLoaded())
        return Answer::Failure(QStringLiteral("The plug-in is not loaded."));
    const auto outstanding = static_cast<qulonglong>(host.plugIn.Unload());
    host.feeds.TellHost();
    return {QVariantMap{{QStringLiteral("peersOutstanding"), outstanding}}, {}};
}

Answer Info(const Host& host)
{
    const QVariantMap plugIn{{QStringLiteral("iid"), host.plugIn.InterfaceId()},
                             {QStringLiteral("className"), host.plugIn.ClassName()}};
    return {QVariantMap{{QStringLiteral("platform"), QStringLiteral(VERIDAN_PLATFORM_NAME)},
                        {QStringLiteral("plugin"), plugIn},
                        {QStringLiteral("userSid"), host.userSid},
                        {QStringLiteral("systemSid"), QLatin1String(StoreAccess::kSystemSid)},
                        {QStringLiteral("logFile"), host.folder.LogFile()},
                        {QStringLiteral("dataDir"), host.folder.Path()},
                        {QStringLiteral("initialized"), host.plugIn.IsInitialized()},
                        {QStringLiteral("recording"), host.recording.IsOn()}},
            {}};
}

Answer Settle(Host& host, const Arguments& arguments)
{
    const auto timeout = static_cast<int>(arguments.Number("timeoutMs", StoreWrites::kPatienceMs));
    return {{}, host.storeWrites.Settle(timeout) ? QString() : QStringLiteral("Not settled after %1 ms.").arg(timeout)};
}

} // namespace

std::vector<Command> PlugInCommands(Host& host)
{
    using namespace CommandWords;
    return {
        {"load",
         "loads and initialises the plug-in, without the libraries that are to be missing",
         {{"missing", Kind::Strings, kOptional, "strata|metrics|flyer"}},
         [&host](const Arguments& arguments) { return Load(host, arguments); }},
        {"unload",
         "deletes the plug-in and unloads its library",
         {},
         [&host](const Arguments&) { return Unload(host); }},
        {"info",
         "what the host and the plug-in are, and where their files lie",
         {},
         [&host](const Arguments&) { return Info(host); },
         Command::Turn::Any},
        {"settle",
         "waits until the store has told of every change",
         {{"timeoutMs", Kind::Milliseconds, kOptional}},
         [&host](const Arguments& arguments) { return Settle(host, arguments); }},
    };
}
