#pragma once

#include "devkit/page/HttpRequest.h"
#include "devkit/page/PageClient.h"

#include <QObject>
#include <QTcpServer>

#include <memory>
#include <vector>

class Host;

/// Serves the page on the loopback interface, on one port of the system's choice: its one file over HTTP, and the
/// protocol over WebSockets, to clients that know the token. UI thread only.
class PageServer final : public QObject
{
public:
    /// mayQuit: a page may end the host.
    PageServer(Host& host, bool mayQuit);
    ~PageServer() override;
    Q_DISABLE_COPY_MOVE(PageServer)

    /// What went wrong; empty when the page is served.
    QString Listen();
    /// The page's address with the token of this start, which is nobody's but the user's: it goes into no log.
    QString Address() const;

private:
    void Accept(QTcpServer& server);
    void OnReceived(QTcpSocket* socket);
    void Answer(QTcpSocket* socket, const HttpRequest& request);
    void Admit(QTcpSocket* socket, const HttpRequest& handshake);

    Host& m_host;
    const bool m_mayQuit;
    const QByteArray m_token;
    QTcpServer m_ipv4;
    QTcpServer m_ipv6;
    int m_arriving = 0; // connections whose request has not come yet
    std::vector<std::unique_ptr<PageClient>> m_clients;
};
