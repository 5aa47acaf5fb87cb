#pragma once

#include "logging/FunctionLog.h"

#include <string>

/// The SID of the user whose settings are shown: the one logged on to the active console session, else the one that the
/// process runs as, else empty, which the store takes as the calling user.
std::string ChooseUserSid(const MethodLog& log);
