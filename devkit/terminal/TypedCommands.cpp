#include "devkit/terminal/TypedCommands.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/Host.h"
#include "devkit/core/LogTail.h"
#include "devkit/terminal/Console.h"
#include "devkit/terminal/MainPage.h"
#include "devkit/terminal/ValueText.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace
{

constexpr int SettleMs = 2000;

constexpr const char* HelpText =
    "  page                       show the main page again\n"
    "  set SWITCH on|off          move a switch: %1\n"
    "                             (opens the settings page first, which asks for elevation, and closes it again)\n"
    "  set NAME VALUE             write a UI variable as a page does\n"
    "  get NAME                   its value\n"
    "  trigger NAME [VALUE]       fire a trigger as a page does\n"
    "  variables [PREFIX]         every variable and its value\n"
    "  store set [--scope system|user|SID] KEY VALUE\n"
    "                             change a setting as the product does; the scope is the user's unless named\n"
    "  store get [--scope system|user|SID] KEY\n"
    "  log                        the last lines of the plug-in's log\n"
    "  help, quit\n"
    "  A NAME is an id (@Package\\Path:name), or the part after its colon where that is unique.\n"
    "  A VALUE is JSON (true, 5, {\"a\":1}); anything else is taken as text.\n";

/// The first word of a line, and what follows it.
QString TakeWord(QString& rest)
{
    rest = rest.trimmed();
    const auto* const end = std::find_if(rest.cbegin(), rest.cend(), [](QChar c) { return c.isSpace(); });
    QString word = rest.left(static_cast<int>(end - rest.cbegin()));
    rest = rest.mid(word.size()).trimmed();
    return word;
}

/// The store's type for a value of a key that has none yet.
QString TypeFor(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType()))
    {
    case QMetaType::Bool:
        return QStringLiteral("bool");
    case QMetaType::Int:
        return QStringLiteral("int32");
    case QMetaType::LongLong:
        return QStringLiteral("int64");
    case QMetaType::QVariantMap:
    case QMetaType::QVariantList:
        return QStringLiteral("object");
    default:
        return QStringLiteral("string");
    }
}

} // namespace

void TypedCommands::Run(const QString& line)
{
    QString rest = line;
    const QString command = TakeWord(rest);
    using Handler = void (TypedCommands::*)(const QString&);
    struct Row
    {
        const char* name;
        Handler run;
    };
    static constexpr Row Rows[] = {
        {"get", &TypedCommands::Get},         {"set", &TypedCommands::Set},
        {"trigger", &TypedCommands::Trigger}, {"variables", &TypedCommands::Variables},
        {"store", &TypedCommands::Store},     {"page", &TypedCommands::Page},
        {"log", &TypedCommands::Log},         {"help", &TypedCommands::Help},
        {"quit", &TypedCommands::Quit},       {"exit", &TypedCommands::Quit},
    };
    const auto* const row = std::find_if(std::begin(Rows), std::end(Rows),
                                         [&command](const Row& known) { return command == QLatin1String(known.name); });
    if (row != std::end(Rows))
    {
        (this->*row->run)(rest);
        RunUntilIdle();
    }
    else if (!command.isEmpty())
    {
        Complain(QStringLiteral("There is no command \"%1\"; \"help\" lists them.").arg(command));
    }
}

void TypedCommands::ShowPage()
{
    const TextStyle& style = m_console.Style();
    const int columns = std::min(m_console.Columns() - 1, 76);
    const QString title = QStringLiteral("Veridan ") + QCoreApplication::applicationVersion();
    const QString about = QStringLiteral("development host");
    m_console.Print(QStringLiteral("\n ") + style.Strong(title) +
                    style.Faint(about.rightJustified(std::max(columns - 1 - title.size(), about.size() + 1))) +
                    QLatin1Char('\n') + style.Rule(columns) + QLatin1Char('\n') + MainPage::Draw(m_host.hub, style) +
                    style.Rule(columns) + QLatin1Char('\n') +
                    style.Faint(QStringLiteral(" Data in %1; \"help\" lists the commands.\n")
                                    .arg(QDir::toNativeSeparators(m_host.folder.Path()))));
}

void TypedCommands::Page(const QString&)
{
    ShowPage();
}

void TypedCommands::Help(const QString&)
{
    m_console.Print(QString::fromLatin1(HelpText).arg(MainPage::SwitchNames().join(QLatin1String(", "))));
}

void TypedCommands::Quit(const QString&)
{
    m_host.RequestQuit();
}

void TypedCommands::Get(const QString& arguments)
{
    QString rest = arguments;
    const QString id = Resolve(TakeWord(rest));
    if (!id.isEmpty())
        Say(QStringLiteral("%1 = %2").arg(id, ValueText::Short(m_host.hub.Value(id))));
}

