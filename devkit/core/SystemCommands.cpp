#include "devkit/core/Host.h"
#include "devkit/core/HostCommands.h"
#include "devkit/core/LogTail.h"

#include <QClipboard>
#include <QGuiApplication>

namespace
{

Answer EventState(const Host& host, const Arguments& arguments)
{
    const std::optional<bool> signalled = host.events.IsSignalled(arguments.String("name"));
    if (!signalled)
        return Answer::Failure(QStringLiteral("There is no event \"%1\".").arg(arguments.String("name")));
    return {QVariantMap{{QStringLiteral("signalled"), *signalled}}, {}};
}

Answer Log(const Host& host, const Arguments& arguments)
{
    const auto level = static_cast<int>(arguments.Number("level"));
    return {ReadLogTail(host.folder.LogFile(), arguments.Number("lines", 50), level), {}};
}

RegistryValues::Root RootOf(const Arguments& arguments)
{
    return arguments.String("root") == QLatin1String("machine") ? RegistryValues::Root::Machine
                                                                : RegistryValues::Root::User;
}

Answer ToAnswer(bool written)
{
    return {{}, written ? QString() : QStringLiteral("The registry could not be written.")};
}

Answer RegistrySet(Host& host, const Arguments& arguments)
{
    if (arguments.Has("dword") == arguments.Has("string"))
        return Answer::Failure(QStringLiteral("One of the arguments \"dword\" and \"string\" is needed."));
    const QVariant data = arguments.Has("dword") ? QVariant(static_cast<uint>(arguments.Number("dword")))
                                                 : QVariant(arguments.String("string"));
    return ToAnswer(host.registry.Set(RootOf(arguments), arguments.String("key"), arguments.String("value"), data));
}

} // namespace

std::vector<Command> SystemCommands(Host& host)
{
    using namespace CommandWords;
    const Parameter name{"name", Kind::Name};
    const Parameter root{"root", Kind::String, kRequired, "machine|user"};
    const Parameter key{"key", Kind::Name};
    const Parameter value{"value", Kind::Name};
    return {
        {"urls",
         "the addresses that the plug-in opened",
         {},
         [&host](const Arguments&) {
             return Answer{host.urls.Urls(), {}};
         },
         Turn::Any},
        {"clipboard.set",
         "fills the clipboard",
         {{"text", Kind::String}},
         [](const Arguments& arguments) {
             QGuiApplication::clipboard()->setText(arguments.String("text"));
             return Answer{};
         }},
        {"clipboard.get",
         "what the clipboard holds",
         {},
         [](const Arguments&) {
             return Answer{QVariantMap{{QStringLiteral("text"), QGuiApplication::clipboard()->text()}}, {}};
         }},
        {"event.create",
         "makes a named system event",
         {name},
         [&host](const Arguments& arguments) {
             return Answer{{}, host.events.Create(arguments.String("name"))};
         }},
        {"event.state",
         "whether a named event is signalled",
         {name},
         [&host](const Arguments& arguments) { return EventState(host, arguments); }},
        {"events",
         "the named events that were made, and whether they are signalled",
         {},
         [&host](const Arguments&) {
             return Answer{host.events.List(), {}};
         },
         Turn::Any},
        {"log",
         "the last lines of the plug-in's log",
         {{"lines", Kind::Natural, kOptional}, {"level", Kind::UInt32, kOptional}},
         [&host](const Arguments& arguments) { return Log(host, arguments); },
         Turn::Any},
        {"registry.set",
         "what the plug-in reads at its next start",
         {root,
          key,
          value,
          {"dword", Kind::UInt32, kOptional, nullptr, ""},
          {"string", Kind::String, kOptional, nullptr, ""}},
         [&host](const Arguments& arguments) { return RegistrySet(host, arguments); }},
        {"registry.remove",
         "removes a value of the registry",
         {root, key, value},
         [&host](const Arguments& arguments) {
             return ToAnswer(
                 host.registry.Remove(RootOf(arguments), arguments.String("key"), arguments.String("value")));
         }},
    };
}
