#include "platform/Utf.h"

namespace Platform
{

std::wstring FromAnsi(std::string_view text)
{
    return FromUtf8(text);
}

std::string ToAnsi(std::wstring_view text)
{
    return ToUtf8(text);
}

} // namespace Platform
