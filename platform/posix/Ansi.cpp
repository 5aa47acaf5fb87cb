#include "platform/Ansi.h"

#include "text/Utf.h"

namespace Platform
{

std::wstring FromAnsi(std::string_view text)
{
    return Text::FromUtf8(text);
}

std::string ToAnsi(std::wstring_view text)
{
    return Text::ToUtf8(text);
}

} // namespace Platform
