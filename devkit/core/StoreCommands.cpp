#include "devkit/core/CommandTable.h"
#include "devkit/core/Host.h"
#include "devkit/strata/OrbStrataControl.h"

namespace
{

Answer Get(Host& host, const Arguments& arguments)
{
    return host.store.Get(arguments.Text("scope"), arguments.Text("key"));
}

Answer Set(Host& host, const Arguments& arguments)
{
    return host.store.Set(arguments.Text("scope"), arguments.Text("key"), arguments.Text("type"),
                          arguments.Value("value"));
}

Answer Remove(Host& host, const Arguments& arguments)
{
    return host.store.Remove(arguments.Text("scope"), arguments.Text("key"));
}

Answer Constrain(Host& host, const Arguments& arguments)
{
    return host.store.Constrain(arguments.Text("scope"), arguments.Text("key"),
                                static_cast<quint32>(arguments.Number("constraints")));
}

Answer List(Host& host, const Arguments& arguments)
{
    return host.store.List(arguments.Text("scope"), arguments.Text("prefix"));
}

Answer Fault(Host&, const Arguments& arguments)
{
    if (!arguments.Has("function"))
    {
        OrbStrataControl_ClearFaults();
        return {};
    }
    if (!arguments.Has("code"))
        return Answer::Failure(QStringLiteral("The argument \"code\" is missing."));
    const QString function = arguments.Text("function");
    const std::wstring key = arguments.Text("key").toStdWString();
    const bool known = OrbStrataControl_SetFault(
        function.toUtf8().constData(), arguments.Has("key") ? key.c_str() : nullptr,
        static_cast<OrbStrataResult>(arguments.Number("code")), static_cast<uint32_t>(arguments.Number("count", 1)));
    return {{}, known ? QString() : QStringLiteral("The store has no function \"%1\".").arg(function)};
}

Answer Writes(Host& host, const Arguments& arguments)
{
    const std::vector<StoreAccess::Write> writes = host.store.Writes();
    QVariantList rows;
    for (auto i = static_cast<std::size_t>(arguments.Number("since")); i < writes.size(); ++i)
    {
        rows.append(QVariantMap{
            {QStringLiteral("seq"), writes[i].sequence},
            {QStringLiteral("scope"), writes[i].scope},
            {QStringLiteral("key"), writes[i].key},
            {QStringLiteral("by"), writes[i].byPlugIn ? QStringLiteral("plugin") : QStringLiteral("product")}});
    }
    return {rows, {}};
}

Answer Elevation(Host&, const Arguments& arguments)
{
    OrbStrataControl_SetElevationAnswer(arguments.Text("answer") == QLatin1String("accept"));
    return {};
}

} // namespace

std::vector<Command> StoreCommands()
{
    using Kind = ArgumentKind;
    constexpr auto Optional = Parameter::Need::Optional;
    constexpr auto Required = Parameter::Need::Required;
    const Parameter scope{"scope", Kind::Name};
    const Parameter key{"key", Kind::Name};
    const Parameter type{"type", Kind::Text, Required, "bool|int32|int64|string|utf8|object"};
    return {
        {"store.get", {scope, key}, &Get},
        {"store.set", {scope, key, type, {"value", Kind::Any}}, &Set},
        {"store.remove", {scope, key}, &Remove},
        {"store.constrain", {scope, key, {"constraints", Kind::UInt32}}, &Constrain},
        {"store.list", {scope, {"prefix", Kind::Text, Optional}}, &List},
        {"store.fault",
         {{"function", Kind::Name, Optional},
          {"key", Kind::Name, Optional},
          {"code", Kind::UInt32, Optional},
          {"count", Kind::UInt32, Optional}},
         &Fault},
        {"store.writes", {{"since", Kind::Natural, Optional}}, &Writes},
        {"elevation", {{"answer", Kind::Text, Required, "accept|decline"}}, &Elevation},
    };
}
