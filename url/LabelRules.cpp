#include "url/LabelRules.h"

#include "url/IdnaTable.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>

namespace LabelRules
{

namespace
{

using Direction = IdnaCharacter::Direction;
using Joining = IdnaCharacter::Joining;

constexpr char32_t kZeroWidthNonJoiner = 0x200C;
constexpr char32_t kZeroWidthJoiner = 0x200D;

/// The joining type of the first character that has one.
template <typename Iterator>
Joining FirstJoining(Iterator begin, Iterator end)
{
    for (; begin != end; ++begin)
        if (const Joining joining = IdnaTable::Find(*begin).joining; joining != Joining::Transparent)
            return joining;
    return Joining::None;
}

/// RFC 5892, appendix A.1 and A.2.
bool IsJoinerInPlace(const std::u32string& label, std::size_t at)
{
    if (at > 0 && IdnaTable::Find(label[at - 1]).isVirama)
        return true;
    if (label[at] == kZeroWidthJoiner)
        return false;
    const auto joiner = label.begin() + static_cast<std::ptrdiff_t>(at);
    const Joining before = FirstJoining(std::make_reverse_iterator(joiner), label.rend());
    const Joining after = FirstJoining(joiner + 1, label.end());
    return (before == Joining::Left || before == Joining::Dual) && (after == Joining::Right || after == Joining::Dual);
}

Direction DirectionOf(char32_t code)
{
    return IdnaTable::Find(code).direction;
}

bool HoldsAny(const std::u32string& label, std::initializer_list<Direction> directions)
{
    return std::any_of(
        label.begin(), label.end(),
        [&](char32_t code) {
            return std::find(directions.begin(), directions.end(), DirectionOf(code)) != directions.end();
        });
}

/// The direction of the last character that is no mark above or below another.
Direction LastDirection(const std::u32string& label)
{
    const auto last = std::find_if(label.rbegin(), label.rend(),
                                   [](char32_t code) { return DirectionOf(code) != Direction::NonspacingMark; });
    return last == label.rend() ? Direction::NonspacingMark : DirectionOf(*last);
}

} // namespace

bool IsValid(const std::u32string& label)
{
    if (!label.empty() && IdnaTable::Find(label.front()).isMark)
        return false;
    for (std::size_t at = 0; at < label.size(); ++at)
    {
        if (IdnaTable::Find(label[at]).status != IdnaCharacter::Status::Valid)
            return false;
        const bool isJoiner = label[at] == kZeroWidthNonJoiner || label[at] == kZeroWidthJoiner;
        if (isJoiner && !IsJoinerInPlace(label, at))
            return false;
    }
    return true;
}

bool IsRightToLeft(const std::u32string& label)
{
    return HoldsAny(label, {Direction::RightToLeft, Direction::ArabicNumber});
}

bool KeepsBidiRule(const std::u32string& label)
{
    if (label.empty())
        return true;
    const Direction last = LastDirection(label);
    switch (DirectionOf(label.front()))
    {
    case Direction::LeftToRight:
        return !IsRightToLeft(label) && (last == Direction::LeftToRight || last == Direction::EuropeanNumber);
    case Direction::RightToLeft:
        return !HoldsAny(label, {Direction::LeftToRight}) &&
               (last == Direction::RightToLeft || last == Direction::EuropeanNumber ||
                last == Direction::ArabicNumber) &&
               !(HoldsAny(label, {Direction::EuropeanNumber}) && HoldsAny(label, {Direction::ArabicNumber}));
    default:
        return false;
    }
}

} // namespace LabelRules
