#include "devkit/page/PageClient.h"

#include "devkit/core/Json.h"

#include <utility>

namespace
{

constexpr int kHelloMs = 10'000;
constexpr int kGoodbyeMs = 2'000;
constexpr int kLongestHello = 1024;
constexpr int kLongestMessage = 16 * 1024 * 1024;
constexpr std::size_t kMostWaiting = 10'000;       // requests without an answer
constexpr qint64 kMostUnread = 32LL * 1024 * 1024; // bytes of earlier messages

constexpr int kPolicyViolation = 1008;
constexpr int kTryAgainLater = 1013;

} // namespace

PageClient::PageClient(QWebSocket* socket, const QByteArray& token, PagePeer::Open open)
    : m_socket(socket), m_token(token), m_open(std::move(open))
{
    m_socket->setParent(nullptr);
    m_socket->setMaxAllowedIncomingMessageSize(kLongestHello);
    m_socket->setMaxAllowedIncomingFrameSize(kLongestHello);
    // Queued: a command may run the event loop, and with it end this client; the socket must not be at work then.
    connect(m_socket.get(), &QWebSocket::textMessageReceived, this, &PageClient::OnText, Qt::QueuedConnection);
    connect(m_socket.get(), &QWebSocket::binaryMessageReceived, this,
            [this] { Drop(kPolicyViolation, QStringLiteral("Messages are text.")); });
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] {
        if (m_dropped)
            m_socket->abort();
        else
            Drop(kPolicyViolation, QStringLiteral("The first message did not come in time."));
    });
    m_deadline.start(kHelloMs);
}

PageClient::~PageClient()
{
    if (m_peer)
        m_peer->Close();
    m_socket->disconnect();
}

void PageClient::OnText(const QString& text)
{
    if (m_dropped)
        return;
    if (!m_rate.Take() || (m_peer && m_peer->Waiting() > kMostWaiting))
        Drop(kPolicyViolation, QStringLiteral("Too many requests."));
    else if (m_peer && text.isEmpty())
        m_socket->sendTextMessage(text);
    else if (m_peer)
        m_peer->Submit(text.toUtf8());
    else
        Admit(Json::Parse(text.toUtf8()).value.toMap());
}

void PageClient::Admit(const QVariantMap& request)
{
    const QByteArray token = request.value(QStringLiteral("token")).toString().toUtf8();
    if (request.value(QStringLiteral("op")) != QLatin1String("hello") || !Admission::IsSameToken(token, m_token))
    {
        Drop(kPolicyViolation, QStringLiteral("The token is not this start's."));
        return;
    }
    m_deadline.stop();
    m_socket->setMaxAllowedIncomingMessageSize(kLongestMessage);
    m_socket->setMaxAllowedIncomingFrameSize(kLongestMessage);
    m_peer = m_open(*this);
    const QString id = QStringLiteral("id");
    Receive({{id, request.value(id)}, {QStringLiteral("ok"), true}, {QStringLiteral("result"), m_peer->Greeting()}});
}

void PageClient::Receive(const QVariantMap& message)
{
    if (m_dropped)
        return;
    if (m_socket->bytesToWrite() > kMostUnread)
    {
        Drop(kTryAgainLater, QStringLiteral("The client does not read."));
        return;
    }
    m_socket->sendTextMessage(QString::fromUtf8(StringOf(message)));
}

void PageClient::Drop(int code, const QString& reason)
{
    m_dropped = true;
    if (m_peer)
        m_peer->Close();
    m_socket->close(static_cast<QWebSocketProtocol::CloseCode>(code), reason);
    m_deadline.start(kGoodbyeMs);
}
