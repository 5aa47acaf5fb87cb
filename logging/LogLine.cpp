#include "logging/LogLine.h"

#include "platform/ProcessInfo.h"

#include <cstdint>

namespace NlOrbLogging
{

namespace
{

constexpr std::size_t kRoom = 50;
constexpr std::size_t kEnd = 3; // "\r\n" and the terminator

/// Each line has the same shape, which a general formatter would take longer to find out than the disk to keep the
/// line.
class Prefix
{
public:
    explicit Prefix(char16_t* at) : m_at(at) {}

    template <std::uint32_t Base, int Fewest>
    Prefix& Number(std::uint32_t value)
    {
        // A length that the compiler knows lets it write the digits one after the other.
        int length = Fewest;
        std::uint64_t end = Power(Base, Fewest);
        if (value < end)
        {
            for (int i = Fewest; i-- > 0; value /= Base)
                m_at[i] = kDigits[value % Base];
        }
        else
        {
            for (; value >= end; end *= Base)
                ++length;
            for (int i = length; i-- > 0; value /= Base)
                m_at[i] = kDigits[value % Base];
        }
        m_at += length;
        return *this;
    }

    Prefix& Character(wchar_t character)
    {
        *m_at++ = static_cast<char16_t>(character);
        return *this;
    }

    char16_t* At() const { return m_at; }

private:
    static constexpr const char16_t* kDigits = u"0123456789abcdef";

    static constexpr std::uint64_t Power(std::uint64_t base, int exponent)
    {
        return exponent == 0 ? 1 : base * Power(base, exponent - 1);
    }

    char16_t* m_at;
};

} // namespace

std::size_t PrintPrefix(char16_t* buffer, const Platform::CalendarTime& time, const wchar_t* tag)
{
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    Prefix prefix(buffer);
    prefix.Number<10, 4>(number(time.year)).Character(L'-').Number<10, 2>(number(time.month)).Character(L'-');
    prefix.Number<10, 2>(number(time.day)).Character(L' ').Number<10, 2>(number(time.hour)).Character(L':');
    prefix.Number<10, 2>(number(time.minute)).Character(L':').Number<10, 2>(number(time.second)).Character(L'.');
    prefix.Number<10, 3>(number(time.millisecond)).Character(L' ').Character(L'[');
    prefix.Number<16, 4>(Platform::ProcessId()).Character(L'.').Number<16, 4>(Platform::ThreadId());
    prefix.Character(L']').Character(L' ').Character(tag[0]).Character(tag[1]).Character(L':').Character(L' ');
    const auto length = static_cast<std::size_t>(prefix.At() - buffer);
    return length + kEnd <= kRoom ? length : 0;
}

} // namespace NlOrbLogging
