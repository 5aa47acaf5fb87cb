#include "devkit/page/PageServer.h"

#include "devkit/page/Admission.h"
#include "devkit/process/Processes.h"

#include <QFile>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace
{

constexpr int kMostArriving = 64;
constexpr std::size_t kMostClients = 32;
constexpr int kArrivalMs = 10'000;

QByteArray ReadResource(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray Page()
{
    return ReadResource(QStringLiteral(":/page/page.html"));
}

/// Only the page's own script and style, by their hashes, and only connections to the server it came from.
QByteArray Policy(const QByteArray& host)
{
    return "default-src 'none'; " + ReadResource(QStringLiteral(":/page/policy.txt")) + "; connect-src ws://" + host +
           "; img-src data:; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";
}

void Respond(QTcpSocket* socket, const QByteArray& status, const QByteArray& headers, const QByteArray& body)
{
    socket->readAll();
    socket->write("HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
                  "\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\nX-Frame-Options: DENY\r\n"
                  "Referrer-Policy: no-referrer\r\nCross-Origin-Opener-Policy: same-origin\r\n"
                  "Cross-Origin-Resource-Policy: same-origin\r\nConnection: close\r\n\r\n" +
                  body);
    socket->disconnectFromHost();
}

void Refuse(QTcpSocket* socket, const QByteArray& status)
{
    Respond(socket, status, "Content-Type: text/plain; charset=utf-8\r\n", status.mid(4) + '\n');
}

} // namespace

PageServer::PageServer(PagePeer::Open open) : m_open(std::move(open))
{
    connect(
        &m_ipv4, &QTcpServer::newConnection, this, [this] { TakeFrom(m_ipv4); });
    connect(&m_ipv6, &QTcpServer::newConnection, this, [this] { TakeFrom(m_ipv6); });
}

PageServer::~PageServer() = default;

QString PageServer::Listen()
{
    Q_INIT_RESOURCE(page);
    if (Page().isEmpty())
        return QStringLiteral(
            "The page is not part of this build: it needs Node.js and npm's registry. Everything else "
            "works without it.");
    if (!m_ipv4.listen(QHostAddress::LocalHost))
        return QStringLiteral("The page is not served: %1.").arg(m_ipv4.errorString());
    m_token = Admission::NewToken();
    m_ipv6.listen(QHostAddress::LocalHostIPv6, m_ipv4.serverPort()); // a convenience: the address names IPv4
    return {};
}

void PageServer::Share(qintptr socket, const QByteArray& token)
{
    Q_INIT_RESOURCE(page);
    m_token = token;
    m_shared = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
    m_shared->setEnabled(false);
    connect(m_shared.get(), &QSocketNotifier::activated, this, &PageServer::AcceptWaiting);
}

void PageServer::AcceptWaiting()
{
    for (qintptr next = AcceptConnection(m_shared->socket()); next != -1; next = AcceptConnection(m_shared->socket()))
    {
        auto* const socket = new QTcpSocket(this);
        socket->setSocketDescriptor(next);
        Take(socket);
    }
}

void PageServer::Accept()
{
    m_shared->setEnabled(true);
}

void PageServer::DropClients()
{
    m_clients.clear();
    m_onClients();
}

QString PageServer::Address() const
{
    return QStringLiteral("http://127.0.0.1:%1/#%2").arg(m_ipv4.serverPort()).arg(QString::fromLatin1(m_token));
}

void PageServer::TakeFrom(QTcpServer& server)
{
    while (QTcpSocket* socket = server.nextPendingConnection())
        Take(socket);
}

void PageServer::Take(QTcpSocket* socket)
{
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    if (m_arriving == kMostArriving)
    {
        socket->abort();
        return;
    }
    ++m_arriving;
    auto* const deadline = new QTimer(socket);
    connect(
        deadline, &QObject::destroyed, this, [this] { --m_arriving; });
    connect(deadline, &QTimer::timeout, socket, [socket] { socket->abort(); });
    deadline->start(kArrivalMs);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { OnReceived(socket); });
}

void PageServer::OnReceived(QTcpSocket* socket)
{
    // Only looked at: a WebSocket's handshake reads the request for itself.
    const QByteArray received = socket->peek(HttpRequest::kLongestHead);
    const int length = HttpRequest::LengthOfHead(received);
    if (length == 0 && received.size() < HttpRequest::kLongestHead)
        return;
    disconnect(socket, &QTcpSocket::readyRead, this, nullptr);
    delete socket->findChild<QTimer*>();
    const auto request = length == 0 ? std::nullopt : HttpRequest::Parse(received.left(length));
    if (length == 0)
        Refuse(socket, "431 Request Header Fields Too Large");
    else if (!request)
        Refuse(socket, "400 Bad Request");
    else
        Answer(socket, *request);
}

void PageServer::Answer(QTcpSocket* socket, const HttpRequest& request)
{
    const bool wantsSocket = request.path == "/socket" && request.IsWebSocket();
    if (!Admission::IsOwnHost(request, socket->localPort()) || !Admission::IsOwnOrigin(request))
        Refuse(socket, "403 Forbidden");
    else if (request.method != "GET")
        Refuse(socket, "405 Method Not Allowed");
    else if (wantsSocket && m_clients.size() == kMostClients)
        Refuse(socket, "503 Service Unavailable");
    else if (wantsSocket)
        Admit(socket);
    else if (request.path == "/")
        Respond(socket, "200 OK",
                "Content-Type: text/html; charset=utf-8\r\nContent-Security-Policy: " + Policy(request.Header("host")) +
                    "\r\n",
                Page());
    else
        Refuse(socket, "404 Not Found");
}

void PageServer::Admit(QTcpSocket* socket)
{
    auto client = std::make_unique<PageClient>(socket, m_token, m_open);
    // Not within the call of the client that has ended.
    connect(
        socket, &QTcpSocket::disconnected, this,
        [this, ended = client.get()] {
            m_clients.erase(std::remove_if(m_clients.begin(), m_clients.end(),
                                           [ended](const auto& known) { return known.get() == ended; }),
                            m_clients.end());
            m_onClients();
        },
        Qt::QueuedConnection);
    m_clients.push_back(std::move(client));
    m_onClients();
}
