#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

/// Whether memory has been lost so far. Known only where the program is built with the address sanitizer, which also
/// tells on standard error where it was allocated; elsewhere false.
inline bool MemoryWasLost()
{
#if defined(__SANITIZE_ADDRESS__)
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}
