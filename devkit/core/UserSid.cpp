#include "devkit/core/UserSid.h"

#include "platform/Sessions.h"
#include "text/SidString.h"

QString UserSid()
{
    std::vector<std::uint8_t> sid;
    const bool known = Platform::Get<Platform::Sessions>().ProcessUser(sid) == 0;
    return known ? QString::fromStdWString(Text::SidString(sid)) : QString();
}
