#include "devkit/core/CommandTable.h"
#include "devkit/core/Host.h"
#include "devkit/core/LogTail.h"

#include <QClipboard>
#include <QGuiApplication>

namespace
{

Answer Urls(Host& host, const Arguments&)
{
    return {host.urls.Urls(), {}};
}

Answer ClipboardSet(Host&, const Arguments& arguments)
{
    QGuiApplication::clipboard()->setText(arguments.Text("text"));
    return {};
}

Answer ClipboardGet(Host&, const Arguments&)
{
    return {QVariantMap{{QStringLiteral("text"), QGuiApplication::clipboard()->text()}}, {}};
}

Answer EventCreate(Host& host, const Arguments& arguments)
{
    return {{}, host.events.Create(arguments.Text("name"))};
}

Answer EventState(Host& host, const Arguments& arguments)
{
    const std::optional<bool> signalled = host.events.IsSignalled(arguments.Text("name"));
    if (!signalled)
        return Answer::Failure(QStringLiteral("There is no event \"%1\".").arg(arguments.Text("name")));
    return {QVariantMap{{QStringLiteral("signalled"), *signalled}}, {}};
}

Answer Log(Host& host, const Arguments& arguments)
{
    return {
        ReadLogTail(host.folder.LogFile(), arguments.Number("lines", 50), static_cast<int>(arguments.Number("level"))),
        {}};
}

Registry::Root RootOf(const Arguments& arguments)
{
    return arguments.Text("root") == QLatin1String("machine") ? Registry::Root::Machine : Registry::Root::User;
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
                                                 : QVariant(arguments.Text("string"));
    return ToAnswer(host.registry.Set(RootOf(arguments), arguments.Text("key"), arguments.Text("value"), data));
}

Answer RegistryRemove(Host& host, const Arguments& arguments)
{
    return ToAnswer(host.registry.Remove(RootOf(arguments), arguments.Text("key"), arguments.Text("value")));
}

} // namespace

std::vector<Command> SystemCommands()
{
    using Kind = ArgumentKind;
    constexpr auto Optional = Parameter::Need::Optional;
    constexpr auto Required = Parameter::Need::Required;
    const Parameter name{"name", Kind::Name};
    const Parameter root{"root", Kind::Text, Required, "machine|user"};
    const Parameter key{"key", Kind::Name};
    const Parameter value{"value", Kind::Name};
    return {
        {"urls", {}, &Urls},
        {"clipboard.set", {{"text", Kind::Text}}, &ClipboardSet},
        {"clipboard.get", {}, &ClipboardGet},
        {"event.create", {name}, &EventCreate},
        {"event.state", {name}, &EventState},
        {"log", {{"lines", Kind::Natural, Optional}, {"level", Kind::UInt32, Optional}}, &Log},
        {"registry.set",
         {root, key, value, {"dword", Kind::UInt32, Optional}, {"string", Kind::Text, Optional}},
         &RegistrySet},
        {"registry.remove", {root, key, value}, &RegistryRemove},
    };
}