void TypedCommands::Set(const QString& arguments)
{
    QString rest = arguments;
    const QString name = TakeWord(rest);
    const QString word = rest.toLower();
    if (rest.isEmpty())
        Complain(QStringLiteral("Say what to set: set NAME VALUE."));
    else if (const auto* row = MainPage::FindSwitch(name);
             row != nullptr && (word == QLatin1String("on") || word == QLatin1String("off")))
        MoveSwitch(*row, word == QLatin1String("on"));
    else if (const QString id = Resolve(name); !id.isEmpty())
        m_host.hub.Set(id, ValueText::FromTyped(rest), Actor::Page);
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
    const QString settled = on ? QStringLiteral("On") : QStringLiteral("Off");
    Say(QStringLiteral("Opening the settings page, moving the switch, closing the page:"));
    m_host.hub.Trigger(QStringLiteral("@Veridan\\Settings\\Triggers:request_show_settings_ui"), true, Actor::Page);
    m_host.hub.Set(id, QLatin1String("Move") + settled, Actor::Page);
    RunUntilIdle();
    if (m_host.hub.Value(id) != settled)
    {
        Complain(QStringLiteral("The switch did not move."));
        m_host.hub.Set(id, found->second.value, Actor::Page);
    }
    m_host.hub.Trigger(QStringLiteral("@Veridan\\Settings\\Triggers:settings_ui_closed"), true, Actor::Page);
    m_host.store.Settle(SettleMs); // the status follows when the store has told of the change
}

void TypedCommands::Trigger(const QString& arguments)
{
    QString rest = arguments;
    const QString id = Resolve(TakeWord(rest));
    if (!id.isEmpty())
        m_host.hub.Trigger(id, rest.isEmpty() ? QVariant(true) : ValueText::FromTyped(rest), Actor::Page);
}

void TypedCommands::Variables(const QString& prefix)
{
    const auto variables = m_host.hub.Variables(prefix);
    QString table;
    for (const auto& [name, view] : variables)
    {
        constexpr int NameColumns = 66;
        table += QStringLiteral("  ") + name.leftJustified(NameColumns) + QLatin1Char(' ') +
                 ValueText::Short(view.value) + QLatin1Char('\n');
    }
    table.isEmpty() ? Complain(QStringLiteral("No variable begins with \"%1\".").arg(prefix)) : m_console.Print(table);
}

void TypedCommands::Log(const QString&)
{
    constexpr int Lines = 20;
    QStringList lines = ReadLogTail(m_host.folder.LogFile(), Lines, 0);
    lines.removeAll(QString());
    m_console.Print(lines.isEmpty() ? QStringLiteral("  The log is empty.\n")
                                    : QStringLiteral("  ") + lines.join(QLatin1String("\n  ")) + QLatin1Char('\n'));
}

void TypedCommands::Store(const QString& arguments)
{
    QString rest = arguments;
    const QString verb = TakeWord(rest);
    QString scope = QStringLiteral("user");
    QString key = TakeWord(rest);
    if (key == QLatin1String("--scope"))
    {
        scope = TakeWord(rest);
        key = TakeWord(rest);
    }
    if (verb == QLatin1String("get") && !key.isEmpty())
        StoreGet(scope, key);
    else if (verb == QLatin1String("set") && !rest.isEmpty())
        StoreSet(scope, key, rest);
    else
        Complain(QStringLiteral("Say \"store get [--scope SCOPE] KEY\" or \"store set [--scope SCOPE] KEY VALUE\"."));
}

void TypedCommands::StoreGet(const QString& scope, const QString& key)
{
    const Answer found = m_host.store.Get(scope, key);
    const QVariantMap entry = found.value.toMap();
    if (!found.Ok())
    {
        Complain(found.error);
    }
    else if (!entry.value(QStringLiteral("found")).toBool())
    {
        Say(QStringLiteral("%1 is not in the store (scope %2).").arg(key, scope));
    }
    else
    {
        const bool enforced = (entry.value(QStringLiteral("constraints")).toUInt() & 1U) != 0;
        Say(QStringLiteral("%1 = %2  (%3, scope %4%5)")
                .arg(key, ValueText::Short(entry.value(QStringLiteral("value"))),
                     entry.value(QStringLiteral("type")).toString(), scope,
                     enforced ? QStringLiteral(", enforced") : QString()));
    }
}

void TypedCommands::StoreSet(const QString& scope, const QString& key, const QString& typed)
{
    const Answer present = m_host.store.Get(scope, key);
    if (!present.Ok())
    {
        Complain(present.error);
        return;
    }
    QVariant value = ValueText::FromTyped(typed);
    const QString presentType = present.value.toMap().value(QStringLiteral("type")).toString();
    const QString type = presentType.isEmpty() ? TypeFor(value) : presentType;
    if (type == QLatin1String("string") || type == QLatin1String("utf8"))
        value = value.userType() == QMetaType::QString ? value : typed;
    const Answer stored = m_host.store.Set(scope, key, type, value);
    if (!stored.Ok())
    {
        Complain(stored.error);
        return;
    }
    Say(QStringLiteral("Stored %1 = %2  (%3, scope %4)").arg(key, ValueText::Short(value), type, scope));
    m_host.store.Settle(SettleMs);
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
    Complain(name.isEmpty() ? QStringLiteral("Name a variable; \"variables\" lists them.")
             : matches.isEmpty()
                 ? QStringLiteral("There is no variable \"%1\"; \"variables\" lists them.").arg(name)
                 : QStringLiteral("\"%1\" could be %2.").arg(name, matches.join(QLatin1String(" or "))));
    return {};
}

void TypedCommands::Say(const QString& sentence)
{
    m_console.Print(QStringLiteral("  ") + sentence + QLatin1Char('\n'));
}

void TypedCommands::Complain(const QString& sentence)
{
    m_console.Print(QStringLiteral("  ") + m_console.Style().Bad(sentence) + QLatin1Char('\n'));
}
