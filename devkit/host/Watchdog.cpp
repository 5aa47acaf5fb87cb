#include "devkit/host/Watchdog.h"

#include "devkit/core/Client.h"
#include "devkit/core/Json.h"
#include "devkit/core/Session.h"
#include "devkit/process/Processes.h"

#include <QCoreApplication>

#include <cstdlib>

namespace
{

constexpr int kMostMissed = 5;        // beats
constexpr int kMostSecondsAlone = 30; // seconds that a page may take to come back

const QString& Hangs()
{
    static const QString s_reason = QStringLiteral("hangs");
    return s_reason;
}

const QString& Died()
{
    static const QString s_reason = QStringLiteral("died");
    return s_reason;
}

} // namespace

/// Tells a page what has become of the host, and takes one request: to start it again.
class Watchdog::Peer final : public PagePeer
{
public:
    Peer(Watchdog& watchdog, Client& client) : m_watchdog(watchdog), m_client(client) {}

    QVariantMap Greeting() const override
    {
        QVariantMap greeting = Session::Greeting();
        greeting.insert(QStringLiteral("stopped"), m_watchdog.m_reason);
        return greeting;
    }

    void Submit(const QByteArray& text) override
    {
        const QVariantMap request = Json::Parse(text).value.toMap();
        const bool restart = request.value(QStringLiteral("op")) == QLatin1String("restart");
        QVariantMap answer{{QStringLiteral("id"), request.value(QStringLiteral("id"))},
                           {QStringLiteral("ok"), restart}};
        if (!restart)
            answer.insert(QStringLiteral("error"), QStringLiteral("The host does not answer."));
        m_client.Receive(answer);
        if (restart)
            m_watchdog.EndHost();
    }

    void Close() override {}
    std::size_t Waiting() const override { return 0; }

private:
    Watchdog& m_watchdog;
    Client& m_client;
};

bool Watchdog::Start(QProcess& process, const QStringList& arguments, qintptr socket, const QVariantMap& line)
{
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    StartApart(process, QCoreApplication::applicationFilePath(), arguments, socket);
    return process.waitForStarted() && process.write(Json::Write(line) + '\n') > 0 && process.waitForBytesWritten();
}

Watchdog::Watchdog()
    : m_server([this](Client& client) { return std::make_unique<Peer>(*this, client); }), m_input([this] { OnInput(); })
{
    LeaveTerminal();
    m_tick.setInterval(kBeatMs);
    QObject::connect(&m_tick, &QTimer::timeout, &m_tick, [this] { OnTick(); });
}

int Watchdog::Run()
{
    return QCoreApplication::exec();
}

void Watchdog::OnInput()
{
    while (const auto piece = m_input.Take())
    {
        if (piece->isEmpty())
            return OnEnd();
        m_line += *piece;
        const int end = m_line.indexOf('\n');
        if (m_orders.isEmpty() && end >= 0)
            OnOrders(Json::Parse(m_line.left(end)).value.toMap());
        if (!m_orders.isEmpty())
        {
            OnBeat(m_line.back());
            m_line.clear();
        }
    }
}

void Watchdog::OnOrders(const QVariantMap& orders)
{
    m_orders = orders;
    m_server.Share(orders.value(QStringLiteral("socket")).value<qintptr>(),
                   orders.value(QStringLiteral("token")).toString().toUtf8());
}

void Watchdog::OnBeat(char beat)
{
    m_isOpen = beat == kOpen;
    m_ticks = 0;
    m_isOpen ? m_tick.start() : m_tick.stop();
    if (!m_reason.isEmpty())
    {
        m_reason.clear();
        m_server.DropClients(); // they come back to the host
    }
}

void Watchdog::OnEnd()
{
    if (m_startsAgain)
        StartAgain();
    else if (m_isOpen)
        StandIn(Died());
    else
        QCoreApplication::quit();
}

/// Counts its own calls and looks at no clock: a machine that slept, or a terminal's job that was stopped together with
/// this process, has not hung.
void Watchdog::OnTick()
{
    ++m_ticks;
    if (m_reason.isEmpty() && m_ticks == kMostMissed)
        StandIn(Hangs());
    else if (!m_reason.isEmpty())
        m_server.AcceptWaiting();
    if (m_server.HasClients())
        m_ticks = 0;
    else if (m_reason == Died() && m_ticks == kMostSecondsAlone)
        QCoreApplication::quit();
}

void Watchdog::StandIn(const QString& reason)
{
    m_reason = reason;
    m_ticks = 0;
    m_tick.start();
    m_server.DropClients(); // they are told anew
    m_server.AcceptWaiting();
}

void Watchdog::EndHost()
{
    m_startsAgain = true;
    if (m_reason == Hangs())
        EndProcess(m_orders.value(QStringLiteral("host")).toLongLong());
    else
        StartAgain();
}

/// The new host has a watchdog of its own. This one goes without asking after it, as a QProcess that is destroyed would
/// end its program.
void Watchdog::StartAgain()
{
    QProcess host;
    Start(host, m_orders.value(QStringLiteral("arguments")).toStringList(), m_server.Socket(), m_orders);
    std::_Exit(EXIT_SUCCESS);
}
