#pragma once

#include "devkit/core/Client.h"
#include "devkit/page/Admission.h"
#include "devkit/page/WebSocket.h"

#include <QTimer>

#include <memory>

class Host;
class Session;

/// One WebSocket of the page, or of a script that speaks to it: admitted by the token in its first message, then each
/// message is a request, an answer or an event. One that floods the host or does not read is dropped. UI thread.
class PageClient final : public QObject, public Client
{
public:
    PageClient(Host& host, QTcpSocket* socket, const HttpRequest& handshake, const QByteArray& token, bool mayQuit);
    ~PageClient() override;

    void Receive(const QVariantMap& message) override;

private:
    void OnText(const QByteArray& text);
    void Admit(const QVariantMap& request);
    void Drop(int code, const char* reason);

    Host& m_host;
    WebSocket m_socket;
    const QByteArray m_token;
    const bool m_mayQuit;
    Admission::Rate m_rate;
    QTimer m_deadline;
    std::shared_ptr<Session> m_session; // null until it is admitted
};
