#include "util/UrlUtil.h"

#include "logging/FunctionLog.h"
#include "platform/Text.h"
#include "util/Punycode.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <optional>
#include <string_view>

namespace UrlUtil
{

namespace
{

constexpr FunctionLog g_log(L"UrlUtil::GetPunycodeUrl");

constexpr std::size_t LongestLabel = 63; // RFC 1035
constexpr std::string_view Prefix = "xn--";
constexpr std::wstring_view Dots = L".\x3002\xFF0E\xFF61"; // all separate labels, RFC 3490

struct Range
{
    std::size_t begin;
    std::size_t end;
};

Range HostOf(std::wstring_view url)
{
    constexpr const wchar_t* Ends = L"/\\?#"; // browsers take a backslash for a slash
    const auto scheme = url.find(L"://");
    std::size_t begin = scheme < url.find_first_of(Ends) ? scheme + 3 : 0; // else it is part of the path or query
    const std::size_t authorityEnd = std::min(url.find_first_of(Ends, begin), url.size());
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

bool IsAsciiAllowedInName(char32_t code)
{
    return code == U'-' || code == U'_' || (code >= U'0' && code <= U'9') || (code >= U'a' && code <= U'z');
}

/// A compatibility form may be in upper case, and its lower case may have a compatibility form.
QString LowerCompatibilityForm(QString label)
{
    for (int pass = 0; pass < 2; ++pass)
        label = label.toLower().normalized(QString::NormalizationForm_KC);
    return label;
}

/// Nothing: the label has no ASCII form.
std::optional<std::string> ToAscii(std::wstring_view label)
{
    if (IsAscii(label))
        return std::string(label.begin(), label.end());
    if (label.size() > LongestLabel)
        return std::nullopt;
    const QVector<uint> codes =
        LowerCompatibilityForm(QString::fromWCharArray(label.data(), static_cast<int>(label.size()))).toUcs4();
    const std::u32string text(codes.begin(), codes.end());
    // The compatibility form of a character may hold what ends a host or makes it another one.
    const bool isName =
        std::all_of(text.begin(), text.end(), [](char32_t code) { return code >= 0x80 || IsAsciiAllowedInName(code); });
    if (!isName || text.compare(0, Prefix.size(), U"xn--") == 0)
        return std::nullopt;
    if (std::all_of(text.begin(), text.end(), [](char32_t code) { return code < 0x80; }))
        return std::string(text.begin(), text.end());
    const auto encoded = EncodePunycode(text);
    if (!encoded || Prefix.size() + encoded->size() > LongestLabel)
        return std::nullopt;
    return std::string(Prefix) + *encoded;
}

std::optional<std::string> HostToAscii(std::wstring_view host)
{
    std::string result;
    for (std::size_t begin = 0;;)
    {
        const std::size_t end = std::min(host.find_first_of(Dots, begin), host.size());
        const auto label = ToAscii(host.substr(begin, end - begin));
        if (!label)
            return std::nullopt;
        result += *label;
        if (end == host.size())
            return result;
        result += '.';
        begin = end + 1;
    }
}

/// Whether the text is made of characters, and not of surrogates out of place.
bool IsWellFormed(const std::wstring& text)
{
    return Platform::FromUtf8(Platform::ToUtf8(text)) == text;
}

} // namespace

std::string GetPunycodeUrl(const std::wstring& url)
{
    const Range host = HostOf(url);
    const std::wstring_view text = url;
    const std::wstring_view hostText = text.substr(host.begin, host.end - host.begin);
    if (IsAscii(hostText))
        return Platform::ToUtf8(url);
    if (!IsWellFormed(url))
    {
        LOG(g_log, 2, L"%s: Conversion from unicode to wide string failed");
        return Platform::ToUtf8(url);
    }
    const auto ascii = HostToAscii(hostText);
    if (!ascii)
    {
        LOG(g_log, 2, L"%s: Punycode encoding failed");
        return Platform::ToUtf8(url);
    }
    return Platform::ToUtf8(text.substr(0, host.begin)) + *ascii + Platform::ToUtf8(text.substr(host.end));
}

} // namespace UrlUtil
