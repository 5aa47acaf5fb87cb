#pragma once

#include <cstdint>

/// What UTS #46, and the rules that it takes from RFC 5892 and RFC 5893, ask of a character.
struct IdnaCharacter
{
    enum class Status : std::uint8_t
    {
        Valid,
        Ignored,
        Mapped,
        Next,       ///< mapped to the character that follows
        EvenToNext, ///< of a range: even characters are mapped to the next one, odd ones are valid
        OddToNext,  ///< of a range: the other way round
        Disallowed,
    };

    enum class Direction : std::uint8_t
    {
        LeftToRight,
        RightToLeft, ///< Arabic letters too
        ArabicNumber,
        EuropeanNumber,
        NonspacingMark,
        Neutral,
    };

    enum class Joining : std::uint8_t
    {
        None,
        Left,
        Right,
        Dual,
        Transparent,
    };

    Status status = Status::Valid;
    Direction direction = Direction::LeftToRight;
    Joining joining = Joining::None;
    bool isMark = false;
    bool isVirama = false;
};

constexpr unsigned kIdnaCharacterBits = 11;

constexpr std::uint32_t Pack(const IdnaCharacter& character)
{
    return static_cast<std::uint32_t>(character.status) | static_cast<std::uint32_t>(character.direction) << 3U |
           static_cast<std::uint32_t>(character.joining) << 6U | static_cast<std::uint32_t>(character.isMark) << 9U |
           static_cast<std::uint32_t>(character.isVirama) << 10U;
}

constexpr IdnaCharacter Unpack(std::uint32_t packed)
{
    return {static_cast<IdnaCharacter::Status>(packed & 7U), static_cast<IdnaCharacter::Direction>(packed >> 3U & 7U),
            static_cast<IdnaCharacter::Joining>(packed >> 6U & 7U), (packed >> 9U & 1U) != 0,
            (packed >> 10U & 1U) != 0};
}
