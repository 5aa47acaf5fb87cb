#pragma once

#include "devkit/page/HttpRequest.h"

#include <QElapsedTimer>

/// Who may speak to the page's server. A page on the loopback interface is still a server that every website which the
/// user visits can try to reach: what tells its own page from theirs is checked by value.
namespace Admission
{

/// The names under which the page is reached: 127.0.0.1, [::1] or localhost with the port. It keeps out a foreign name
/// that was made to lead here.
bool IsOwnHost(const HttpRequest& request, quint16 port);
/// A page that has the same origin, or a program that is no browser and sends none.
bool IsOwnOrigin(const HttpRequest& request);

/// 256 random bits of the operating system, in letters that an address can hold.
QByteArray NewToken();
/// Takes as long wherever they differ.
bool IsSameToken(const QByteArray& one, const QByteArray& other);

/// How many requests a client may send: a burst, and on average so many a second.
class Rate
{
public:
    Rate();
    /// False: it was one too many.
    bool Take();

private:
    QElapsedTimer m_clock;
    double m_left;
};

} // namespace Admission
