// Writes url/IdnaData.cpp to standard output: what ICU knows of each character, in ranges.

#include "url/IdnaData.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace
{

using Direction = IdnaCharacter::Direction;
using Joining = IdnaCharacter::Joining;
using Status = IdnaCharacter::Status;

constexpr UChar32 kEnd = 0x110000;
constexpr UChar32 kShortestRun = 4; // shorter runs of one distance are smaller as texts

[[noreturn]] void Fail(const char* what, UChar32 code)
{
    std::fprintf(stderr, "U+%04X: %s\n", static_cast<unsigned>(code), what);
    std::exit(1);
}

Direction DirectionOf(UChar32 code)
{
    switch (u_charDirection(code))
    {
    case U_LEFT_TO_RIGHT:
        return Direction::LeftToRight;
    case U_RIGHT_TO_LEFT:
    case U_RIGHT_TO_LEFT_ARABIC:
        return Direction::RightToLeft;
    case U_ARABIC_NUMBER:
        return Direction::ArabicNumber;
    case U_EUROPEAN_NUMBER:
        return Direction::EuropeanNumber;
    case U_DIR_NON_SPACING_MARK:
        return Direction::NonspacingMark;
    case U_EUROPEAN_NUMBER_SEPARATOR:
    case U_EUROPEAN_NUMBER_TERMINATOR:
    case U_COMMON_NUMBER_SEPARATOR:
    case U_OTHER_NEUTRAL:
    case U_BOUNDARY_NEUTRAL:
        return Direction::Neutral;
    default:
        if (code > ' ')
            Fail("a direction that no name may hold", code);
        return Direction::Neutral; // no host holds it
    }
}

Joining JoiningOf(UChar32 code)
{
    switch (u_getIntPropertyValue(code, UCHAR_JOINING_TYPE))
    {
    case U_JT_LEFT_JOINING:
        return Joining::Left;
    case U_JT_RIGHT_JOINING:
        return Joining::Right;
    case U_JT_DUAL_JOINING:
        return Joining::Dual;
    case U_JT_TRANSPARENT:
        return Joining::Transparent;
    default:
        return Joining::None;
    }
}

class Unicode
{
public:
    Unicode()
    {
        UErrorCode error = U_ZERO_ERROR;
        m_normalizer = icu::Normalizer2::getInstance(nullptr, "uts46", UNORM2_COMPOSE, error);
        if (U_FAILURE(error))
            Fail(u_errorName(error), 0);
        for (UChar32 code = 0; code < kEnd; ++code)
            m_characters.push_back(CharacterOf(code));
        FindPairs(0, Status::EvenToNext);
        FindPairs(1, Status::OddToNext);
    }

    const IdnaCharacter& operator[](UChar32 code) const { return m_characters[static_cast<std::size_t>(code)]; }
    const std::map<UChar32, icu::UnicodeString>& Mappings() const { return m_mappings; }

private:
    IdnaCharacter CharacterOf(UChar32 code)
    {
        UErrorCode error = U_ZERO_ERROR;
        const icu::UnicodeString text(code);
        const icu::UnicodeString mapped = m_normalizer->normalize(text, error);
        IdnaCharacter result;
        if (U_FAILURE(error) || U_IS_SURROGATE(code) || mapped.indexOf(UChar32(0xFFFD)) >= 0)
            result.status = Status::Disallowed;
        else if (mapped.isEmpty())
            result.status = Status::Ignored;
        else if (mapped != text)
        {
            result.status = Status::Mapped;
            m_mappings[code] = mapped;
        }
        else
            result = {Status::Valid, DirectionOf(code), JoiningOf(code), (U_GET_GC_MASK(code) & U_GC_M_MASK) != 0,
                      u_getCombiningClass(code) == 9};
        return result;
    }

    bool IsPair(UChar32 code) const
    {
        const auto mapping = m_mappings.find(code);
        return mapping != m_mappings.end() && mapping->second == icu::UnicodeString(code + 1) &&
               Pack((*this)[code + 1]) == 0;
    }

    /// Upper and lower case in turn would be a range and a mapping each.
    void FindPairs(UChar32 parity, Status status)
    {
        for (UChar32 code = parity; code < kEnd; code += 2)
        {
            UChar32 end = code;
            while (IsPair(end))
                end += 2;
            for (; code < end; code += 2)
            {
                m_mappings.erase(code);
                m_characters[static_cast<std::size_t>(code)].status = status;
                m_characters[static_cast<std::size_t>(code) + 1].status = status;
            }
        }
    }

    const icu::Normalizer2* m_normalizer = nullptr;
    std::vector<IdnaCharacter> m_characters;
    std::map<UChar32, icu::UnicodeString> m_mappings;
};

struct Mappings
{
    std::vector<IdnaData::Run> runs;
    icu::UnicodeString pool;
};

/// The distance to the one character that a character is mapped to; 0: it is mapped to several.
UChar32 Distance(const std::map<UChar32, icu::UnicodeString>& mappings, UChar32 code)
{
    const auto mapping = mappings.find(code);
    return mapping == mappings.end() || mapping->second.countChar32() != 1 ? 0 : mapping->second.char32At(0) - code;
}

Mappings Compress(const std::map<UChar32, icu::UnicodeString>& mappings)
{
    Mappings result;
    const auto runOfOneDistance = [&](UChar32 code) {
        const UChar32 distance = Distance(mappings, code);
        UChar32 end = code;
        while (distance != 0 && Distance(mappings, end) == distance)
            ++end;
        return end - code >= kShortestRun ? end : code;
    };
    for (auto at = mappings.begin(); at != mappings.end();)
    {
        const UChar32 first = at->first;
        if (const UChar32 end = runOfOneDistance(first); end > first)
        {
            result.runs.push_back({static_cast<std::uint32_t>(first), 0, Distance(mappings, first)});
            at = mappings.lower_bound(end);
            continue;
        }
        const std::int32_t length = at->second.length();
        icu::UnicodeString text;
        for (UChar32 code = first; at != mappings.end() && at->first == code && at->second.length() == length &&
                                   runOfOneDistance(code) == code;
             ++code, ++at)
            text += at->second;
        std::int32_t offset = result.pool.indexOf(text);
        if (offset < 0)
        {
            offset = result.pool.length();
            result.pool += text;
        }
        result.runs.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(length), offset});
    }
    return result;
}

