#pragma once

#include "platform/FormatConversion.h"

#include <cstddef>
#include <string>

namespace Platform
{

/// A floating-point number as a conversion to one of eEfFgGaA prints it; empty when it takes `limit`
/// characters or more.
std::string FormatFloat(const FormatConversion& conversion, double value, std::size_t limit);
std::string FormatFloat(const FormatConversion& conversion, long double value, std::size_t limit);

} // namespace Platform
