#pragma once

#include "devkit/core/Client.h"
#include "devkit/terminal/Console.h"
#include "devkit/terminal/TypedCommands.h"

#include <QObject>

#include <deque>
#include <functional>
#include <map>
#include <memory>

class Host;
class Session;

/// The host as a person sees it: the main page, what changes as it happens, and a line to type commands on.
class InteractiveSession : public Client
{
public:
    /// `page` is the page's address, empty where none is served.
    InteractiveSession(Host& host, StandardOutput& output, const QString& page);
    ~InteractiveSession() override;

    /// Loads the plug-in and shows the page. Why the plug-in cannot be used, else empty.
    QString Start();

    void Warn(const QString& sentence);
    void Receive(const QVariantMap& message) override;

private:
    void Ask(QVariantMap request, std::function<void(const Answer& answer)> onAnswer);
    /// The answer to a request that is carried out at once.
    Answer AskNow(const QVariantMap& request);
    void OnLine(const QString& line);
    void OnEnd();
    /// Runs the lines that were typed, each when the one before has been carried out.
    void RunLines();
    void OnEvent(const QVariantMap& event);
    void OnChange(const QVariantMap& change);

    /// The first values of variables that are not on the main page are told of together, once the event loop runs.
    void CountFirstValue();

    Host& m_host;
    Console m_console;
    const std::shared_ptr<Session> m_session;
    std::deque<QString> m_lines;
    bool m_inputEnded = false;
    std::map<quint64, std::function<void(const Answer& answer)>> m_asked; // by id
    quint64 m_lastId = 0;
    QVariantMap m_values; // of the variables
    TypedCommands m_commands;
    int m_firstValues = 0;
    QObject m_later; // what is done later ends with the session
};
