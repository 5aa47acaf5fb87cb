#include "url/IdnaTable.h"

#include "url/IdnaData.h"

#include <algorithm>

namespace IdnaTable
{

namespace
{

using Status = IdnaCharacter::Status;

void Append(char32_t code, std::u16string& text)
{
    if (code < 0x10000)
    {
        text += static_cast<char16_t>(code);
        return;
    }
    text += static_cast<char16_t>(0xD7C0 + (code >> 10U));
    text += static_cast<char16_t>(0xDC00 + (code & 0x3FFU));
}

void AppendFromRun(char32_t code, std::u16string& text)
{
    const auto* const next =
        std::upper_bound(IdnaData::kRuns, IdnaData::kRuns + IdnaData::kRunCount, code,
                         [](char32_t value, const IdnaData::Run& candidate) { return value < candidate.first; });
    const IdnaData::Run& run = *(next - 1);
    if (run.length == 0)
        Append(static_cast<char32_t>(static_cast<std::int32_t>(code) + run.value), text);
    else
        text.append(IdnaData::kPool + run.value + (code - run.first) * run.length, run.length);
}

IdnaCharacter RangeOf(char32_t code)
{
    constexpr std::uint32_t kAllBits = (1U << kIdnaCharacterBits) - 1;
    const auto* const next = std::upper_bound(IdnaData::kRanges, IdnaData::kRanges + IdnaData::kRangeCount,
                                              static_cast<std::uint32_t>(code) << kIdnaCharacterBits | kAllBits);
    return Unpack(*(next - 1));
}

} // namespace

IdnaCharacter Find(char32_t code)
{
    IdnaCharacter result = RangeOf(code);
    const bool isOdd = code % 2 == 1;
    if (result.status == Status::EvenToNext)
        result.status = isOdd ? Status::Valid : Status::Next;
    else if (result.status == Status::OddToNext)
        result.status = isOdd ? Status::Next : Status::Valid;
    return result;
}

bool AppendMapped(char32_t code, std::u16string& text)
{
    switch (Find(code).status)
    {
    case Status::Valid:
        Append(code, text);
        return true;
    case Status::Next:
        Append(code + 1, text);
        return true;
    case Status::Mapped:
        AppendFromRun(code, text);
        return true;
    case Status::Ignored:
        return true;
    default:
        return false;
    }
}

} // namespace IdnaTable
