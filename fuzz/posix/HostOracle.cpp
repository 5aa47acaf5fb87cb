#include "fuzz/HostOracle.h"

#include "url/Idna.h"
#include "url/IdnaData.h"

#include <unicode/idna.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/uvernum.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace HostOracle
{

namespace
{

constexpr std::size_t kLongestLabel = 63;

void RequireSuccess(UErrorCode error)
{
    if (U_FAILURE(error))
        std::abort();
}

icu::UnicodeString FromWide(const std::wstring& text)
{
    static_assert(sizeof(wchar_t) == sizeof(UChar32));
    return icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(text.data()),
                                         static_cast<std::int32_t>(text.size()));
}

std::string ToUtf8(const icu::UnicodeString& text)
{
    std::string result;
    return text.toUTF8String(result);
}

/// The URL standard's "domain to ASCII", not strict, and its forbidden domain code points. Nothing: refused.
std::optional<std::string> BrowserHost(const icu::UnicodeString& host)
{
    constexpr std::uint32_t kOptions =
        UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ | UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE;
    constexpr std::uint32_t kPassed = UIDNA_ERROR_EMPTY_LABEL | UIDNA_ERROR_LABEL_TOO_LONG |
                                      UIDNA_ERROR_DOMAIN_NAME_TOO_LONG | UIDNA_ERROR_LEADING_HYPHEN |
                                      UIDNA_ERROR_TRAILING_HYPHEN | UIDNA_ERROR_HYPHEN_3_4;
    UErrorCode error = U_ZERO_ERROR;
    static const std::unique_ptr<icu::IDNA> s_idna(icu::IDNA::createUTS46Instance(kOptions, error));
    RequireSuccess(error);
    icu::IDNAInfo info;
    icu::UnicodeString ascii;
    s_idna->nameToASCII(host, ascii, info, error);
    RequireSuccess(error);
    std::string result = ToUtf8(ascii);
    const bool isForbidden = std::any_of(result.begin(), result.end(), [](char character) {
        return character <= ' ' || std::string_view("#%/:<>?@[\\]^|\x7F").find(character) != std::string_view::npos;
    });
    if ((info.getErrors() & ~kPassed) != 0 || isForbidden || result.empty())
        return std::nullopt;
    return result;
}

std::vector<icu::UnicodeString> Labels(const icu::UnicodeString& host)
{
    std::vector<icu::UnicodeString> result(1);
    for (std::int32_t at = 0; at < host.length(); ++at)
        if (icu::UnicodeString(u".\u3002\uFF0E\uFF61").indexOf(host[at]) >= 0)
            result.emplace_back();
        else
            result.back() += host[at];
    return result;
}

bool IsAscii(const icu::UnicodeString& text)
{
    bool result = true;
    for (std::int32_t at = 0; at < text.length(); ++at)
        result = result && text[at] < 0x80;
    return result;
}

bool MapsToPrefix(const icu::UnicodeString& label)
{
    UErrorCode error = U_ZERO_ERROR;
    const auto* const mapping = icu::Normalizer2::getInstance(nullptr, "uts46", UNORM2_COMPOSE, error);
    RequireSuccess(error);
    return mapping->normalize(label, error).startsWith(u"xn--", 4);
}

bool HasLongLabel(std::string_view host)
{
    for (std::size_t begin = 0; begin <= host.size();)
    {
        const std::size_t end = std::min(host.find('.', begin), host.size());
        if (end - begin > kLongestLabel)
            return true;
        begin = end + 1;
    }
    return false;
}

/// Of Unicode 14 or later.
bool HasNewMark(const icu::UnicodeString& host)
{
    for (std::int32_t at = 0; at < host.length(); at = host.moveIndex32(at, 1))
    {
        UVersionInfo age;
        u_charAge(host.char32At(at), age);
        if (age[0] >= 14 && u_getCombiningClass(host.char32At(at)) != 0)
            return true;
    }
    return false;
}

bool IsSame(const std::optional<std::string>& ours, const std::optional<std::string>& theirs)
{
    return ours.has_value() == theirs.has_value() &&
           (!ours || std::equal(
                         ours->begin(), ours->end(), theirs->begin(), theirs->end(),
                         [](char left, char right) {
                             return left == right || (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
                         }));
}

} // namespace

Difference Compare(const std::wstring& host)
{
    const auto text = FromWide(host);
    const auto ours = HostToAscii(host);
    const auto theirs = BrowserHost(text);
    if (IsSame(ours, theirs))
        return Difference::None;
    if (std::string_view(U_UNICODE_VERSION) != IdnaData::kUnicodeVersion)
        return Difference::OtherVersionOfUnicode;
    for (const icu::UnicodeString& label : Labels(text))
        if (MapsToPrefix(label))
            return IsAscii(label) ? Difference::AsciiLabelIsNotRead : Difference::MadePrefixIsRefused;
    if (theirs && HasLongLabel(*theirs))
        return Difference::LongLabelIsRefused;
    return HasNewMark(text) ? Difference::NewMarkIsNotOrdered : Difference::Unexplained;
}

} // namespace HostOracle
