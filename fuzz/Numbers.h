#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

/// The whole numbers of a text, one after the other. What stands between them and what does not fit 64 bits is skipped;
/// behind the last one come zeros.
class Numbers
{
public:
    explicit Numbers(std::string_view text) : m_rest(text) {}

    bool HasMore()
    {
        Skip();
        return !m_rest.empty();
    }

    std::int64_t Next()
    {
        std::int64_t number = 0;
        for (Skip(); !m_rest.empty(); Skip())
        {
            const char* const begin = m_rest.data();
            const auto [end, error] = std::from_chars(begin, begin + m_rest.size(), number);
            m_rest.remove_prefix(end == begin ? 1 : static_cast<std::size_t>(end - begin));
            if (error == std::errc())
                break;
        }
        return number;
    }

private:
    void Skip() { m_rest.remove_prefix(std::min(m_rest.find_first_of("-0123456789"), m_rest.size())); }

    std::string_view m_rest;
};
