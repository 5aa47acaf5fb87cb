#include "devkit/page/PageClient.h"

#include "devkit/core/Json.h"

#include <utility>

namespace
{

constexpr int kHelloMs = 10'000;
constexpr int kLongestHello = 1024;
constexpr int kLongestMessage = 16 * 1024 * 1024;
constexpr std::size_t kMostWaiting = 10'000;       // requests without an answer
constexpr qint64 kMostUnread = 32LL * 1024 * 1024; // bytes of earlier messages

constexpr int kPolicyViolation = 1008;
constexpr int kTryAgainLater = 1013;

const QString& Id()
{
    static const QString s_id = QStringLiteral("id");
    return s_id;
}

} // namespace

PageClient::PageClient(QTcpSocket* socket, const HttpRequest& handshake, const QByteArray& token, PagePeer::Open open)
    : m_socket(socket, handshake, kLongestHello, [this](const QByteArray& text) { OnText(text); }), m_token(token),
      m_open(std::move(open))
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this,
            [this] { Drop(kPolicyViolation, "The first message did not come in time."); });
    m_deadline.start(kHelloMs);
}

PageClient::~PageClient()
{
    if (m_peer)
        m_peer->Close();
}

void PageClient::OnText(const QByteArray& text)
{
    if (!m_rate.Take() || (m_peer && m_peer->Waiting() > kMostWaiting))
        Drop(kPolicyViolation, "Too many requests.");
    else if (m_peer && text.isEmpty())
        m_socket.Send(text);
    else if (m_peer)
        Submit(text);
    else
        Admit(Json::Parse(text).value.toMap());
}

void PageClient::Admit(const QVariantMap& request)
{
    const QByteArray token = request.value(QStringLiteral("token")).toString().toUtf8();
    if (request.value(QStringLiteral("op")) != QLatin1String("hello") || !Admission::IsSameToken(token, m_token))
    {
        Drop(kPolicyViolation, "The token is not this start's.");
        return;
    }
    m_deadline.stop();
    m_socket.SetLongestText(kLongestMessage);
    m_peer = m_open(*this);
    Receive(
        {{Id(), request.value(Id())}, {QStringLiteral("ok"), true}, {QStringLiteral("result"), m_peer->Greeting()}});
}

void PageClient::Submit(const QByteArray& text)
{
    const Json::Parsed parsed = Json::Parse(text);
    if (parsed.value.userType() == QMetaType::QVariantMap)
        m_peer->Submit(parsed.value.toMap());
    else
        m_peer->Refuse(QStringLiteral("The message is not a request: %1.")
                           .arg(parsed.error.isEmpty() ? QStringLiteral("it is not a JSON object") : parsed.error));
}

void PageClient::Receive(const QVariantMap& message)
{
    if (m_socket.Unread() > kMostUnread)
    {
        Drop(kTryAgainLater, "The client does not read.");
        return;
    }
    QByteArray text = Json::Write(message);
    if (text.isEmpty())
        text = Json::Write(
            QVariantMap{{Id(), message.value(Id())},
                        {QStringLiteral("ok"), false},
                        {QStringLiteral("error"), QStringLiteral("The answer is too long; ask for less.")}});
    m_socket.Send(text);
}

void PageClient::Drop(int code, const char* reason)
{
    m_deadline.stop();
    if (m_peer)
        m_peer->Close();
    m_socket.Close(code, reason);
}
