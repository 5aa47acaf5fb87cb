#include "platform/ElevationOwner.h"

namespace Platform
{

ElevationOwner::ElevationOwner() = default;
ElevationOwner::~ElevationOwner() = default;

} // namespace Platform
