#pragma once

#include "logging/FunctionLog.h"

namespace Settings
{

/// Reports a rule that a value read or built breaks; the value is kept.
void CheckInvariant(const FunctionLog& log, bool holds, const wchar_t* rule);

} // namespace Settings
