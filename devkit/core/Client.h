#pragma once

#include <QVariantMap>

/// A front end's side of a session: a terminal, a stream of lines, a page.
class Client
{
public:
    Client() = default;
    virtual ~Client() = default;
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// Takes an answer or an event, in their order, on the UI thread; also from inside Session::Submit().
    virtual void Receive(const QVariantMap& message) = 0;

protected:
    /// The message as it goes over a wire; in place of an answer that is too long, a refusal.
    static QByteArray StringOf(const QVariantMap& message);
};
