#pragma once

#include <QByteArray>
#include <QTcpSocket>
#include <QTimer>

#include <functional>
#include <memory>

/// The server's end of a WebSocket (RFC 6455, without extensions) that carries texts. UI thread.
class WebSocket final : public QObject
{
public:
    using OnText = std::function<void(const QByteArray& text)>;

    /// Takes the connection over, with the client's handshake as the next that is read from it; one that is none is
    /// answered so, and ends the connection. Each text is told from the event loop, so that what it leads to may run
    /// the loop for itself, and may end this.
    WebSocket(QTcpSocket* connection, OnText onText);
    ~WebSocket() override;
    Q_DISABLE_COPY_MOVE(WebSocket)

    /// Longer texts, and what is no text, end the connection.
    void SetLongestText(std::size_t bytes);
    void Send(const QByteArray& text);
    /// What was sent and is still here, as the client does not read.
    qint64 Unread() const { return m_connection->bytesToWrite(); }
    /// Says goodbye after what was sent, with one of RFC 6455's codes, and ends the connection, at the latest after two
    /// seconds. Nothing more is told.
    void Close(int code, const char* reason);
    bool IsClosed() const { return m_isClosed; }

private:
    class Protocol;

    void OnReceived();
    void OnMessage(const QByteArray& message, bool isText);

    const std::unique_ptr<QTcpSocket> m_connection;
    const OnText m_onText;
    QTimer m_goodbye;
    bool m_isClosed = false;
    const std::unique_ptr<Protocol> m_protocol;
};
