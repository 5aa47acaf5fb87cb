#include "platform/DebugOutput.h"

#include "platform/win32/Win32.h"

namespace Platform
{

namespace
{

class Debugger : public DebugOutput
{
public:
    void Write(const wchar_t* text) override { ::OutputDebugStringW(text); }
};

} // namespace

template <>
DebugOutput& System<DebugOutput>()
{
    return Detail::NoDestructor<Debugger>();
}

} // namespace Platform