template <typename... Arguments>
std::string Format(const char* format, Arguments... arguments)
{
    char text[64];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

void WriteArray(const char* type, const char* name, const std::vector<std::string>& items)
{
    constexpr std::size_t kWidth = 120;
    std::printf("\nconst %s %s[] = {", type, name);
    std::size_t column = kWidth;
    for (const std::string& item : items)
    {
        const bool fits = column + 1 + item.size() <= kWidth;
        column = (fits ? column : 3) + 1 + item.size();
        std::printf("%s %s", fits ? "" : "\n   ", item.c_str());
    }
    std::printf("\n};\n");
}

std::vector<std::string> Ranges(const Unicode& unicode)
{
    std::vector<std::string> result;
    std::uint32_t last = UINT32_MAX;
    for (UChar32 code = 0; code < kEnd; ++code)
    {
        const std::uint32_t packed = Pack(unicode[code]);
        if (packed != last)
            result.push_back(Format("0x%X,", static_cast<unsigned>(code) << kIdnaCharacterBits | packed));
        last = packed;
    }
    return result;
}

void Write(const Unicode& unicode, const Mappings& mappings)
{
    const auto ranges = Ranges(unicode);
    std::vector<std::string> runs;
    for (const IdnaData::Run& run : mappings.runs)
        runs.push_back(Format("{0x%X, %u, %d},", unsigned{run.first}, unsigned{run.length}, run.value));
    std::vector<std::string> pool;
    for (std::int32_t at = 0; at < mappings.pool.length(); ++at)
        pool.push_back(Format("0x%X,", unsigned{mappings.pool[at]}));

    std::printf("// Written by scripts/idna/generate from the data of Unicode %s. Change that, not this.\n"
                "// clang-format off\n\n"
                "#include \"url/IdnaData.h\"\n\n"
                "namespace IdnaData\n{\n",
                U_UNICODE_VERSION);
    WriteArray("std::uint32_t", "kRanges", ranges);
    std::printf("const std::size_t kRangeCount = %zu;\n", ranges.size());
    WriteArray("Run", "kRuns", runs);
    std::printf("const std::size_t kRunCount = %zu;\n", runs.size());
    WriteArray("char16_t", "kPool", pool);
    std::printf("\nconst char kUnicodeVersion[] = \"%s\";\n", U_UNICODE_VERSION);
    std::printf("\n} // namespace IdnaData\n");
}

} // namespace

int main()
{
    const Unicode unicode;
    Write(unicode, Compress(unicode.Mappings()));
}
