// The URLs that a page sends for the lists of websites, and the ASCII form of their hosts.

#include "fuzz/HostOracle.h"
#include "fuzz/PunycodeDecoder.h"
#include "fuzz/Target.h"
#include "text/Utf.h"
#include "url/Punycode.h"
#include "url/UrlUtil.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <string>

namespace
{

void RequireDecodable(const std::wstring& text)
{
    const QVector<uint> codes = QString::fromStdWString(text).toUcs4();
    const std::u32string label(codes.begin(), codes.end());
    const auto encoded = EncodePunycode(label);
    Require(!encoded || DecodePunycode(*encoded) == label, "Punycode stands for the text that it was made of");
}

/// Any text will do for a host.
void RequireWhatBrowsersLookUp(const std::wstring& host)
{
    const bool isAscii = std::all_of(host.begin(), host.end(), [](wchar_t unit) { return unit < 0x80; });
    Require(isAscii || HostOracle::Compare(host) != HostOracle::Difference::Unexplained,
            "browsers look up the same host, or refuse it too");
}

/// What stands between the longest beginning and the longest end that two texts share.
struct Difference
{
    Difference(std::string_view left, std::string_view right)
    {
        const auto shorter = std::min(left.size(), right.size());
        while (begin < shorter && left[begin] == right[begin])
            ++begin;
        std::size_t end = 0;
        while (end < shorter - begin && left[left.size() - 1 - end] == right[right.size() - 1 - end])
            ++end;
        before = left.substr(begin, left.size() - begin - end);
        after = right.substr(begin, right.size() - begin - end);
    }

    std::size_t begin = 0;
    std::string_view before;
    std::string_view after;
};

void RequireOnlyTheHostChanged(const std::string& url, const Difference& change)
{
    const auto scheme = url.find("://");
    const bool hasScheme = scheme != std::string::npos && url.find_first_of("/\\?#") == scheme + 1;
    const std::size_t authority = hasScheme ? scheme + 3 : 0;
    const auto authorityEnd = url.find_first_of("/\\?#", authority);
    Require(change.begin >= authority, "a scheme stays as it is");
    Require(change.before.empty() || change.begin < authorityEnd, "a path stays as it is");
    Require(change.before.find_first_of("/\\?#@:") == std::string_view::npos, "user and port stay as they are");
    const bool isAscii = std::all_of(change.after.begin(), change.after.end(),
                                     [](char unit) { return static_cast<unsigned char>(unit) < 0x80; });
    Require(isAscii && change.after.find_first_of("/\\?#@:") == std::string_view::npos, "a host becomes an ASCII host");
}

const Target kTarget("urls", [](std::string_view input) {
    const std::wstring url = Text::FromUtf8(input);
    const std::string before = Text::ToUtf8(url);
    const std::string result = UrlUtil::GetPunycodeUrl(url);
    Require(UrlUtil::GetPunycodeUrl(Text::FromUtf8(result)) == result, "an ASCII host stays as it is");
    const Difference change(before, result);
    RequireOnlyTheHostChanged(before, change);
    RequireDecodable(url);
    RequireWhatBrowsersLookUp(url);
});

} // namespace
