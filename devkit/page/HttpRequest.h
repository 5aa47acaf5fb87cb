#pragma once

#include <QByteArray>

#include <map>
#include <optional>

/// The head of an HTTP request: what the page's server has to know of it, and no more.
struct HttpRequest
{
    /// Longer heads are refused.
    static constexpr int kLongestHead = 8 * 1024;

    /// The head's length with its empty line; 0 where it is not complete yet.
    static int LengthOfHead(const QByteArray& received);
    /// Nothing for what is no head of HTTP/1.1, or names a header twice that may stand once.
    static std::optional<HttpRequest> Parse(const QByteArray& head);

    /// The header's value, empty where it is not there. The name in lower case.
    QByteArray Header(const QByteArray& name) const;
    bool IsWebSocket() const;

    QByteArray method;
    QByteArray path; // without its query

private:
    std::map<QByteArray, QByteArray> m_headers; // names in lower case
};
