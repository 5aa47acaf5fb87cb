#include "devkit/core/Session.h"

#include "devkit/core/Client.h"
#include "devkit/core/EventLoop.h"
#include "devkit/core/Host.h"
#include "devkit/core/Json.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

std::shared_ptr<Session> Session::Open(Host& host, Client& client, Rights rights)
{
    std::shared_ptr<Session> session(new Session(host, client, rights));
    host.sessions.Add(session);
    return session;
}

Session::Session(Host& host, Client& client, Rights rights)
    : m_host(host), m_client(&client), m_rights(rights), m_commands(host.Commands())
{
    m_commands.Add(OwnCommands());
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        if (const Command::Reply reply = std::exchange(m_onTime, nullptr))
            reply({});
    });
}

Session::~Session() = default;

void Session::Close()
{
    m_client = nullptr;
    m_timer.stop();
    m_watches.clear();
    const auto self = shared_from_this();
    if (std::exchange(m_onTime, nullptr))
        m_running = false;
    m_requests.resize(std::min<std::size_t>(m_requests.size(), m_running ? 1 : 0));
    m_host.sessions.Remove(this);
}

QVariantMap Session::Greeting()
{
    return {{QStringLiteral("protocol"), 1},
            {QStringLiteral("platform"), QStringLiteral(VERIDAN_PLATFORM_NAME)},
            {QStringLiteral("version"), QCoreApplication::applicationVersion()}};
}

void Session::Submit(const QVariantMap& request)
{
    const Result<const Command*> found = m_commands.Find(request);
    m_requests.push_back({request, found.Ok() ? found.value : nullptr, {}});
    Request& added = m_requests.back();
    if (!found.Ok())
        Finish(added, Answer::Failure(found.error));
    else if (found.value->turn == Command::Turn::AtOnce)
    {
        m_host.feeds.TellRequest(*found.value, request);
        const Answer answer = found.value->run(Arguments(request));
        m_host.feeds.TellAnswer(*found.value, answer);
        Finish(added, answer);
    }
    Continue();
}

void Session::SubmitString(const QByteArray& text)
{
    const Json::Parsed parsed = Json::Parse(text);
    if (parsed.value.userType() == QMetaType::QVariantMap)
        Submit(parsed.value.toMap());
    else
        Refuse(parsed.error.isEmpty() ? QStringLiteral("it is not a JSON object") : parsed.error);
}

void Session::Refuse(const QString& why)
{
    m_requests.push_back({{}, nullptr, {}});
    Finish(m_requests.back(), Answer::Failure(QStringLiteral("This is no request: %1.").arg(why)));
    Continue();
}

void Session::StopWaiting()
{
    m_waits = false;
    if (const Command::Reply reply = std::exchange(m_onTime, nullptr))
        reply(Answer::Failure(QStringLiteral("The end of the input came first.")));
}

void Session::EndInput()
{
    m_inputEnded = true;
    StopWaiting();
    Continue();
}

void Session::Continue()
{
    const std::shared_ptr<Session> self = shared_from_this(); // a client may close it at any moment
    while (!m_running && m_client && !m_requests.empty())
    {
        Request& request = m_requests.front();
        if (!request.answer)
        {
            if (m_host.IsQuitting())
                return;
            if (request.command->turn == Command::Turn::Own && !m_host.sessions.TakeTurn())
                return; // it goes on when the turn is handed back
            Run(request);
            continue;
        }
        const QVariantMap answer = *request.answer;
        m_requests.pop_front();
        m_client->Receive(answer);
    }
    if (m_inputEnded && !m_running && m_requests.empty())
        m_host.RequestQuit();
}

