#include "devkit/terminal/TypedCommands.h"

#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/Printable.h"
#include "devkit/core/StoreCommands.h"
#include "devkit/terminal/Console.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <utility>

namespace
{

constexpr const char* kHelpHead =
    "  page                       show the main page again\n"
    "  set SWITCH on|off          move a switch: %1\n"
    "                             (opens the settings page first, which asks for elevation, and closes it again)\n"
    "  help, quit\n";
constexpr const char* kHelpTail =
    "  A NAME is an id (@Package\\Path:name), or the part after its colon where that is unique. The scope is \"user\"\n"
    "  unless named: system, user or a SID. A VALUE is JSON (true, 5, {\"a\":1}); anything else is taken as a "
    "string.\n";

QVariantMap Request(const char* op, QVariantMap arguments = {})
{
    arguments.insert(QStringLiteral("op"), QLatin1String(op));
    return arguments;
}

QVariantMap Fire(const char* trigger)
{
    return Request("trigger", {{QStringLiteral("name"), QLatin1String(trigger)}});
}

QString String(const QVariantMap& request, const char* argument)
{
    return request.value(QLatin1String(argument)).toString();
}

} // namespace

TypedCommands::TypedCommands(Host& host, Console& console, const QVariantMap& values, QString page, Ask ask)
    : m_host(host), m_console(console), m_values(values), m_page(std::move(page)), m_ask(std::move(ask))
{}

void TypedCommands::Run(const CommandTable& commands, const QString& typed)
{
    const Words::Line line = Words::Line::FromString(typed);
    const QString first = line.words.value(0);
    const QString last = line.words.value(2).toLower();
    const bool onOff = line.words.size() == 3 && (last == QLatin1String("on") || last == QLatin1String("off"));
    const auto* const row = first == QLatin1String("set") && onOff ? MainPage::FindSwitch(line.words[1]) : nullptr;
    const Words::Named named = Words::Find(commands, line.words);
    if (first == QLatin1String("page"))
        ShowPage();
    else if (first == QLatin1String("help"))
        Help(commands);
    else if (first == QLatin1String("exit"))
        m_ask(Request("quit"), nullptr);
    else if (row)
        MoveSwitch(*row, last == QLatin1String("on"));
    else if (named.command)
        RunCommand(*named.command, line, named.words);
    else if (!first.isEmpty())
        Complain(QStringLiteral("There is no command \"%1\"; \"help\" lists them.").arg(first));
}

void TypedCommands::RunCommand(const Command& command, const Words::Line& line, int first)
{
    Result<QVariantMap> request = Words::ToRequest(command, line, first);
    const QString op = QLatin1String(command.op);
    bool isNew = false;
    for (const Parameter& parameter : command.parameters)
    {
        const QString name = QLatin1String(parameter.name);
        if (!request.Ok() || parameter.kind != ArgumentKind::VariableId || !request.value.contains(name))
            continue;
        const QString id = Resolve(request.value.value(name).toString());
        if (id.isEmpty())
            return;
        request.value.insert(name, id);
    }
    if (request.Ok() && op == QLatin1String("store.set"))
        request.error = CompleteStoreSet(m_host.store, request.value, isNew).error;
    if (!request.Ok())
    {
        Complain(request.error);
        return;
    }
    m_ask(request.value, [this, asked = request.value](const Answer& answer) { ShowAnswer(asked, answer); });
    if (op.startsWith(QLatin1String("store.")))
        m_ask(Request("settle"), nullptr); // what follows from it shows before the next prompt
}

void TypedCommands::MoveSwitch(const MainPage::Switch& row, bool on)
{
    const QString id = QString::fromLatin1(row.state);
    const auto variables = m_host.hub.Variables(id);
    const auto found = variables.find(id);
    if (found == variables.end() || found->second.subscribers == 0)
    {
        Complain(
            QStringLiteral("The plug-in takes no moves of the switch \"%1\"; change its setting with \"store set\".")
                .arg(QLatin1String(row.title)));
        return;
    }
    const QVariant before = found->second.value;
    const QString settled = on ? QStringLiteral("On") : QStringLiteral("Off");
    const auto set = [id](const QVariant& value) {
        return Request("set", {{QStringLiteral("name"), id}, {QStringLiteral("value"), value}});
    };
    Say(QStringLiteral("Opening the settings page, moving the switch, closing the page:"));
    m_ask(Fire("@Veridan\\Settings\\Triggers:request_show_settings_ui"), nullptr);
    m_ask(set(QLatin1String("Move") + settled), [this, set, id, settled, before](const Answer&) {
        if (m_host.hub.Value(id) != settled)
        {
            Complain(QStringLiteral("The switch did not move."));
            m_ask(set(before), nullptr);
        }
        m_ask(Fire("@Veridan\\Settings\\Triggers:settings_ui_closed"), nullptr);
        m_ask(Request("settle"), nullptr); // the status follows when the store has told of the change
    });
}

void TypedCommands::ShowPage()
{
    constexpr int kWidest = 76;
    const TextStyle& style = m_console.Style();
    const int columns = std::min(m_console.Columns() - 1, kWidest);
    const QString title = QStringLiteral("Veridan ") + QCoreApplication::applicationVersion();
    const QString about = QStringLiteral("development host");
    m_console.Print(QStringLiteral("\n ") + style.Strong(title) +
                    style.Faint(about.rightJustified(std::max(columns - 1 - title.size(), about.size() + 1))) +
                    QLatin1Char('\n') + style.Rule(columns) + QLatin1Char('\n') + MainPage::Draw(m_values, style) +
                    style.Rule(columns) + QLatin1Char('\n') +
                    (m_page.isEmpty() ? QString() : QStringLiteral(" In a browser: %1\n").arg(m_page)) +
                    style.Faint(Printable(QStringLiteral(" Data in %1; \"help\" lists the commands.\n")
                                              .arg(QDir::toNativeSeparators(m_host.folder.Path())))));
}

