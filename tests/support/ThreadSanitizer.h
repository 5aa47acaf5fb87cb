#pragma once

/// Read by ThreadSanitizer, where a program is built with it; included by the file that has the main function.
///
/// The sanitizer does not know pthread_mutex_clocklock(), which waits for a named mutex by a clock that nobody sets,
/// and so would take each unlocking after such a wait for a mistake.
#if defined(__SANITIZE_THREAD__)
extern "C" __attribute__((visibility("default"), used)) const char* __tsan_default_options();
extern "C" const char* __tsan_default_options()
{
    return "report_mutex_bugs=0:atexit_sleep_ms=0";
}
#endif