void Session::Run(Request& request)
{
    const Command& command = *request.command;
    const Arguments arguments(request.text);
    m_running = true;
    m_host.feeds.TellRequest(command, request.text);
    if (command.turn == Command::Turn::Deferred)
    {
        // The host runs on meanwhile; requests that come now stand behind this one, whose place does not change.
        command.begin(arguments, [this, self = shared_from_this(), &request](const Answer& answer) {
            m_host.feeds.Poll();
            m_host.feeds.TellAnswer(*request.command, answer);
            Finish(request, answer);
            m_running = false;
            Continue();
        });
        return;
    }
    const bool hasTurn = command.turn == Command::Turn::Own;
    std::optional<StoreWrites::InStep> inStep;
    if (hasTurn && m_host.sessions.WatchedAny(Topic::Requests))
        inStep.emplace(m_host.storeWrites);
    const Answer answer = command.run(arguments);
    if (hasTurn || m_host.sessions.IsTurnFree())
        RunUntilIdle(); // but not inside another client's command, whose code may not be ready for it
    if (inStep)
        m_host.storeWrites.Settle();
    inStep.reset();
    m_host.feeds.Poll(); // what the command did is told before its answer
    m_host.feeds.TellAnswer(command, answer);
    Finish(request, answer);
    m_running = false;
    if (hasTurn)
        m_host.sessions.HandTurnBack(*this);
}

void Session::Finish(Request& request, const Answer& answer) const
{
    const QString id = QStringLiteral("id");
    request.answer = ToMessage(answer);
    request.answer->insert(id, request.text.value(id));
}

void Session::Advance(const Arguments& arguments, const Command::Reply& reply)
{
    if (!m_waits)
        return reply(Answer::Failure(QStringLiteral("The end of the input came first.")));
    m_onTime = reply;
    m_timer.start(static_cast<int>(arguments.Number("ms")));
}

bool Session::Watches(Topic topic, const QString& name) const
{
    return std::any_of(
        m_watches.begin(), m_watches.end(),
        [topic, &name](const auto& watch) { return watch.first == topic && name.startsWith(watch.second); });
}

bool Session::WatchesAny(Topic topic) const
{
    const auto at = m_watches.lower_bound({topic, QString()});
    return at != m_watches.end() && at->first == topic;
}

void Session::Send(const QVariantMap& event)
{
    if (m_client)
        m_client->Receive(event);
}

void Session::Watch(Topic topic, const QString& prefix, bool on)
{
    if (on)
        m_watches.emplace(topic, prefix);
    else
        m_watches.erase({topic, prefix});
}

Answer Session::Record(const Arguments& arguments)
{
    if (!arguments.Bool("on", true))
        return m_host.recording.Stop();
    if (m_rights == Rights::Page && arguments.Has("file"))
        return Answer::Failure(QStringLiteral("This client may not name a file; the end of a recording answers it."));
    return {{}, m_host.recording.Start(arguments.String("file"))};
}

std::vector<Command> Session::OwnCommands()
{
    using namespace CommandWords;
    return {
        {"watch",
         "events of a topic from now on, of variables and keys that begin so",
         {{"topic", Kind::String, kOptional, kTopicNames},
          {"prefix", Kind::String, kOptional},
          {"on", Kind::Bool, kOptional}},
         [this](const Arguments& arguments) {
             const Topic topic = TopicNamed(arguments.Value("topic", QStringLiteral("variables")).toString());
             Watch(topic, arguments.String("prefix"), arguments.Bool("on", true));
             return Answer{{}, m_host.OnWatchesChanged()};
         },
         Turn::Any},
        {"advance",
         "lets real time pass",
         {{"ms", Kind::Milliseconds}},
         nullptr,
         Turn::Deferred,
         [this](const Arguments& arguments, const Command::Reply& reply) { Advance(arguments, reply); }},
        {"schema",
         "every command with its parameters",
         {},
         [this](const Arguments&) {
             return Answer{m_commands.Schema(), {}};
         },
         Turn::Any},
        {"record",
         "records requests and what the plug-in does: into a file, or into the answer at the end",
         {{"on", Kind::Bool, kOptional}, {"file", Kind::Name, kOptional, nullptr, ""}},
         [this](const Arguments& arguments) { return Record(arguments); }},
        {"quit",
         "ends the host",
         {},
         [this](const Arguments&) {
             if (m_rights == Rights::Page)
                 return Answer::Failure(QStringLiteral("This client may not end the host."));
             m_host.RequestQuit();
             return Answer{};
         }},
    };
}
