#pragma once

#include "delay_load/OrbStrataApi.h"

#include <memory>

namespace StrataSettings
{

struct FreeStoreString
{
    void operator()(void* text) const noexcept { OrbStrata_FreeString(text); }
};

/// A text that the store allocated; handed back to it in every case.
template <class Char>
using StoreString = std::unique_ptr<Char, FreeStoreString>;

} // namespace StrataSettings
