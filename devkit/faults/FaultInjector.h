#pragma once

#include "devkit/faults/SuiteFault.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace SuiteFaults
{

/// How a call has to fail.
struct Failure
{
    uint32_t code;
    bool carriedOut;
};

/// Says which calls of a library's functions fail. Thread-safe; until something is to fail for the first time, a call
/// costs one look at a flag.
class FaultInjector
{
public:
    /// The functions' C names, by number; each ends with a NUL character.
    explicit FaultInjector(std::vector<std::string_view> names);

    /// Adds to the faults that hold: the first one set that matches a call answers it. False: there is no such
    /// function.
    bool Add(const SuiteFault& fault);
    /// Takes back what was added for this function and this key.
    bool Remove(const char* function, const wchar_t* key);
    /// Takes back everything, and counts the calls from here on.
    void Clear();
    /// What holds, in the order in which it was set. The visitor may call the library.
    void Visit(SuiteFaultVisitor visitor, void* context);

    bool IsIdle() const { return m_idle.load(std::memory_order_acquire); }
    /// Counts a call, and tells how it has to fail.
    std::optional<Failure> Enter(std::size_t function, const wchar_t* key);

    /// How many calls there were, and how many of them were made to fail.
    struct Calls
    {
        uint32_t all = 0;
        uint32_t failed = 0;
    };
    Calls CallsOf(const char* function);

private:
    static constexpr std::size_t kEvery = SIZE_MAX;

    struct Fault
    {
        std::size_t function = kEvery; // of each
        std::optional<std::wstring> key;
        Failure failure{};
        uint32_t passing = 0; // calls that come before the first that fails
        uint32_t left = 0;    // 0: does not end
    };

    std::optional<std::size_t> NumberOf(const char* function) const;

    const std::vector<std::string_view> m_names;
    std::atomic<bool> m_idle = true;
    std::mutex m_mutex; // guards what follows
    std::vector<Fault> m_faults;
    std::vector<Calls> m_calls;
};

} // namespace SuiteFaults
