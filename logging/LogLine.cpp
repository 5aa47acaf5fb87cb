#include "logging/LogLine.h"

#include "platform/ProcessInfo.h"

#include <cstdint>

namespace NlOrbLogging
{

namespace
{

/// Every line has the same shape, which a general formatter would take longer to find out than the disk to keep it.
/// The longest prefix is known, so only the message can be too long.
class Prefix
{
public:
    template <std::uint32_t Base, int Digits>
    Prefix& Number(std::uint32_t value)
    {
        wchar_t text[MostDigits];
        int at = MostDigits;
        for (; value != 0 || MostDigits - at < Digits; value /= Base)
            text[--at] = L"0123456789abcdef"[value % Base];
        while (at < MostDigits)
            m_text[m_length++] = text[at++];
        return *this;
    }

    Prefix& Text(const wchar_t* text)
    {
        while (*text != 0)
            m_text[m_length++] = *text++;
        return *this;
    }

    std::wstring_view Get() const { return {m_text, m_length}; }

private:
    static constexpr int MostDigits = 10;

    wchar_t m_text[128];
    std::size_t m_length = 0;
};

} // namespace

std::size_t PrintLine(wchar_t* buffer, std::size_t size, const Platform::CalendarTime& time, const wchar_t* tag,
                      std::wstring_view message)
{
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    Prefix prefix;
    prefix.Number<10, 4>(number(time.year)).Text(L"-").Number<10, 2>(number(time.month)).Text(L"-");
    prefix.Number<10, 2>(number(time.day)).Text(L" ").Number<10, 2>(number(time.hour)).Text(L":");
    prefix.Number<10, 2>(number(time.minute)).Text(L":").Number<10, 2>(number(time.second)).Text(L".");
    prefix.Number<10, 3>(number(time.millisecond)).Text(L" [").Number<16, 4>(Platform::ProcessId()).Text(L".");
    prefix.Number<16, 4>(Platform::ThreadId()).Text(L"] ").Text(tag).Text(L": ");

    const std::wstring_view begin = prefix.Get();
    constexpr std::wstring_view end = L"\r\n";
    const std::size_t length = begin.size() + message.size() + end.size();
    if (length >= size)
        return 0;
    begin.copy(buffer, begin.size());
    message.copy(buffer + begin.size(), message.size());
    end.copy(buffer + length - end.size(), end.size());
    buffer[length] = L'\0';
    return length;
}

} // namespace NlOrbLogging
