#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// A security identifier in its binary form; empty where a look-up failed, which then keeps the system's error.
class Sid
{
public:
    Sid() = default;
    explicit Sid(std::vector<std::uint8_t> bytes, std::uint32_t error = 0) : m_bytes(std::move(bytes)), m_error(error)
    {}

    /// The SID of an account named domain\user or user.
    explicit Sid(const std::wstring& accountName);

    bool IsEmpty() const { return m_bytes.empty(); }
    std::size_t Size() const { return m_bytes.size(); }
    std::uint32_t LastError() const { return m_error; }

    /// S-1-..., empty for what is no SID.
    std::wstring ToString() const;

    /// The number after the last "-" of the SID's text.
    std::optional<std::uint32_t> RelativeId() const;

private:
    std::vector<std::uint8_t> m_bytes;
    std::uint32_t m_error = 0;
};
