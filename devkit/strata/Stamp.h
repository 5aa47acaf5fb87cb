#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Strata
{

/// A small file beside the store in which every writer announces its write: the revision that the store will have after
/// the commit. Written inside the transaction, and closed after it, which wakes everyone who watches; the system closes
/// it for a writer that is killed between the two. So nobody who has read up to the announced revision has missed a
/// commit, and nobody is left asleep.
///
/// The file is read and written, never mapped: another program may cut it or remove it at any time. Only a plain file
/// is written that has no other name; whatever else is in its place is removed first.
class Stamp
{
public:
    enum class Use
    {
        Reading,
        Writing ///< makes it where it is missing
    };
    Stamp() = default;
    /// Reads nothing and writes nothing if the file cannot be had.
    Stamp(const std::string& path, Use use);
    Stamp(Stamp&& other) noexcept;
    Stamp& operator=(Stamp&& other) noexcept;
    ~Stamp() { Close(); }

    /// False: there is no revision, or the file is not in its place any more, to be opened anew.
    bool Read(int64_t& revision) const;
    bool Write(int64_t revision);
    void Close();

private:
    static constexpr intptr_t kNone = -1;
    intptr_t m_file = kNone;
};

/// Waits for stamps.
class StampWatch
{
public:
    /// Watches the folder of a stamp. Never null; where the system cannot watch it, or not now, waiting looks at short
    /// intervals instead.
    static std::unique_ptr<StampWatch> Open(const std::string& stampPath);
    virtual ~StampWatch() = default;

    /// Returns when a stamp was closed, made or removed, or Wake called, since the last time. May return without a
    /// reason.
    virtual void Wait() = 0;
    /// Any thread.
    virtual void Wake() = 0;
};

} // namespace Strata
