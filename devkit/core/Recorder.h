#pragma once

#include "devkit/core/Client.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>

class Host;
class Session;

/// One more client of a host, which asks for nothing and watches: it makes lines of what the others ask for and of what
/// the plug-in does about it, from its construction to its end. UI thread.
class Recorder : public Client
{
public:
    using Sink = std::function<void(const QVariantMap& line)>;

    Recorder(Host& host, Sink sink);
    ~Recorder() override;

    void Receive(const QVariantMap& event) override;

private:
    void OnRequest(QVariantMap request);
    void OnAnswer(const QVariantMap& answer);
    void OnVariable(const QVariantMap& change);
    void OnWrite(const QVariantMap& write);
    void OnFlyer(QVariantMap flyer);
    void OnLogLine(const QString& line);

    void AddRequest(const QVariantMap& line);
    void Add(QVariantMap line);

    const Sink m_sink;
    int m_flyersBefore; // flyers are counted from the recording's begin
    QElapsedTimer m_sinceRequest;
    QElapsedTimer m_sinceLine;
    std::shared_ptr<Session> m_session;
};
