#include "devkit/page/WebSocket.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <utility>

namespace
{

constexpr int kNormal = 1000;
constexpr int kLongestReason = 123;
constexpr int kKeySize = 16;
constexpr int kGoodbyeMs = 2'000;
/// Answers to pings that a client may leave unread.
constexpr qint64 kMostUnreadPongs = 64LL * 1024;

template <typename Number>
QByteArray BigEndian(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray Accepted(const QByteArray& key)
{
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Accept: " +
           QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1).toBase64() +
           "\r\n\r\n";
}

} // namespace

bool WebSocket::IsHandshake(const HttpRequest& request)
{
    return request.Header("upgrade").toLower() == "websocket" &&
           request.Header("connection").toLower().contains("upgrade") &&
           request.Header("sec-websocket-version") == "13" &&
           QByteArray::fromBase64(request.Header("sec-websocket-key")).size() == kKeySize;
}

WebSocket::WebSocket(QTcpSocket* socket, const HttpRequest& handshake, int longestText, OnText onText)
    : m_socket(socket), m_onText(std::move(onText)), m_reader(longestText)
{
    m_socket->setParent(nullptr);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_socket->read(handshake.length);
    m_socket->write(Accepted(handshake.Header("sec-websocket-key")));
    connect(m_socket.get(), &QTcpSocket::readyRead, this, [this] { OnReceived(); });
    m_goodbye.setSingleShot(true);
    connect(&m_goodbye, &QTimer::timeout, this, [this] { m_socket->abort(); });
    OnReceived();
}

WebSocket::~WebSocket()
{
    m_socket->disconnect();
}

void WebSocket::Send(const QByteArray& text)
{
    if (!m_closed)
        Write(WebSocketReader::Text, text);
}

void WebSocket::Close(int code, const QByteArray& reason)
{
    if (m_closed)
        return;
    m_closed = true;
    Write(WebSocketReader::Close, BigEndian(static_cast<quint16>(code)) + reason.left(kLongestReason));
    m_goodbye.start(kGoodbyeMs);
    m_socket->disconnectFromHost();
}

void WebSocket::OnReceived()
{
    m_reader.Feed(m_socket->readAll());
    while (auto message = m_reader.Take())
        QMetaObject::invokeMethod(
            this, [this, message = *message] { Handle(message); }, Qt::QueuedConnection);
    if (m_reader.Error() != 0)
        QMetaObject::invokeMethod(
            this, [this] { Close(m_reader.Error(), {}); }, Qt::QueuedConnection);
}

void WebSocket::Handle(const WebSocketReader::Message& message)
{
    if (m_closed)
        return;
    if (message.opcode == WebSocketReader::Text)
        m_onText(message.payload);
    else if (message.opcode == WebSocketReader::Close)
        Close(message.payload.size() < 2 ? kNormal : qFromBigEndian<quint16>(message.payload.constData()), {});
    else if (message.opcode == WebSocketReader::Ping && Unread() < kMostUnreadPongs)
        Write(WebSocketReader::Pong, message.payload);
}

void WebSocket::Write(int opcode, const QByteArray& payload)
{
    constexpr int kShort = 126;
    constexpr int kMedium = 0x10000;
    QByteArray head(1, static_cast<char>(0x80 | opcode));
    if (payload.size() < kShort)
        head += static_cast<char>(payload.size());
    else if (payload.size() < kMedium)
        head += static_cast<char>(kShort) + BigEndian(static_cast<quint16>(payload.size()));
    else
        head += static_cast<char>(kShort + 1) + BigEndian(static_cast<quint64>(payload.size()));
    m_socket->write(head);
    m_socket->write(payload);
}
