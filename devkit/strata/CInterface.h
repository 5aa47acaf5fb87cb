#pragma once

#include "devkit/strata/Store.h"

#include <string_view>

namespace Strata
{

/// A copy that the caller hands back with OrbStrata_FreeString; null for null.
char* CopyString(const char* text);
wchar_t* CopyString(const wchar_t* text);

/// Fills an optional out-parameter.
inline void Tell(OrbStrataResult* target, OrbStrataResult result)
{
    if (target)
        *target = result;
}

/// The entry that holds `text` as its value; ORB_STRATA_INVALID_ARGUMENT for text that is ill-formed or null.
OrbStrataResult MakeStringEntry(OrbStrataType type, const char* text, Entry& entry);

/// Writes one key.
OrbStrataResult ApplyEdit(OrbStrataHandle handle, const wchar_t* key, Edit::Kind kind, Entry entry);

} // namespace Strata
