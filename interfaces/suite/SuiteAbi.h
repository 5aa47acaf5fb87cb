#pragma once

/* The binary interface that the suite's C libraries share: calling convention and symbol visibility.
 *
 * Each library's header lists its functions once, as NL_..._FUNCTIONS(F) with a row F(result, name, parameters). The
 * library itself, and programs that link to it, see ordinary prototypes by defining NL_SUITE_PROTOTYPES; a client that
 * loads the library at run time makes its table of entry points from the same list. */

#include <stdbool.h>
#include <stdint.h>
#include <wchar.h>

#if defined(_WIN32)
#define NL_SUITE_CALL __cdecl
#else
#define NL_SUITE_CALL
#endif

#if defined(_WIN32) && defined(NL_SUITE_LIBRARY)
#define NL_SUITE_API __declspec(dllexport)
#elif defined(_WIN32)
#define NL_SUITE_API __declspec(dllimport)
#else
#define NL_SUITE_API __attribute__((visibility("default")))
#endif

#if defined(__cplusplus)
#define NL_SUITE_PROTOTYPE(result, name, parameters) extern "C" NL_SUITE_API result NL_SUITE_CALL name parameters;
#else
#define NL_SUITE_PROTOTYPE(result, name, parameters) extern NL_SUITE_API result NL_SUITE_CALL name parameters;
#endif
