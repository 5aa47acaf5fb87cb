#pragma once

#include <QString>

#include <memory>

class Host;
class PageServer;
struct Options;

/// The page that is served beside the other front ends, where the options ask for it.
class Page
{
public:
    Page(Host& host, const Options& options);
    ~Page();
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    /// Empty when the page is not served.
    const QString& Address() const { return m_address; }
    /// Why it is not served, or not opened, although it was asked for; else empty.
    const QString& Problem() const { return m_problem; }

private:
    std::unique_ptr<PageServer> m_server;
    QString m_address;
    QString m_problem;
};
