#include "devkit/terminal/InteractiveSession.h"

#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/LogTail.h"
#include "devkit/core/Printable.h"
#include "devkit/core/Session.h"
#include "devkit/terminal/MainPage.h"

#include <QTime>
#include <QTimer>

#include <utility>

namespace
{

QString Member(const QVariantMap& map, const char* name)
{
    return map.value(QLatin1String(name)).toString();
}

} // namespace

InteractiveSession::InteractiveSession(Host& host, StandardOutput& output, const QString& page)
    : m_host(host), m_console(output, {[this](const QString& line) { OnLine(line); }, [this] { OnEnd(); },
                                       [&host] { host.RequestQuit(); }}),
      m_session(Session::Open(host, *this)),
      m_commands(host, m_console, m_values, page,
                 [this](QVariantMap request, std::function<void(const Answer&)> onAnswer) {
                     Ask(std::move(request), std::move(onAnswer));
                 })
{}

InteractiveSession::~InteractiveSession()
{
    m_session->Close();
}

QString InteractiveSession::Start()
{
    const QString op = QStringLiteral("op");
    qint64 logEnd = -1;
    ReadLogFrom(m_host.folder.LogFile(), logEnd);
    const Answer store =
        AskNow({{op, QStringLiteral("store.list")}, {QStringLiteral("scope"), QStringLiteral("system")}});
    if (!store.Ok())
        return store.error;
    const QVariantMap outcome = AskNow({{op, QStringLiteral("load")}}).value.toMap();
    if (!outcome.value(QStringLiteral("initialized")).toBool())
    {
        constexpr int kErrors = 2;
        const QStringList why = FilterLog(ReadLogFrom(m_host.folder.LogFile(), logEnd), kErrors);
        return Printable((QStringList{Member(outcome, "error")} + why).join(QLatin1String("\n  ")));
    }
    const QVariantMap variables = AskNow({{op, QStringLiteral("variables")}}).value.toMap();
    for (auto it = variables.begin(); it != variables.end(); ++it)
        m_values.insert(it.key(), it.value().toMap().value(QStringLiteral("value")));
    m_commands.ShowPage();
    for (const char* const topic : {"variables", "urls", "elevation"})
        AskNow({{op, QStringLiteral("watch")}, {QStringLiteral("topic"), QLatin1String(topic)}});
    m_console.Listen();
    return {};
}

void InteractiveSession::Warn(const QString& sentence)
{
    m_console.Print(QStringLiteral("  ") + m_console.Style().Notice(Printable(sentence)) + QLatin1Char('\n'));
}

void InteractiveSession::OnLine(const QString& line)
{
    const QStringList words = Words::Line::FromString(line).words.mid(0, 2);
    const QString op = words.join(QLatin1Char('.'));
    if (op.startsWith(QLatin1String("elevation.answer"))) // what the line before may be waiting for
        m_commands.Run(m_session->Commands(), line);
    else
        m_lines.push_back(line);
    RunLines();
}

void InteractiveSession::OnEnd()
{
    m_inputEnded = true;
    m_session->StopWaiting();
    RunLines();
}

void InteractiveSession::RunLines()
{
    while (!m_lines.empty() && m_session->Waiting() == 0 && !m_host.IsQuitting())
    {
        const QString line = std::move(m_lines.front());
        m_lines.pop_front();
        m_commands.Run(m_session->Commands(), line);
    }
    if (m_inputEnded && m_lines.empty())
        m_session->EndInput();
}

void InteractiveSession::Ask(QVariantMap request, std::function<void(const Answer& answer)> onAnswer)
{
    const quint64 id = ++m_lastId;
    request.insert(QStringLiteral("id"), id);
    if (onAnswer)
        m_asked.emplace(id, std::move(onAnswer));
    m_session->Submit(request);
}

Answer InteractiveSession::AskNow(const QVariantMap& request)
{
    Answer given;
    Ask(request, [&given](const Answer& answer) { given = answer; });
    return given;
}

void InteractiveSession::Receive(const QVariantMap& message)
{
    if (message.contains(QStringLiteral("event")))
    {
        OnEvent(message);
        return;
    }
    if (m_session && m_session->Waiting() == 0) // what waits goes on when this answer has been shown
        QTimer::singleShot(0, &m_later, [this] { RunLines(); });
    const auto asked = m_asked.find(message.value(QStringLiteral("id")).toULongLong());
    if (asked == m_asked.end())
        return;
    const auto onAnswer = std::move(asked->second);
    m_asked.erase(asked);
    onAnswer({message.value(QStringLiteral("result")), Member(message, "error")});
}

void InteractiveSession::OnEvent(const QVariantMap& event)
{
    const QString kind = Member(event, "event");
    if (kind == QLatin1String("variable"))
        OnChange(event);
    else if (kind == QLatin1String("url"))
        m_console.Print(Printable(QStringLiteral("The plug-in opens %1\n").arg(Member(event, "url"))));
    else if (kind == QLatin1String("elevation"))
        Warn(QStringLiteral("%1 asks for elevation: type \"elevation answer %2 true\", or false.")
                 .arg(Member(event, "client"), Member(event, "prompt")));
    else
        m_console.Print(QStringLiteral("  ") + QString::fromUtf8(Json::Write(event)) + QLatin1Char('\n'));
}

void InteractiveSession::OnChange(const QVariantMap& change)
{
    const TextStyle& style = m_console.Style();
    const QString id = Member(change, "name");
    const QVariant value = change.value(QStringLiteral("value"));
    const bool isTrigger = Member(change, "kind") == QLatin1String("trigger");
    const bool byPlugIn = Member(change, "by") == QLatin1String("plugin");
    const QVariant previous = m_values.value(id);
    if (!isTrigger || value.isValid())
        m_values.insert(id, value);
    if (!isTrigger && value == previous)
        return;
    const QString name = MainPage::TitleOf(id);
    if (!isTrigger && !previous.isValid() && byPlugIn && name == id)
    {
        CountFirstValue();
        return;
    }
    constexpr int kTitleColumns = 28;
    const auto text = [](const QVariant& shown) { return Printable(TypedCommands::ShortString(shown)); };
    const QString time = style.Faint(QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz")));
    const QString title = Printable(name).leftJustified(kTitleColumns);
    const QString by = byPlugIn ? QStringLiteral("fired by the plug-in") : QStringLiteral("fired by the page");
    const QString what =
        isTrigger ? style.Faint(by)
                  : text(previous) + QLatin1Char(' ') + style.Arrow() + QLatin1Char(' ') + style.Strong(text(value));
    m_console.Print(QStringLiteral("  ") + time + QStringLiteral("  ") + title + QStringLiteral("  ") + what +
                    QLatin1Char('\n'));
}

void InteractiveSession::CountFirstValue()
{
    if (m_firstValues++ == 0)
    {
        QTimer::singleShot(
            0, &m_later,
            [this] {
                const QString text = QStringLiteral("%1 variables of other pages have their first value; "
                                                    "\"variables\" lists them.");
                m_console.Print(QStringLiteral("  ") + m_console.Style().Faint(text.arg(m_firstValues)) +
                                QLatin1Char('\n'));
                m_firstValues = 0;
            });
    }
}
