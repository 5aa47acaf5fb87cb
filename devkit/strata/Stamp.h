#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Strata
{

/// A small file beside the store that every writer stamps after its commit, with a word that is another one each time.
/// Reading the word costs a memory access, so that every read of a setting can afford to ask whether something was
/// committed since. Thread-safe.
class Stamp
{
public:
    /// Opens or creates the file; one that may not be written is opened for reading. Null: neither is possible.
    static std::unique_ptr<Stamp> Open(const std::string& path);
    virtual ~Stamp() = default;

    virtual uint32_t Word() const = 0;
    /// Sets the word and wakes everyone who watches the file.
    virtual void Publish(uint32_t word) = 0;
};

/// Waits for stamps.
class StampWatch
{
public:
    /// Watches the file that a Stamp has opened. Never null; where the system cannot watch files, waiting looks at
    /// short intervals instead.
    static std::unique_ptr<StampWatch> Open(const std::string& path);
    virtual ~StampWatch() = default;

    /// Returns when the file was stamped or Wake called since the last time. May return without a reason.
    virtual void Wait() = 0;
    /// Any thread.
    virtual void Wake() = 0;
};

} // namespace Strata
