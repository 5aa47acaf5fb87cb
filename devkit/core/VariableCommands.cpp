#include "devkit/core/CommandTable.h"
#include "devkit/core/Host.h"
#include "devkit/core/VariableJson.h"

namespace
{

Answer Get(Host& host, const Arguments& arguments)
{
    return {host.hub.Value(arguments.Text("name")), {}};
}

Answer Set(Host& host, const Arguments& arguments)
{
    host.hub.Set(arguments.Text("name"), arguments.Value("value"), Actor::Page);
    return {};
}

Answer Trigger(Host& host, const Arguments& arguments)
{
    host.hub.Trigger(arguments.Text("name"), arguments.Value("value", true), Actor::Page);
    return {};
}

Answer Variables(Host& host, const Arguments& arguments)
{
    QVariantMap result;
    for (const auto& [name, view] : host.hub.Variables(arguments.Text("prefix")))
        result.insert(name, VariableJson::Describe(view));
    return {result, {}};
}

Answer History(Host& host, const Arguments& arguments)
{
    const std::vector<VariableChange>& history = host.hub.History();
    const auto since = static_cast<quint64>(arguments.Number("since"));
    const QString name = arguments.Text("name");
    QVariantList rows;
    for (auto i = static_cast<std::size_t>(since); i < history.size(); ++i)
        if (name.isEmpty() || history[i].name == name)
            rows.append(VariableJson::Describe(history[i]));
    return {rows, {}};
}

Answer Watch(Host& host, const Arguments& arguments)
{
    const QString prefix = arguments.Text("prefix");
    host.watched.removeAll(prefix);
    if (arguments.Flag("on", true))
        host.watched.append(prefix);
    return {};
}

/// Fills the localised texts and tells that the language has changed.
Answer Strings(Host& host, const Arguments& arguments)
{
    const QVariantMap values = arguments.Value("values").toMap();
    for (auto it = values.begin(); it != values.end(); ++it)
        if (!it.key().startsWith(QLatin1Char('@')))
            return Answer::Failure(QStringLiteral("\"%1\" is not the id of a variable.").arg(it.key()));
    host.hub.Set(QStringLiteral("@Localization:language_id"), arguments.Value("language"), Actor::Page);
    for (auto it = values.begin(); it != values.end(); ++it)
        host.hub.Set(it.key(), it.value(), Actor::Page);
    host.hub.Trigger(QStringLiteral("@Localization\\MetaData\\Localization:updated"), true, Actor::Page);
    return {};
}

} // namespace

std::vector<Command> VariableCommands()
{
    using Kind = ArgumentKind;
    constexpr auto Optional = Parameter::Need::Optional;
    return {
        {"get", {{"name", Kind::VariableId}}, &Get},
        {"set", {{"name", Kind::VariableId}, {"value", Kind::Any}}, &Set},
        {"trigger", {{"name", Kind::VariableId}, {"value", Kind::Any, Optional}}, &Trigger},
        {"variables", {{"prefix", Kind::Text, Optional}}, &Variables},
        {"history", {{"name", Kind::VariableId, Optional}, {"since", Kind::Natural, Optional}}, &History},
        {"watch", {{"prefix", Kind::Text}, {"on", Kind::Flag, Optional}}, &Watch},
        {"strings", {{"language", Kind::Text}, {"values", Kind::TextMap}}, &Strings},
    };
}
