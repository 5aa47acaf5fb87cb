#include "devkit/page/Admission.h"

#include <algorithm>
#include <array>
#include <random>

namespace
{

constexpr double kBurst = 5000;
constexpr double kPerMillisecond = 2;

} // namespace

bool Admission::IsOwnHost(const HttpRequest& request, quint16 port)
{
    const QByteArray suffix = ':' + QByteArray::number(port);
    const QByteArray host = request.Header("host").toLower();
    return host == "127.0.0.1" + suffix || host == "[::1]" + suffix || host == "localhost" + suffix;
}

bool Admission::IsOwnOrigin(const HttpRequest& request)
{
    const QByteArray origin = request.Header("origin");
    return origin.isEmpty() || origin.toLower() == "http://" + request.Header("host").toLower();
}

QByteArray Admission::NewToken()
{
    std::array<quint32, 8> random{};
    std::generate(random.begin(), random.end(), std::random_device());
    return QByteArray(reinterpret_cast<const char*>(random.data()), sizeof random)
        .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

bool Admission::IsSameToken(const QByteArray& one, const QByteArray& other)
{
    int difference = one.size() ^ other.size();
    for (int i = 0; i < std::min(one.size(), other.size()); ++i)
        difference |= one[i] ^ other[i];
    return difference == 0;
}

Admission::Rate::Rate() : m_left(kBurst)
{
    m_clock.start();
}

bool Admission::Rate::Take()
{
    m_left = std::min(kBurst, m_left + static_cast<double>(m_clock.restart()) * kPerMillisecond);
    if (m_left < 1)
        return false;
    m_left -= 1;
    return true;
}
