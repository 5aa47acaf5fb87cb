#include "url/Idna.h"

#include "url/IdnaTable.h"
#include "url/LabelRules.h"
#include "url/Punycode.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace
{

constexpr std::size_t kLongestLabel = 63; // RFC 1035
constexpr std::size_t kMostInOne = 4;     // no character is composed of more
constexpr std::string_view kPrefix = "xn--";
constexpr std::u32string_view kWidePrefix = U"xn--";
constexpr std::wstring_view kDots = L".\x3002\xFF0E\xFF61"; // all are mapped to the first

template <typename Text>
bool IsAscii(const Text& text)
{
    return std::all_of(
        text.begin(), text.end(), [](auto unit) { return static_cast<char32_t>(unit) < 0x80; });
}

/// What would end a host or make it another one; a character's mapping may hold it.
bool IsForbidden(char character)
{
    constexpr std::string_view kDelimiters = "#%/:<>?@[\\]^|";
    return character <= ' ' || character == 0x7F || kDelimiters.find(character) != std::string_view::npos;
}

/// Composed by Qt 5.15, which knows Unicode 13. The 50 marks with a combining class that came with Unicode 14 and 15,
/// none of which is part of a composed character, therefore stay where they were written among other marks.
std::u32string Composed(const std::u16string& text)
{
    const QVector<uint> codes = QString::fromStdU16String(text).normalized(QString::NormalizationForm_C).toUcs4();
    return {codes.begin(), codes.end()};
}

/// The text that a label stands for. Nothing: the label may not be in a name.
std::optional<std::u32string> Read(std::wstring_view label)
{
    std::u16string mapped;
    for (const uint code : QString::fromWCharArray(label.data(), static_cast<int>(label.size())).toUcs4())
        if (!IdnaTable::AppendMapped(code, mapped) || mapped.size() > 2 * kMostInOne * kLongestLabel)
            return std::nullopt;
    const std::u32string text = Composed(mapped);
    if (!LabelRules::IsValid(text) || text.compare(0, kWidePrefix.size(), kWidePrefix) == 0)
        return std::nullopt;
    return text;
}

/// Nothing: it would be too long.
std::optional<std::string> Encode(const std::u32string& text)
{
    if (text.size() > kLongestLabel)
        return std::nullopt;
    if (IsAscii(text))
        return std::string(text.begin(), text.end());
    const auto encoded = EncodePunycode(text);
    if (!encoded || kPrefix.size() + encoded->size() > kLongestLabel)
        return std::nullopt;
    return std::string(kPrefix) + *encoded;
}

struct Label
{
    std::u32string text;
    std::string ascii;
};

/// Nothing: the label has no ASCII form.
std::optional<Label> Convert(std::wstring_view label)
{
    if (IsAscii(label))
        return Label{{label.begin(), label.end()}, {label.begin(), label.end()}};
    auto text = Read(label);
    auto ascii = text ? Encode(*text) : std::nullopt;
    if (!ascii)
        return std::nullopt;
    return Label{std::move(*text), std::move(*ascii)};
}

} // namespace

std::optional<std::string> HostToAscii(std::wstring_view host)
{
    std::string result;
    bool isRightToLeft = false;
    bool keepsBidiRule = true;
    for (std::size_t begin = 0; begin <= host.size();)
    {
        const std::size_t end = std::min(host.find_first_of(kDots, begin), host.size());
        const auto label = Convert(host.substr(begin, end - begin));
        if (!label)
            return std::nullopt;
        isRightToLeft = isRightToLeft || LabelRules::IsRightToLeft(label->text);
        keepsBidiRule = keepsBidiRule && LabelRules::KeepsBidiRule(label->text);
        result += label->ascii;
        if (end < host.size())
            result += '.';
        begin = end + 1;
    }
    const bool isName = !result.empty() && std::none_of(result.begin(), result.end(), IsForbidden);
    return isName && (keepsBidiRule || !isRightToLeft) ? std::optional(result) : std::nullopt;
}
