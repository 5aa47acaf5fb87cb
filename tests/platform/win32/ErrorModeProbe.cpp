#include "platform/win32/Win32.h"

namespace
{

const DWORD g_mode = ::GetThreadErrorMode();

} // namespace

/// The error mode of the thread that loaded this library.
extern "C" __declspec(dllexport) DWORD ErrorModeOnLoad()
{
    return g_mode;
}
