#include "text/SidString.h"

#include <cstddef>

namespace Text
{

namespace
{

constexpr std::size_t kHeaderSize = 8; // revision, number of sub-authorities, authority in six bytes, big-endian
constexpr std::size_t kMaximumSubAuthorities = 15;

/// Four bytes, little-endian.
std::uint32_t SubAuthority(const std::uint8_t* bytes)
{
    return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
}

/// An authority beyond 32 bits stands in hexadecimal, with all its bytes.
std::wstring AuthorityString(std::uint64_t authority)
{
    if (authority <= 0xFFFFFFFF)
        return std::to_wstring(authority);
    std::wstring text = L"0x";
    for (int shift = 44; shift >= 0; shift -= 4)
        text += L"0123456789ABCDEF"[(authority >> shift) & 0xF];
    return text;
}

} // namespace

std::wstring SidString(const std::vector<std::uint8_t>& sid)
{
    if (sid.size() < kHeaderSize || sid[1] > kMaximumSubAuthorities || sid.size() < kHeaderSize + 4u * sid[1])
        return {};
    std::uint64_t authority = 0;
    for (std::size_t i = 2; i < kHeaderSize; ++i)
        authority = authority << 8 | sid[i];
    std::wstring text = L"S-" + std::to_wstring(sid[0]) + L"-" + AuthorityString(authority);
    for (std::size_t i = 0; i < sid[1]; ++i)
        text += L"-" + std::to_wstring(SubAuthority(&sid[kHeaderSize + 4 * i]));
    return text;
}

} // namespace Text
