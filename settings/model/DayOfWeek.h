#pragma once

#include <array>

namespace Settings
{

inline constexpr int kDaysInWeek = 7;

/// How keys name the days, Sunday = 0 to Saturday = 6.
inline constexpr std::array<const wchar_t*, kDaysInWeek> kDayNames = {L"sunday",   L"monday", L"tuesday", L"wednesday",
                                                                      L"thursday", L"friday", L"saturday"};

} // namespace Settings
