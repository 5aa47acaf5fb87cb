#pragma once

#include <cstdint>

namespace Platform
{

std::uint32_t ProcessId();
std::uint32_t ThreadId(); ///< Of the calling thread, unique in the system.

} // namespace Platform
