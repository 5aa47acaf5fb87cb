#include "devkit/strata/Environment.h"

#include "platform/KnownFolders.h"
#include "platform/Path.h"
#include "platform/Sessions.h"
#include "platform/Text.h"

#include <cstdint>
#include <vector>

namespace Strata
{

namespace
{

/// A SID's text: revision, authority (six bytes, big-endian), and sub-authorities (four bytes each, little-endian).
std::string TextOfSid(const std::vector<uint8_t>& sid)
{
    constexpr std::size_t HeaderSize = 8;
    constexpr std::size_t SubAuthoritySize = 4;
    uint64_t authority = 0;
    for (std::size_t i = 2; i < HeaderSize; ++i)
    {
        authority = authority << 8 | sid[i];
    }
    std::string text = "S-" + std::to_string(sid[0]) + "-" + std::to_string(authority);
    for (std::size_t at = HeaderSize; at + SubAuthoritySize <= sid.size(); at += SubAuthoritySize)
    {
        const uint32_t low = sid[at] | static_cast<uint32_t>(sid[at + 1]) << 8;
        const uint32_t high = sid[at + 2] | static_cast<uint32_t>(sid[at + 3]) << 8;
        text += "-" + std::to_string(high << 16 | low);
    }
    return text;
}

} // namespace

std::string UserSid()
{
    constexpr std::size_t Shortest = 8;
    std::vector<uint8_t> sid;
    const bool known = Platform::System<Platform::Sessions>().ProcessUser(sid) == 0 && sid.size() >= Shortest;
    return known ? TextOfSid(sid) : std::string();
}

std::string DefaultStoreFile()
{
    std::wstring file = Platform::ExpandEnvironment(L"%ORB_STRATA_STORE%");
    if (file.empty())
    {
        file = Platform::CommonAppData();
        for (const wchar_t* const name : {L"Norlane", L"Strata", L"store.db"})
        {
            file = Platform::JoinPath(file, name);
        }
    }
    return Platform::ToUtf8(file);
}

} // namespace Strata
