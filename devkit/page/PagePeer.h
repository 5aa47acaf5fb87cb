#pragma once

#include <QByteArray>
#include <QVariantMap>

#include <functional>
#include <memory>

class Client;

/// What a client of the page speaks to, from its admission to its end. UI thread.
class PagePeer
{
public:
    /// Made for each client that is admitted.
    using Open = std::function<std::unique_ptr<PagePeer>(Client& client)>;

    PagePeer() = default;
    virtual ~PagePeer() = default;
    PagePeer(const PagePeer&) = delete;
    PagePeer& operator=(const PagePeer&) = delete;

    /// What it is: the answer to the client's first message.
    virtual QVariantMap Greeting() const = 0;
    /// Takes a message of the client; what is no request is answered so.
    virtual void Submit(const QByteArray& text) = 0;
    /// The client receives nothing more. May come while Submit() runs, and twice.
    virtual void Close() = 0;
    /// Requests without an answer so far.
    virtual std::size_t Waiting() const = 0;
};
