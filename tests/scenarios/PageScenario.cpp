#include "tests/scenarios/HostProcess.h"

#include <gmock/gmock.h>

#include <QTcpSocket>
#include <QUrl>

#include <string>

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

constexpr int kPatienceMs = 20'000;

/// A connection to the page's server: bytes as they are, as no browser sends them.
class PageConnection
{
public:
    explicit PageConnection(const QUrl& page) : m_page(page)
    {
        m_socket.connectToHost(page.host(), static_cast<quint16>(page.port()));
        EXPECT_TRUE(m_socket.waitForConnected(kPatienceMs)) << qPrintable(m_socket.errorString());
    }

    void Get(const char* path, const char* headers = "")
    {
        m_socket.write(QByteArray("GET ") + path + " HTTP/1.1\r\nHost: " + m_page.authority().toUtf8() + "\r\n" +
                       headers + "\r\n");
    }

    void OpenWebSocket()
    {
        Get("/socket", "Upgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
                       "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n");
        std::string head;
        for (std::string next = " "; !next.empty() && head.find("\r\n\r\n") == std::string::npos; head += next)
            next = Read(1);
        EXPECT_THAT(head, AllOf(StartsWith("HTTP/1.1 101 "), HasSubstr(": s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r\n")));
    }

    /// A frame with a mask of zeros, which leaves its text as it is.
    void SendFrame(int first, const QByteArray& text)
    {
        const char head[] = {static_cast<char>(first), static_cast<char>(0x80 | text.size()), 0, 0, 0, 0};
        m_socket.write(QByteArray(head, sizeof head) + text);
    }

    /// So many bytes, or what comes before the connection ends.
    std::string Read(int size)
    {
        while (m_socket.bytesAvailable() < size && m_socket.waitForReadyRead(kPatienceMs))
            continue;
        return m_socket.read(size).toStdString();
    }
    /// A frame of a short text.
    std::string ReadString()
    {
        const std::string head = Read(2);
        return head.empty() ? head : Read(head.back());
    }
    std::string ReadAll() { return Read(1 << 24); }

private:
    const QUrl m_page;
    QTcpSocket m_socket;
};

/// A host that serves its page, where that could be built.
class PageScenario : public testing::Test
{
protected:
    void SetUp() override
    {
        if (m_page.isEmpty())
            GTEST_SKIP() << "The page is not built";
    }

    HostProcess m_host{{{}, {"--page"}}};
    const QUrl m_page{m_host.Hello()["page"].toString()};
};

QByteArray Greeting(const QString& token)
{
    return R"({"id":1,"op":"hello","token":")" + token.toUtf8() + "\"}";
}

std::string Closed(int code, const std::string& reason = {})
{
    return std::string{'\x88', static_cast<char>(2 + reason.size()), static_cast<char>(code >> 8),
                       static_cast<char>(code & 0xFF)} +
           reason;
}

TEST_F(PageScenario, ThePageAndItsCommandsAreServedToWhoKnowsTheToken)
{
    PageConnection reader(m_page);
    reader.Get("/");
    EXPECT_THAT(reader.ReadAll(), AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("<title>Veridan</title>")));

    PageConnection client(m_page);
    client.OpenWebSocket();
    const QByteArray hello = Greeting(m_page.fragment());
    client.SendFrame(0x01, hello.left(9)); // in three frames, with a ping between them
    client.SendFrame(0x89, "ping");
    client.SendFrame(0x00, hello.mid(9, 9));
    client.SendFrame(0x80, hello.mid(18));
    EXPECT_EQ(client.Read(6), "\x8A\x04ping");
    EXPECT_THAT(client.ReadString(), AllOf(HasSubstr(R"({"id":1,"ok":true)"), HasSubstr(R"("protocol":1)")));
    client.SendFrame(0x81, R"({"id":2,"op":"urls"})");
    EXPECT_EQ(client.ReadString(), R"({"id":2,"ok":true,"result":[]})");
    client.SendFrame(0x88, {"\x03\xE9", 2});
    EXPECT_EQ(client.ReadAll(), Closed(1001));
}

TEST_F(PageScenario, AFirstMessageThatIsNotTheTokenEndsTheConnection)
{
    for (const QByteArray& first : {Greeting("stale"), QByteArray("[]"), QByteArray(R"({"id":1,"op":"info"})")})
    {
        PageConnection client(m_page);
        client.OpenWebSocket();
        client.SendFrame(0x81, first);
        EXPECT_EQ(client.ReadAll(), Closed(1008, "The token is not this start's.")) << first.constData();
    }
}

} // namespace
