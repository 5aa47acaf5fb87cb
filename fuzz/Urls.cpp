// The URLs that a page sends for the lists of websites, and the ASCII form of their hosts.

#include "fuzz/PunycodeDecoder.h"
#include "fuzz/Target.h"
#include "platform/Text.h"
#include "util/Punycode.h"
#include "util/UrlUtil.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <string>

namespace
{

constexpr std::string_view kPrefix = "xn--";

QString FromUcs4(const std::u32string& text)
{
    return QString::fromUcs4(text.data(), static_cast<int>(text.size()));
}

void RequireDecodable(const std::wstring& text)
{
    const QVector<uint> codes = QString::fromStdWString(text).toUcs4();
    const std::u32string label(codes.begin(), codes.end());
    const auto encoded = EncodePunycode(label);
    Require(!encoded || DecodePunycode(*encoded) == label, "Punycode stands for the text that it was made of");
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

/// A name has one ASCII form: browsers look no other one up.
void RequireCanonicalLabels(std::string_view url)
{
    for (auto at = url.find(kPrefix); at != std::string_view::npos; at = url.find(kPrefix, at + 1))
    {
        if (at > 0 && std::string_view("./@").find(url[at - 1]) == std::string_view::npos)
            continue; // inside a label
        const auto begin = at + kPrefix.size();
        const auto label = DecodePunycode(url.substr(begin, url.find_first_of("./\\?#:", begin) - begin));
        Require(label.has_value(), "a label that was made is Punycode");
        const QString text = FromUcs4(*label);
        Require(text.toLower().normalized(QString::NormalizationForm_KC) == text,
                "a label is in lower case and in its compatibility form");
    }
}

const Target g_target("urls", [](std::string_view input) {
    const std::wstring url = Platform::FromUtf8(input);
    const std::string before = Platform::ToUtf8(url);
    const std::string result = UrlUtil::GetPunycodeUrl(url);
    Require(UrlUtil::GetPunycodeUrl(Platform::FromUtf8(result)) == result, "an ASCII host stays as it is");
    const Difference change(before, result);
    RequireOnlyTheHostChanged(before, change);
    if (before.find(kPrefix) == std::string::npos)
        RequireCanonicalLabels(result);
    RequireDecodable(url);
});

} // namespace
