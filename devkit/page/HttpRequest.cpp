#include "devkit/page/HttpRequest.h"

#include <QList>

namespace
{

const QByteArray kEndOfHead = QByteArrayLiteral("\r\n\r\n");

} // namespace

int HttpRequest::LengthOfHead(const QByteArray& received)
{
    const int end = received.indexOf(kEndOfHead);
    return end < 0 ? 0 : end + kEndOfHead.size();
}

std::optional<HttpRequest> HttpRequest::Parse(const QByteArray& head)
{
    QList<QByteArray> lines = head.left(head.size() - kEndOfHead.size()).split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    if (words.size() != 3 || words[2] != "HTTP/1.1" || !words[1].startsWith('/'))
        return {};
    HttpRequest request;
    request.method = words[0];
    request.path = words[1].split('?').first();
    for (const QByteArray& line : lines)
    {
        const int colon = line.indexOf(':');
        // A name that ends in a blank, or a line that continues the one before, is how one server misleads another.
        if (colon <= 0 || line[0] == ' ' || line[0] == '\t' || line[colon - 1] == ' ' || line[colon - 1] == '\t')
            return {};
        const QByteArray name = line.left(colon).toLower();
        const bool isFirst = request.m_headers.emplace(name, line.mid(colon + 1).trimmed()).second;
        if (!isFirst && (name == "host" || name == "origin"))
            return {};
    }
    return request;
}

QByteArray HttpRequest::Header(const QByteArray& name) const
{
    const auto found = m_headers.find(name);
    return found == m_headers.end() ? QByteArray() : found->second;
}

bool HttpRequest::IsWebSocket() const
{
    return Header("upgrade").toLower() == "websocket";
}
