#include "devkit/core/HostCommands.h"
#include "devkit/core/VariableHub.h"

namespace
{

Answer Variables(const VariableHub& hub, const Arguments& arguments)
{
    QVariantMap result;
    for (const auto& [name, view] : hub.Variables(arguments.String("prefix")))
        result.insert(name, view.Describe());
    return {result, {}};
}

Answer ListHistory(const VariableHub& hub, const Arguments& arguments)
{
    const auto since = static_cast<quint64>(arguments.Number("since"));
    const QString name = arguments.String("name");
    QVariantList rows;
    for (const VariableChange& change : hub.Changes())
        if (change.sequence > since && (name.isEmpty() || change.name == name))
            rows.append(change.Describe());
    return {rows, {}};
}

/// Fills the localised strings and tells that the language has changed.
Answer Strings(VariableHub& hub, const Arguments& arguments)
{
    const QVariantMap values = arguments.Value("values").toMap();
    for (auto it = values.begin(); it != values.end(); ++it)
        if (!it.key().startsWith(QLatin1Char('@')))
            return Answer::Failure(QStringLiteral("\"%1\" is not the id of a variable.").arg(it.key()));
    hub.Set(QStringLiteral("@Localization:language_id"), arguments.Value("language"), Actor::Page);
    for (auto it = values.begin(); it != values.end(); ++it)
        hub.Set(it.key(), it.value(), Actor::Page);
    hub.Trigger(QStringLiteral("@Localization\\MetaData\\Localization:updated"), true, Actor::Page);
    return {};
}

} // namespace

std::vector<Command> VariableCommands(VariableHub& hub)
{
    using namespace CommandWords;
    return {
        {"get",
         "a variable's value",
         {{"name", Kind::VariableId}},
         [&hub](const Arguments& arguments) {
             return Answer{hub.Value(arguments.String("name")), {}};
         },
         Turn::Any},
        {"set",
         "writes a variable as a page does",
         {{"name", Kind::VariableId}, {"value", Kind::Any}},
         [&hub](const Arguments& arguments) {
             hub.Set(arguments.String("name"), arguments.Value("value"), Actor::Page);
             return Answer{};
         }},
        {"trigger",
         "fires a trigger as a page does",
         {{"name", Kind::VariableId}, {"value", Kind::Any, kOptional}},
         [&hub](const Arguments& arguments) {
             hub.Trigger(arguments.String("name"), arguments.Value("value", true), Actor::Page);
             return Answer{};
         }},
        {"variables",
         "every variable whose id begins so",
         {{"prefix", Kind::String, kOptional}},
         [&hub](const Arguments& arguments) { return Variables(hub, arguments); },
         Turn::Any},
        {"history",
         "what was done with the variables, as far back as it is kept",
         {{"name", Kind::VariableId, kOptional}, {"since", Kind::Natural, kOptional}},
         [&hub](const Arguments& arguments) { return ListHistory(hub, arguments); },
         Turn::Any},
        {"strings",
         "fills localised strings and tells that they are new",
         {{"language", Kind::String}, {"values", Kind::StringMap}},
         [&hub](const Arguments& arguments) { return Strings(hub, arguments); }},
    };
}
