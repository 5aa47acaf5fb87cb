#pragma once

#include "platform/Service.h"

namespace Platform
{

/// What an attached debugger shows. Any thread. On POSIX it is standard error, and off unless the environment variable
/// VERIDAN_DEBUG_OUTPUT is set.
class DebugOutput
{
public:
    virtual ~DebugOutput() = default;

    virtual void Write(const wchar_t* text) = 0;
};

template <>
DebugOutput& System<DebugOutput>();

} // namespace Platform
