#pragma once

#include "devkit/core/InputReader.h"
#include "devkit/page/PageServer.h"

#include <QProcess>
#include <QTimer>
#include <QVariantMap>

/// A process beside a host with a page: when the host hangs or dies while its page is open, the watchdog answers the
/// page in its stead, at the same port and by the same token, and starts the host again when a page asks for it. The
/// host itself stays what it was started as: the terminal, its signals and its exit code are its own.
///
/// What passes between them goes through pipes that nobody else reads. The watchdog's standard input begins with a line
/// of orders, a JSON object; a beat of one byte follows whenever the host's UI thread has run for a second ("+" while a
/// page is open, "-" where none is). Its end is the host's: a host that ends in order ends its watchdog first.
class Watchdog
{
public:
    static constexpr char kOpen = '+';
    static constexpr char kAlone = '-';
    static constexpr int kBeatMs = 1000;

    /// Starts a watchdog, or a host that goes on without a terminal, with the line that it reads first from standard
    /// input. `socket` is the page's. False: it did not start.
    static bool Start(QProcess& process, const QStringList& arguments, qintptr socket, const QVariantMap& line);

    Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    int Run();

private:
    class Peer;

    void OnInput();
    void OnOrders(const QVariantMap& orders);
    void OnBeat(char beat);
    void OnEnd();
    void OnTick();
    void StandIn(const QString& reason);
    void EndHost();
    void StartAgain();

    QVariantMap m_orders;
    QByteArray m_line; // of the orders, until they are complete
    PageServer m_server;
    QTimer m_tick;
    int m_ticks = 0;  // without a beat; without a page, once the host has died
    QString m_reason; // why this answers in the host's stead: "hangs" or "died"; else empty
    bool m_isOpen = false;
    bool m_startsAgain = false;
    InputReader m_input;
};
