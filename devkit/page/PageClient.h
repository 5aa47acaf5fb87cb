#pragma once

#include "devkit/core/Client.h"
#include "devkit/page/Admission.h"
#include "devkit/page/PagePeer.h"
#include "devkit/page/WebSocket.h"

#include <QTimer>

#include <memory>

/// One WebSocket of the page, or of a script that speaks to it: admitted by the token in its first message, then each
/// message is a request, an answer or an event. An empty message is answered by an empty one at once, also while a
/// request takes its time: whoever sends it learns that the UI thread runs. A client that floods the server or does not
/// read is dropped. UI thread.
class PageClient final : public QObject, public Client
{
public:
    /// Takes the connection over, whose next bytes are the handshake.
    PageClient(QTcpSocket* connection, const QByteArray& token, PagePeer::Open open);
    ~PageClient() override;

    void Receive(const QVariantMap& message) override;

private:
    void OnText(const QByteArray& text);
    void Admit(const QVariantMap& request);
    /// `code` is one of RFC 6455's; nothing that comes afterwards is looked at.
    void Drop(int code, const char* reason);

    const QByteArray m_token;
    const PagePeer::Open m_open;
    Admission::Rate m_rate;
    QTimer m_deadline;                // of the first message
    std::unique_ptr<PagePeer> m_peer; // null until it is admitted
    WebSocket m_socket;
};
