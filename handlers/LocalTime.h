#pragma once

#include "settings/binding/StoreTypes.h"

#include <QDate>
#include <QDateTime>

/// The user's wall-clock time, by the platform's clock. Any thread.
namespace LocalTime
{

StrataSettings::TimePoint Now();
QDate Today();

/// By the clock on the wall, which may be set meanwhile.
std::chrono::milliseconds UntilMidnight();

/// The local date and time of a point in time, without a time zone of its own; invalid where the system does not know
/// it.
QDateTime At(StrataSettings::TimePoint time);

} // namespace LocalTime
