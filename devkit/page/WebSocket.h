#pragma once

#include "devkit/page/HttpRequest.h"
#include "devkit/page/WebSocketReader.h"

#include <QTcpSocket>
#include <QTimer>

#include <functional>
#include <memory>

/// The server's end of a WebSocket (RFC 6455, without extensions) that carries texts. UI thread.
class WebSocket final : public QObject
{
public:
    using OnText = std::function<void(const QByteArray& text)>;

    /// Whether the request asks for a WebSocket in the form that is spoken here.
    static bool IsHandshake(const HttpRequest& request);

    /// Takes the connection over, with the handshake as the next that is read from it. Each text is told from the event
    /// loop, so that what it leads to may run the loop for itself, and may end this.
    WebSocket(QTcpSocket* socket, const HttpRequest& handshake, int longestText, OnText onText);
    ~WebSocket() override;
    Q_DISABLE_COPY_MOVE(WebSocket)

    /// Longer texts end the connection.
    void SetLongestText(int bytes) { m_reader.SetLongest(bytes); }
    void Send(const QByteArray& text);
    /// What was sent and is still here, as the client does not read.
    qint64 Unread() const { return m_socket->bytesToWrite(); }
    /// Says goodbye after what was sent, with one of RFC 6455's codes, and ends the connection, at the latest after two
    /// seconds. Nothing more is told.
    void Close(int code, const QByteArray& reason);

private:
    void OnReceived();
    void Handle(const WebSocketReader::Message& message);
    void Write(int opcode, const QByteArray& payload);

    const std::unique_ptr<QTcpSocket> m_socket;
    const OnText m_onText;
    WebSocketReader m_reader;
    QTimer m_goodbye;
    bool m_closed = false;
};
