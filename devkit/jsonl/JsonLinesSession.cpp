#include "devkit/jsonl/JsonLinesSession.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/VariableJson.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

constexpr int LongestLine = 16 * 1024 * 1024;

Answer Refuse(const QString& reason)
{
    return Answer::Failure(QStringLiteral("The line is not a request: %1.").arg(reason));
}

} // namespace

JsonLinesSession::JsonLinesSession(Host& host) : m_host(host), m_lines(LongestLine), m_input([this] { OnInput(); })
{
    m_host.hub.SetObserver([this](const VariableChange& change, const QVariant&) { OnChange(change); });
    Send({{QStringLiteral("event"), QStringLiteral("hello")},
          {QStringLiteral("protocol"), 1},
          {QStringLiteral("platform"), QStringLiteral(VERIDAN_PLATFORM_NAME)},
          {QStringLiteral("version"), QCoreApplication::applicationVersion()}});
}

JsonLinesSession::~JsonLinesSession()
{
    m_host.hub.SetObserver(nullptr);
}

void JsonLinesSession::OnInput()
{
    // A command that runs the event loop must not be overtaken by the next one.
    if (m_busy)
        return;
    m_busy = true;
    for (auto piece = m_input.Take(); piece && !m_host.IsQuitting(); piece = m_input.Take())
    {
        if (piece->isEmpty())
            m_lines.Finish();
        m_lines.Feed(*piece);
        AnswerLines();
        if (piece->isEmpty())
            m_host.RequestQuit();
    }
    m_busy = false;
}

void JsonLinesSession::AnswerLines()
{
    for (auto line = m_lines.Take(); line && !m_host.IsQuitting(); line = m_lines.Take())
        if (line->tooLong || !line->text.trimmed().isEmpty())
            AnswerLine(*line);
}

void JsonLinesSession::AnswerLine(const LineSplitter::Line& line)
{
    const Json::Parsed parsed = line.tooLong ? Json::Parsed() : Json::Parse(line.text);
    const QVariantMap request = parsed.value.toMap();
    Answer answer;
    if (line.tooLong)
    {
        answer = Refuse(QStringLiteral("it is longer than %1 bytes").arg(LongestLine));
    }
    else if (!parsed.error.isEmpty())
    {
        answer = Refuse(parsed.error);
    }
    else if (parsed.value.userType() != QMetaType::QVariantMap)
    {
        answer = Refuse(QStringLiteral("it is not a JSON object"));
    }
    else
    {
        answer = m_commands.Run(m_host, request);
        RunUntilIdle();
    }
    QVariantMap message{{QStringLiteral("id"), request.value(QStringLiteral("id"))},
                        {QStringLiteral("ok"), answer.Ok()}};
    message.insert(answer.Ok() ? QStringLiteral("result") : QStringLiteral("error"),
                   answer.Ok() ? answer.value : QVariant(answer.error));
    Send(message);
}

void JsonLinesSession::OnChange(const VariableChange& change)
{
    const bool watched = std::any_of(m_host.watched.begin(), m_host.watched.end(),
                                     [&change](const QString& prefix) { return change.name.startsWith(prefix); });
    if (watched)
    {
        QVariantMap event = VariableJson::Describe(change);
        event.insert(QStringLiteral("event"), QStringLiteral("variable"));
        Send(event);
    }
}

void JsonLinesSession::Send(const QVariantMap& message)
{
    if (!WriteStandardOutput(Json::Write(message) + '\n'))
        m_host.RequestQuit();
}
