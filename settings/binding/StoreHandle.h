#pragma once

#include "delay_load/OrbStrataApi.h"

#include <utility>

namespace StrataSettings
{

/// Owns one store handle and closes it.
class StoreHandle
{
public:
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
