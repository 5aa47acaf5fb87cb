#include "devkit/strata/json/JsonWriter.h"

#include <cstddef>

namespace Strata
{

void AppendJsonString(std::string& json, std::string_view value)
{
    static constexpr std::string_view Meanings = "\"\\\b\f\n\r\t";
    static constexpr std::string_view Letters = "\"\\bfnrt";
    static constexpr std::string_view Hex = "0123456789abcdef";
    json += '"';
    for (const char c : value)
    {
        if (const auto at = Meanings.find(c); at != std::string_view::npos)
        {
            json += {'\\', Letters[at]};
        }
        else if (const auto byte = static_cast<unsigned char>(c); byte < 0x20)
        {
            json += "\\u00";
            json += {Hex[byte >> 4], Hex[byte & 0xF]};
        }
        else
        {
            json += c;
        }
    }
    json += '"';
}

} // namespace Strata
