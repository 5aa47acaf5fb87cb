#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Strata
{

/// Appends `value` as a JSON string. UTF-8 stays as it is; quotes, backslashes and control characters are escaped.
void AppendJsonString(std::string& json, std::string_view value);

} // namespace Strata
