#include "devkit/page/PageClient.h"

#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/Session.h"

namespace
{

constexpr int kHelloMs = 10'000;
constexpr int kLongestHello = 1024;
constexpr int kLongestMessage = 16 * 1024 * 1024;
constexpr std::size_t kMostWaiting = 10'000;       // requests without an answer
constexpr qint64 kMostUnread = 32LL * 1024 * 1024; // bytes of earlier messages

constexpr int kPolicyViolation = 1008;
constexpr int kTryAgainLater = 1013;

} // namespace

PageClient::PageClient(Host& host, QTcpSocket* socket, const HttpRequest& handshake, const QByteArray& token,
                       bool mayQuit)
    : m_host(host), m_socket(socket, handshake, kLongestHello, [this](const QByteArray& text) { OnText(text); }),
      m_token(token), m_mayQuit(mayQuit)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this,
            [this] { Drop(kPolicyViolation, "The first message did not come in time."); });
    m_deadline.start(kHelloMs);
}

PageClient::~PageClient()
{
    if (m_session)
        m_session->Close();
}

void PageClient::OnText(const QByteArray& text)
{
    if (!m_rate.Take() || (m_session && m_session->Waiting() > kMostWaiting))
        Drop(kPolicyViolation, "Too many requests.");
    else if (m_session)
        m_session->SubmitText(text);
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
    m_session = Session::Open(m_host, *this, m_mayQuit ? Session::Rights::All : Session::Rights::Page);
    const QString id = QStringLiteral("id");
    Receive({{id, request.value(id)}, {QStringLiteral("ok"), true}, {QStringLiteral("result"), Session::Greeting()}});
}

void PageClient::Receive(const QVariantMap& message)
{
    if (m_socket.Unread() > kMostUnread)
    {
        Drop(kTryAgainLater, "The client does not read.");
        return;
    }
    m_socket.Send(TextOf(message));
}

void PageClient::Drop(int code, const char* reason)
{
    m_deadline.stop();
    if (m_session)
        m_session->Close();
    m_socket.Close(code, reason);
}
