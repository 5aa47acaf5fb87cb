#pragma once

#include "devkit/core/CommandTable.h"
#include "devkit/core/Topic.h"

#include <QTimer>
#include <QVariantMap>

#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <utility>

class Client;
class Host;

/// One client's conversation with the host: its requests, carried out in their order and answered in it, and what it
/// watches. Several live at once; of their commands one at a time runs. UI thread.
///
///     m_session = Session::Open(host, *this);
///     m_session->Submit({{"id", 1}, {"op", "get"}, {"name", "@A:b"}});   // the client receives the answer
///     m_session->Close();                                               // and from here on nothing more
class Session : public std::enable_shared_from_this<Session>
{
public:
    enum class Rights
    {
        All,
        Page // it neither ends the host nor names a file to write
    };

    static std::shared_ptr<Session> Open(Host& host, Client& client, Rights rights = Rights::All);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The client is gone: it receives nothing more, and what it asked for last is dropped unless it runs.
    void Close();

    /// What the host is, without its "event".
    static QVariantMap Greeting();

    void Submit(const QVariantMap& request);
    /// A request as JSON text; what is none is refused in its turn.
    void SubmitString(const QByteArray& text);
    /// Answers, in its turn, something that was meant as a request and is none.
    void Refuse(const QString& why);
    /// A command that only waits ends now, and a later one at once.
    void StopWaiting();
    /// The same, and no request follows: the host ends after the last answer.
    void EndInput();

    /// Requests without an answer so far.
    std::size_t Waiting() const { return m_requests.size(); }
    const CommandTable& Commands() const { return m_commands; }

    bool Watches(Topic topic, const QString& name) const;
    bool WatchesAny(Topic topic) const;
    /// Hands an event over.
    void Send(const QVariantMap& event);

    /// Goes on with what is waiting, when it may.
    void Continue();

private:
    struct Request
    {
        QVariantMap text;
        const Command* command = nullptr; // null: it fits none, and is answered
        std::optional<QVariantMap> answer;
    };

    Session(Host& host, Client& client, Rights rights);

    std::vector<Command> OwnCommands();
    void Advance(const Arguments& arguments, const Command::Reply& reply);
    Answer Record(const Arguments& arguments);
    void Run(Request& request);
    void Finish(Request& request, const Answer& answer) const;
    void Watch(Topic topic, const QString& prefix, bool on);

    Host& m_host;
    Client* m_client;
    const Rights m_rights;
    CommandTable m_commands;
    std::deque<Request> m_requests; // the first is the one that runs
    bool m_running = false;
    bool m_waits = true;
    bool m_inputEnded = false;
    std::set<std::pair<Topic, QString>> m_watches;
    QTimer m_timer; // of "advance"
    Command::Reply m_onTime;
};