void TypedCommands::Help(const CommandTable& commands)
{
    constexpr int kUsageColumns = 42;
    QString help = QString::fromLatin1(kHelpHead).arg(MainPage::SwitchNames().join(QLatin1String(", ")));
    for (const auto& [op, command] : commands.Rows())
    {
        const QString usage = command.Usage();
        const QString gap = usage.size() < kUsageColumns ? QString(kUsageColumns - usage.size(), QLatin1Char(' '))
                                                         : QStringLiteral("\n      ");
        help += QStringLiteral("  %1%2  %3\n").arg(usage, gap, QLatin1String(command.help));
    }
    m_console.Print(help + QLatin1String(kHelpTail));
}

void TypedCommands::ShowAnswer(const QVariantMap& request, const Answer& answer)
{
    const QString op = String(request, "op");
    const QVariant& result = answer.value;
    if (!answer.Ok())
        Complain(answer.error);
    else if (op == QLatin1String("get"))
        Say(QStringLiteral("%1 = %2").arg(String(request, "name"), ShortString(result)));
    else if (op == QLatin1String("variables"))
        ShowVariables(request, result.toMap());
    else if (op == QLatin1String("store.get"))
        ShowEntry(request, result.toMap());
    else if (op == QLatin1String("store.set"))
        Say(QStringLiteral("Stored %1 = %2  (%3, scope %4)")
                .arg(String(request, "key"), ShortString(request.value(QStringLiteral("value"))),
                     String(request, "type"), String(request, "scope")));
    else if (result.userType() == QMetaType::QVariantList || result.userType() == QMetaType::QStringList)
        for (const QVariant& row : result.toList())
            Say(row.userType() == QMetaType::QString ? row.toString() : QString::fromUtf8(Json::Write(row)));
    else if (result.userType() == QMetaType::QVariantMap)
        for (const QString& name : result.toMap().keys())
            Say(name + QLatin1String(": ") + QString::fromUtf8(Json::Write(result.toMap().value(name))));
    else if (result.isValid())
        Say(ShortString(result));
}

void TypedCommands::ShowEntry(const QVariantMap& request, const QVariantMap& entry)
{
    const QString key = String(request, "key");
    const QString scope = String(request, "scope");
    if (!entry.value(QStringLiteral("found")).toBool())
    {
        Say(QStringLiteral("%1 is not in the store (scope %2).").arg(key, scope));
        return;
    }
    const QString constraints = StoreEntry::ConstraintsString(entry.value(QStringLiteral("constraints")).toUInt());
    Say(QStringLiteral("%1 = %2  (%3, scope %4%5)")
            .arg(key, ShortString(entry.value(QStringLiteral("value"))), entry.value(QStringLiteral("type")).toString(),
                 scope, constraints.isEmpty() ? QString() : QLatin1String(", ") + constraints));
}

void TypedCommands::ShowVariables(const QVariantMap& request, const QVariantMap& variables)
{
    constexpr int kNameColumns = 66;
    QString table;
    for (auto it = variables.begin(); it != variables.end(); ++it)
    {
        const QString value = ShortString(it.value().toMap().value(QStringLiteral("value")));
        table +=
            QStringLiteral("  ") + it.key().leftJustified(kNameColumns) + QLatin1Char(' ') + value + QLatin1Char('\n');
    }
    if (table.isEmpty())
        Complain(QStringLiteral("No variable begins with \"%1\".").arg(String(request, "prefix")));
    else
        m_console.Print(Printable(table));
}

QString TypedCommands::ShortString(const QVariant& value)
{
    constexpr int kLongest = 60;
    if (!value.isValid())
        return QStringLiteral("(none)");
    const bool isWord = value.userType() == QMetaType::QString && !value.toString().trimmed().isEmpty() &&
                        !value.toString().contains(QLatin1Char('\n'));
    const QString text = isWord ? value.toString() : QString::fromUtf8(Json::Write(value));
    return text.size() <= kLongest ? text : text.left(kLongest - 3) + QLatin1String("...");
}

QString TypedCommands::Resolve(const QString& name)
{
    if (name.startsWith(QLatin1Char('@')))
        return name;
    if (const auto* row = MainPage::FindSwitch(name))
        return QString::fromLatin1(row->state);
    QStringList matches;
    for (const auto& [id, view] : m_host.hub.Variables(QString()))
        if (!name.isEmpty() && id.endsWith(QLatin1Char(':') + name))
            matches.append(id);
    if (matches.size() == 1)
        return matches.first();
    Complain(matches.isEmpty() ? QStringLiteral("There is no variable \"%1\"; \"variables\" lists them.").arg(name)
                               : QStringLiteral("\"%1\" could be %2.").arg(name, matches.join(QLatin1String(" or "))));
    return {};
}

void TypedCommands::Say(const QString& sentence)
{
    m_console.Print(QStringLiteral("  ") + Printable(sentence) + QLatin1Char('\n'));
}

void TypedCommands::Complain(const QString& sentence)
{
    m_console.Print(QStringLiteral("  ") + m_console.Style().Bad(Printable(sentence)) + QLatin1Char('\n'));
}
