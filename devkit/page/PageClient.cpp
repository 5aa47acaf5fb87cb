#include "devkit/page/PageClient.h"

#include "devkit/core/Json.h"

#include <utility>

namespace
{

constexpr int kHelloMs = 10'000;
constexpr std::size_t kLongestHello = 1024;
constexpr std::size_t kLongestMessage = 16 * 1024 * 1024;
constexpr std::size_t kMostWaiting = 10'000;       // requests without an answer
constexpr qint64 kMostUnread = 32LL * 1024 * 1024; // bytes of earlier messages

constexpr int kPolicyViolation = 1008;
constexpr int kTryAgainLater = 1013;

} // namespace

PageClient::PageClient(QTcpSocket* connection, const QByteArray& token, PagePeer::Open open)
    : m_token(token), m_open(std::move(open)), m_socket(connection, [this](const QByteArray& text) { OnText(text); })
{
    m_socket.SetLongestText(kLongestHello);
    m_deadline.setSingleShot(true);
    m_deadline.callOnTimeout([this] { Drop(kPolicyViolation, "The first message did not come in time."); });
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
        m_peer->Submit(text);
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
    const QString id = QStringLiteral("id");
    Receive({{id, request.value(id)}, {QStringLiteral("ok"), true}, {QStringLiteral("result"), m_peer->Greeting()}});
}

void PageClient::Receive(const QVariantMap& message)
{
    if (m_socket.IsClosed())
        return;
    if (m_socket.Unread() > kMostUnread)
        Drop(kTryAgainLater, "The client does not read.");
    else
        m_socket.Send(StringOf(message));
}

void PageClient::Drop(int code, const char* reason)
{
    m_deadline.stop();
    if (m_peer)
        m_peer->Close();
    m_socket.Close(code, reason);
}
