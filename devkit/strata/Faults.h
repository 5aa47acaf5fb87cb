#pragma once

#include "devkit/strata/Entry.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Strata
{

/// The store's functions, by number.
enum class Function : uint8_t
{
#define STRATA_NUMBER(result, name, parameters) name,
    NL_ORB_STRATA_FUNCTIONS(STRATA_NUMBER)
#undef STRATA_NUMBER
};

/// Answers that calls of the store's functions were told to give. Thread-safe; costs one look at a flag when there are
/// none.
class Faults
{
public:
    /// The next `count` calls (0 = every call) of `function`, with `key` where it is not null, answer `code`; code 0
    /// takes such a fault back. False: there is no such function.
    bool Set(const char* function, const wchar_t* key, OrbStrataResult code, uint32_t count);
    void Clear();

    /// What this call has to answer instead of doing its work; 0: nothing. Counts the call. `key` may be null.
    OrbStrataResult Take(Function function, const wchar_t* key)
    {
        return Any() ? TakeMatching(function, key) : Success;
    }
    bool Any() const { return m_any.load(std::memory_order_acquire); }

private:
    struct Fault
    {
        Function function;
        std::optional<std::wstring> key;
        OrbStrataResult code;
        uint32_t left; ///< 0: does not end
    };

    OrbStrataResult TakeMatching(Function function, const wchar_t* key);

    std::atomic<bool> m_any = false;
    std::mutex m_mutex;
    std::vector<Fault> m_faults; // in the order in which they were set: the first that matches answers
};

} // namespace Strata
