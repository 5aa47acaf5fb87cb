#include "devkit/strata/Environment.h"

#include "platform/KnownFolders.h"
#include "platform/Path.h"
#include "platform/Sessions.h"
#include "text/SidString.h"
#include "text/Utf.h"

#include <cstdint>
#include <vector>

namespace Strata
{

std::string UserSid()
{
    std::vector<std::uint8_t> sid;
    const bool known = Platform::System<Platform::Sessions>().ProcessUser(sid) == 0;
    return known ? Text::ToUtf8(Text::SidString(sid)) : std::string();
}

std::string DefaultStoreFile()
{
    std::wstring file = Platform::EnvironmentVariable(L"ORB_STRATA_STORE");
    if (file.empty())
    {
        file = Platform::CommonAppData();
        for (const wchar_t* const name : {L"Norlane", L"Strata", L"store.db"})
            file = Platform::JoinPath(file, name);
    }
    return Text::ToUtf8(file);
}

} // namespace Strata
