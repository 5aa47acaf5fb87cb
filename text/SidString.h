#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Text
{

/// The text of a security identifier in the binary form of Windows, "S-1-..."; empty for bytes that are no SID.
std::wstring SidString(const std::vector<std::uint8_t>& sid);

} // namespace Text
