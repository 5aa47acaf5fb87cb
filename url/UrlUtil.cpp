#include "url/UrlUtil.h"

#include "logging/FunctionLog.h"
#include "text/Utf.h"
#include "url/Idna.h"

#include <algorithm>
#include <string_view>

namespace UrlUtil
{

namespace
{

constexpr FunctionLog kLog(L"UrlUtil::GetPunycodeUrl");

struct Range
{
    std::size_t begin;
    std::size_t end;
};

Range HostOf(std::wstring_view url)
{
    constexpr const wchar_t* kEnds = L"/\\?#"; // browsers take a backslash for a slash
    const auto scheme = url.find(L"://");
    std::size_t begin = scheme < url.find_first_of(kEnds) ? scheme + 3 : 0; // else it is part of the path or query
    const std::size_t authorityEnd = std::min(url.find_first_of(kEnds, begin), url.size());
    const auto userInfo = url.substr(0, authorityEnd).rfind(L'@');
    if (userInfo != std::wstring_view::npos && userInfo >= begin)
        begin = userInfo + 1;
    if (url.substr(begin, 1) == L"[") // an IPv6 address, which has nothing to convert
        return {begin, begin};
    return {begin, std::min(url.find(L':', begin), authorityEnd)};
}

bool IsAscii(std::wstring_view text)
{
    return std::all_of(
        text.begin(), text.end(), [](wchar_t character) { return static_cast<char32_t>(character) < 0x80; });
}

/// Whether the text is made of characters, and not of surrogates out of place.
bool IsWellFormed(const std::wstring& text)
{
    return Text::FromUtf8(Text::ToUtf8(text)) == text;
}

} // namespace

std::string GetPunycodeUrl(const std::wstring& url)
{
    const Range host = HostOf(url);
    const std::wstring_view text = url;
    const std::wstring_view hostString = text.substr(host.begin, host.end - host.begin);
    if (IsAscii(hostString))
        return Text::ToUtf8(url);
    if (!IsWellFormed(url))
    {
        LOG(kLog, 2, L"%s: Conversion from unicode to wide string failed");
        return Text::ToUtf8(url);
    }
    const auto ascii = HostToAscii(hostString);
    if (!ascii)
    {
        LOG(kLog, 2, L"%s: Punycode encoding failed");
        return Text::ToUtf8(url);
    }
    return Text::ToUtf8(text.substr(0, host.begin)) + *ascii + Text::ToUtf8(text.substr(host.end));
}

} // namespace UrlUtil
