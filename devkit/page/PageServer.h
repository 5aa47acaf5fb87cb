#pragma once

#include "devkit/page/HttpRequest.h"
#include "devkit/page/PageClient.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTcpServer>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// Serves the page on the loopback interface, on one port of the system's choice: its one file over HTTP, and the
/// protocol over WebSockets, to clients that know the token. UI thread only.
class PageServer final : public QObject
{
public:
    explicit PageServer(PagePeer::Open open);
    ~PageServer() override;
    Q_DISABLE_COPY_MOVE(PageServer)

    /// Serves at a port and with a token of its own. What went wrong; empty when the page is served.
    QString Listen();
    /// Serves where another process does, with its socket and its token, as soon as it is told to.
    void Share(qintptr socket, const QByteArray& token);
    /// Accepts what waits at a shared socket by now.
    void AcceptWaiting();
    /// From now on accepts at a shared socket by itself. Windows tells only one process of a socket's connections: no
    /// other does so then.
    void Accept();
    void DropClients();

    bool HasClients() const { return !m_clients.empty(); }
    /// Called whenever HasClients() may have become another.
    void SetOnClients(std::function<void()> onClients) { m_onClients = std::move(onClients); }
    qintptr Socket() const { return m_shared ? m_shared->socket() : m_ipv4.socketDescriptor(); }
    QByteArray Token() const { return m_token; }
    /// The page's address with the token of this start, which is nobody's but the user's: it goes into no log.
    QString Address() const;

private:
    void TakeFrom(QTcpServer& server);
    void Take(QTcpSocket* socket);
    void OnReceived(QTcpSocket* socket);
    void Answer(QTcpSocket* socket, const HttpRequest& request);
    void Admit(QTcpSocket* socket);

    const PagePeer::Open m_open;
    QByteArray m_token;
    std::function<void()> m_onClients = [] {};
    QTcpServer m_ipv4;
    QTcpServer m_ipv6;
    std::unique_ptr<QSocketNotifier> m_shared;
    int m_arriving = 0; // connections whose request has not come yet
    std::vector<std::unique_ptr<PageClient>> m_clients;
};
