#include "devkit/page/WebSocket.h"

#include <websocketpp/concurrency/none.hpp>
#include <websocketpp/config/core.hpp>
#include <websocketpp/logger/stub.hpp>
#include <websocketpp/server.hpp>

#include <utility>

namespace
{

constexpr int kGoodbyeMs = 2'000;

/// The library as one thread uses it that brings the bytes itself. The names are those under which it looks.
struct Config : websocketpp::config::core
{
    using type = Config;
    using concurrency_type = websocketpp::concurrency::none;
    using alog_type = websocketpp::log::stub;
    using elog_type = websocketpp::log::stub;

    struct transport_config : core::transport_config
    {
        using concurrency_type = Config::concurrency_type;
        using alog_type = Config::alog_type;
        using elog_type = Config::elog_type;
    };
    using transport_type = websocketpp::transport::iostream::endpoint<transport_config>;
};

using Server = websocketpp::server<Config>;

Server& TheServer()
{
    static Server s_server;
    s_server.set_user_agent({});
    return s_server;
}

} // namespace

class WebSocket::Protocol
{
public:
    explicit Protocol(WebSocket& owner) : connection(TheServer().get_connection())
    {
        connection->set_write_handler([&owner](const auto&, const char* bytes, std::size_t size) {
            owner.m_connection->write(bytes, static_cast<qint64>(size));
            return websocketpp::lib::error_code();
        });
        connection->set_shutdown_handler([&owner](const auto&) {
            owner.m_connection->disconnectFromHost();
            return websocketpp::lib::error_code();
        });
        connection->set_message_handler([&owner](const auto&, const Server::message_ptr& message) {
            owner.OnMessage(QByteArray::fromStdString(message->get_payload()),
                            message->get_opcode() == websocketpp::frame::opcode::text);
        });
        connection->start();
    }

    /// It keeps itself as long as it waits for bytes.
    ~Protocol() { connection->eof(); }
    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    const Server::connection_ptr connection;
};

WebSocket::WebSocket(QTcpSocket* connection, OnText onText)
    : m_connection(connection), m_onText(std::move(onText)), m_protocol(std::make_unique<Protocol>(*this))
{
    connection->setParent(nullptr);
    connection->disconnect(); // from those who had it before
    connect(connection, &QTcpSocket::readyRead, this, &WebSocket::OnReceived);
    m_goodbye.setSingleShot(true);
    connect(&m_goodbye, &QTimer::timeout, connection, &QTcpSocket::abort);
    OnReceived();
}

WebSocket::~WebSocket()
{
    m_connection->disconnect();
}

void WebSocket::SetLongestText(std::size_t bytes)
{
    m_protocol->connection->set_max_message_size(bytes);
}

void WebSocket::Send(const QByteArray& text)
{
    // Of a connection that ends meanwhile nobody waits for it.
    m_protocol->connection->send(text.constData(), static_cast<std::size_t>(text.size()),
                                 websocketpp::frame::opcode::text);
}

void WebSocket::Close(int code, const char* reason)
{
    m_isClosed = true;
    m_goodbye.start(kGoodbyeMs);
    websocketpp::lib::error_code ignored; // it ends already
    m_protocol->connection->close(static_cast<websocketpp::close::status::value>(code), reason, ignored);
}

void WebSocket::OnReceived()
{
    const QByteArray received = m_connection->readAll();
    m_protocol->connection->read_all(received.constData(), static_cast<std::size_t>(received.size()));
}

void WebSocket::OnMessage(const QByteArray& message, bool isText)
{
    const auto tell = [this, message] {
        if (!m_isClosed)
            m_onText(message);
    };
    if (isText)
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    else
        Close(websocketpp::close::status::unsupported_data, "Messages are text.");
}
