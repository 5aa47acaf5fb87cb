#include "platform/Text.h"

namespace Platform
{

std::wstring FromAnsi(std::string_view text)
{
    return FromUtf8(text);
}

} // namespace Platform
