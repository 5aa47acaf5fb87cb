#pragma once

#include <QProcess>
#include <QString>
#include <QTimer>

#include <memory>

class Host;
class PageServer;
struct Options;

/// The page that is served beside the other front ends, where the options ask for it, and its watchdog.
class Page
{
public:
    /// The option with which the program becomes the watchdog of a host's page, and the one with which a host goes on
    /// in the stead of another.
    static constexpr const char* kWatchdogOption = "--watchdog";
    static constexpr const char* kGoOnOption = "--go-on";
    static int RunWatchdog();

    Page(Host& host, const Options& options);
    ~Page();
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    /// Empty when the page is not served.
    const QString& Address() const { return m_address; }
    /// Why it is not served, or not opened, although it was asked for; else empty.
    const QString& Problem() const { return m_problem; }

private:
    void StartWatchdog(Host& host, const Options& options);
    void Beat();

    std::unique_ptr<PageServer> m_server;
    QProcess m_watchdog;
    QTimer m_beat;
    QString m_address;
    QString m_problem;
};
