#pragma once

#include <QByteArray>

#include <optional>

/// What a client sends over a WebSocket (RFC 6455, without extensions): bytes to messages. Nothing that follows an
/// error is looked at, and no more than the longest message and what came in one piece is kept.
class WebSocketReader
{
public:
    enum Opcode
    {
        Continuation = 0,
        Text = 1,
        Binary = 2,
        Close = 8,
        Ping = 9,
        Pong = 10
    };

    struct Message
    {
        int opcode; // Text or one of the control frames
        QByteArray payload;
    };

    explicit WebSocketReader(int longest) : m_longest(longest) {}

    /// In bytes; longer messages are an error.
    void SetLongest(int bytes) { m_longest = bytes; }
    void Feed(const QByteArray& bytes);
    /// Nothing where the next message is not complete, or after an error.
    std::optional<Message> Take();
    /// The close code that tells what was wrong; 0 while nothing is.
    int Error() const { return m_error; }

private:
    std::optional<QByteArray> TakeFrame();
    int Check() const;

    int m_longest;
    int m_error = 0;
    QByteArray m_received;
    int m_at = 0; // what stands before was taken
    // The frame that comes next, or was taken last.
    int m_opcode = 0;
    bool m_isLast = false;
    quint64 m_length = 0;
    std::optional<QByteArray> m_text; // of a message whose last frame has not come
};
