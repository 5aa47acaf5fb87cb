#pragma once

#include "delay_load/OrbStrataApi.h"

#include <utility>

namespace StrataSettings
{

/// Owns one store handle and closes it.
class StoreHandle
{
public:
    /// Opens a scope; an elevated handle asks the user. A handle that comes with a failing `result` is not used.
    static StoreHandle Open(bool elevated, const wchar_t* store, const wchar_t* sid, const wchar_t* clientId,
                            OrbStrataResult& result)
    {
        const auto open = elevated ? OrbStrata_OpenElevatedHandle : OrbStrata_OpenHandle;
        StoreHandle handle(open(store, sid, clientId, &result));
        return result == ORB_STRATA_SUCCESS ? std::move(handle) : StoreHandle();
    }

    StoreHandle() = default;
    explicit StoreHandle(OrbStrataHandle handle) noexcept : m_handle(handle) {}
    StoreHandle(StoreHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    StoreHandle& operator=(StoreHandle&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~StoreHandle()
    {
        if (m_handle)
            OrbStrata_CloseHandle(m_handle);
    }

    OrbStrataHandle Get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != nullptr; }

private:
    OrbStrataHandle m_handle = nullptr;
};

} // namespace StrataSettings
