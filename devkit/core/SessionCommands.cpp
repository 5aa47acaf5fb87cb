#include "devkit/core/CommandTable.h"
#include "devkit/core/EventLoop.h"
#include "devkit/core/Host.h"

namespace
{

Answer Load(Host& host, const Arguments& arguments)
{
    if (host.plugIn.IsLoaded())
        return Answer::Failure(QStringLiteral("The plug-in is already loaded."));
    const PlugInEnvironment::MissingLibraries missing(host.registry, arguments.Texts("missing"));
    const PlugInLoader::Outcome outcome = host.plugIn.Load();
    QVariantMap result{{QStringLiteral("initialized"), outcome.initialized},
                       {QStringLiteral("loaded"), outcome.loaded}};
    if (!outcome.error.isEmpty())
        result.insert(QStringLiteral("error"), outcome.error);
    return {result, {}};
}

Answer Unload(Host& host, const Arguments&)
{
    if (!host.plugIn.IsLoaded())
        return Answer::Failure(QStringLiteral("The plug-in is not loaded."));
    return {QVariantMap{{QStringLiteral("peersOutstanding"), static_cast<qulonglong>(host.plugIn.Unload())}}, {}};
}

Answer Info(Host& host, const Arguments&)
{
    const QVariantMap plugIn{{QStringLiteral("iid"), host.plugIn.InterfaceId()},
                             {QStringLiteral("className"), host.plugIn.ClassName()}};
    return {QVariantMap{{QStringLiteral("platform"), QStringLiteral(VERIDAN_PLATFORM_NAME)},
                        {QStringLiteral("plugin"), plugIn},
                        {QStringLiteral("userSid"), host.userSid},
                        {QStringLiteral("systemSid"), QLatin1String(StoreAccess::SystemSid)},
                        {QStringLiteral("logFile"), host.folder.LogFile()},
                        {QStringLiteral("dataDir"), host.folder.Path()},
                        {QStringLiteral("initialized"), host.plugIn.IsInitialized()}},
            {}};
}

Answer Settle(Host& host, const Arguments& arguments)
{
    const auto timeout = static_cast<int>(arguments.Number("timeoutMs", 5000));
    return {{}, host.store.Settle(timeout) ? QString() : QStringLiteral("Not settled after %1 ms.").arg(timeout)};
}

Answer Advance(Host&, const Arguments& arguments)
{
    RunFor(static_cast<int>(arguments.Number("ms")));
    return {};
}

Answer Quit(Host& host, const Arguments&)
{
    host.RequestQuit();
    return {};
}

} // namespace

std::vector<Command> SessionCommands()
{
    using Kind = ArgumentKind;
    constexpr auto Optional = Parameter::Need::Optional;
    return {
        {"load", {{"missing", Kind::Texts, Optional, "strata|metrics|flyer"}}, &Load},
        {"unload", {}, &Unload},
        {"info", {}, &Info},
        {"settle", {{"timeoutMs", Kind::Milliseconds, Optional}}, &Settle},
        {"advance", {{"ms", Kind::Milliseconds}}, &Advance},
        {"quit", {}, &Quit},
    };
}
