#include "devkit/host/UserSid.h"

#include "platform/Sessions.h"

#include <QtEndian>

#include <vector>

QString UserSid()
{
    // revision, count of sub-authorities, authority in 6 bytes big-endian, sub-authorities in 4 bytes little-endian
    constexpr std::size_t Header = 8;
    std::vector<std::uint8_t> sid;
    if (Platform::Get<Platform::Sessions>().ProcessUser(sid) != 0 || sid.size() < Header ||
        sid.size() < Header + 4 * std::size_t{sid[1]})
    {
        return {};
    }
    const quint64 authority = qFromBigEndian<quint64>(sid.data()) & 0xFFFFFFFFFFFF;
    QString text = QStringLiteral("S-%1-%2").arg(sid[0]).arg(authority);
    for (std::size_t i = 0; i < sid[1]; ++i)
    {
        text += QStringLiteral("-%1").arg(qFromLittleEndian<quint32>(sid.data() + Header + 4 * i));
    }
    return text;
}
