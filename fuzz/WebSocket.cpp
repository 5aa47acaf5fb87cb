// What a client sends to the page's server: bytes to messages.

#include "devkit/page/WebSocketReader.h"
#include "fuzz/Target.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

constexpr int kLongest = 512;

struct Conversation
{
    std::vector<std::pair<int, QByteArray>> messages;
    int error;
};

Conversation Read(const QByteArray& bytes, int pieceSize)
{
    WebSocketReader reader(kLongest);
    Conversation result;
    for (int at = 0; at < bytes.size(); at += pieceSize)
    {
        reader.Feed(bytes.mid(at, pieceSize));
        while (auto message = reader.Take())
        {
            Require(message->payload.size() <= kLongest, "no message is too long");
            result.messages.emplace_back(message->opcode, message->payload);
        }
    }
    result.error = reader.Error();
    return result;
}

const Target g_target("web_socket", [](std::string_view input) {
    const QByteArray bytes(input.data(), static_cast<int>(input.size()));
    const Conversation whole = Read(bytes, std::max(bytes.size(), 1));
    const Conversation pieces = Read(bytes, 1);
    Require(whole.messages == pieces.messages && whole.error == pieces.error,
            "messages do not depend on the pieces in which they come");
});

} // namespace
