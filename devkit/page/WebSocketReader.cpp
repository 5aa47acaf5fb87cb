#include "devkit/page/WebSocketReader.h"

#include <QtEndian>

#include <utility>

namespace
{

constexpr int kProtocolError = 1002;
constexpr int kUnsupportedData = 1003;
constexpr int kMessageTooBig = 1009;

constexpr int kLongestControl = 125;
constexpr int kShortHead = 2;
constexpr int kMaskSize = 4;

} // namespace

void WebSocketReader::Feed(const QByteArray& bytes)
{
    m_received.remove(0, m_at);
    m_at = 0;
    if (m_error == 0)
        m_received += bytes;
}

std::optional<WebSocketReader::Message> WebSocketReader::Take()
{
    while (const auto payload = TakeFrame())
    {
        if (m_opcode >= Close)
            return Message{m_opcode, *payload};
        m_text = m_text.value_or(QByteArray()) + *payload;
        if (m_isLast)
            return Message{Text, *std::exchange(m_text, std::nullopt)};
    }
    return {};
}

std::optional<QByteArray> WebSocketReader::TakeFrame()
{
    const auto* const head = reinterpret_cast<const uchar*>(m_received.constData()) + m_at;
    const int size = m_received.size() - m_at;
    if (m_error != 0 || size < kShortHead)
        return {};
    const bool isPlain = (head[0] & 0x70) == 0 && (head[1] & 0x80) != 0; // no extension, and masked
    m_opcode = head[0] & 0x0F;
    m_isLast = (head[0] & 0x80) != 0;
    m_length = head[1] & 0x7F;
    const int lengthSize = m_length < 126 ? 0 : m_length == 126 ? 2 : 8;
    const int headSize = kShortHead + lengthSize + kMaskSize;
    if (isPlain && size < headSize)
        return {};
    if (isPlain && lengthSize == 2)
        m_length = qFromBigEndian<quint16>(head + kShortHead);
    else if (isPlain && lengthSize != 0)
        m_length = qFromBigEndian<quint64>(head + kShortHead);
    m_error = isPlain ? Check() : kProtocolError;
    if (m_error != 0 || static_cast<quint64>(size - headSize) < m_length)
        return {};

    QByteArray payload = m_received.mid(m_at + headSize, static_cast<int>(m_length));
    for (int i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<char>(payload[i] ^ head[headSize - kMaskSize + i % kMaskSize]);
    m_at += headSize + payload.size();
    return payload;
}

int WebSocketReader::Check() const
{
    if (m_opcode == Binary)
        return kUnsupportedData;
    if (m_opcode == Close || m_opcode == Ping || m_opcode == Pong)
        return m_isLast && m_length <= kLongestControl ? 0 : kProtocolError;
    if (m_opcode != (m_text ? Continuation : Text))
        return kProtocolError;
    const int left = m_longest - (m_text ? m_text->size() : 0);
    return m_length <= static_cast<quint64>(left) ? 0 : kMessageTooBig;
}
