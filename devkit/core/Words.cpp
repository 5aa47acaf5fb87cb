#include "devkit/core/Words.h"

#include <algorithm>

namespace
{

using Request = Result<QVariantMap>;

Request Misuse(const Command& command, const QString& what)
{
    return Request::Failure(QStringLiteral("%1 Write: %2").arg(what, command.Usage()), FailureKind::Misused);
}

bool TakesRest(const Parameter& parameter)
{
    return parameter.kind == ArgumentKind::Any || parameter.kind == ArgumentKind::Typed ||
           parameter.kind == ArgumentKind::String || parameter.kind == ArgumentKind::StringMap ||
           parameter.kind == ArgumentKind::Entries;
}

const Parameter* Option(const Command& command, const QString& name)
{
    const auto found = std::find_if(command.parameters.begin(), command.parameters.end(),
                                    [&name](const Parameter& each) { return name == QLatin1String(each.name); });
    return found == command.parameters.end() ? nullptr : &*found;
}

} // namespace

Words::Line Words::Line::FromString(const QString& text)
{
    Line line{text.trimmed(), {}, {}};
    for (int at = 0; at < line.text.size();)
    {
        const auto isBlank = [](QChar c) { return c.isSpace(); };
        const auto start = std::find_if_not(line.text.cbegin() + at, line.text.cend(), isBlank);
        const auto end = std::find_if(start, line.text.cend(), isBlank);
        line.starts.push_back(static_cast<int>(start - line.text.cbegin()));
        line.words.append(line.text.mid(line.starts.back(), static_cast<int>(end - start)));
        at = static_cast<int>(end - line.text.cbegin());
    }
    return line;
}

Words::Named Words::Find(const CommandTable& table, const QStringList& words)
{
    if (words.size() >= 2)
        if (const Command* const command = table.Find(words[0] + QLatin1Char('.') + words[1]))
            return {command, 2};
    return {words.isEmpty() ? nullptr : table.Find(words[0]), 1};
}

Result<QVariantMap> Words::ToRequest(const Command& command, const Line& line, int first)
{
    QVariantMap request{{QStringLiteral("op"), QLatin1String(command.op)}};
    for (const Parameter& parameter : command.parameters)
        if (parameter.option && *parameter.option != '\0')
            request.insert(QLatin1String(parameter.name), QLatin1String(parameter.option));
    auto next = command.parameters.begin();
    bool optionsEnded = false;
    for (int i = first; i < line.words.size(); ++i)
    {
        const QString& word = line.words[i];
        if (!optionsEnded && word.startsWith(QLatin1String("--")))
        {
            const QString name = word.mid(2).section(QLatin1Char('='), 0, 0);
            optionsEnded = name.isEmpty();
            if (optionsEnded)
                continue;
            const Parameter* const parameter = Option(command, name);
            const bool separate = !word.contains(QLatin1Char('='));
            if (!parameter)
                return Misuse(command, QStringLiteral("There is no option --%1.").arg(name));
            if (separate && ++i == line.words.size())
                return Misuse(command, QStringLiteral("The option --%1 needs a value.").arg(name));
            request.insert(name, parameter->FromWord(separate ? line.words[i] : word.section(QLatin1Char('='), 1)));
            continue;
        }
        const auto end = command.parameters.end();
        next = std::find_if(next, end, [&request](const Parameter& each) {
            return !each.option && (each.kind == ArgumentKind::Strings || !request.contains(QLatin1String(each.name)));
        });
        if (next == end)
            return Misuse(command, QStringLiteral("There is one word too many: \"%1\".").arg(word));
        const QString name = QLatin1String(next->name);
        const bool last = std::none_of(next + 1, end, [](const Parameter& each) { return !each.option; });
        if (next->kind == ArgumentKind::Strings)
            request.insert(name, request.value(name).toList() + QVariantList{word});
        else if (last && TakesRest(*next) && !line.starts.empty())
        {
            request.insert(name, next->FromWord(line.text.mid(line.starts[static_cast<std::size_t>(i)])));
            break;
        }
        else
            request.insert(name, next->FromWord(word));
    }
    for (const Parameter& parameter : command.parameters)
        if (parameter.need == Parameter::Need::Required && !parameter.option &&
            !request.contains(QLatin1String(parameter.name)))
            return Misuse(command, QStringLiteral("Say %1.").arg(QString(QLatin1String(parameter.name)).toUpper()));
    return {request, {}};
}
