#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <string>

namespace NlOrbLogging
{

/// The open log file and its size as far as this process knows it. Every operation answers whether it succeeded.
class FileLowLevel
{
public:
    FileLowLevel() = default;
    virtual ~FileLowLevel() = default; // slot 0; closes
    FileLowLevel(const FileLowLevel&) = delete;
    FileLowLevel& operator=(const FileLowLevel&) = delete;

    /// Opens the file, or makes it with a byte-order mark, and goes to its end. Fails if one is open.
    virtual bool Open(const std::wstring& path, const wchar_t* security);
    virtual void Close();

    /// Adds what was written to the size. A part of the data only, as on a full disk, is taken back.
    virtual bool Write(const void* data, std::uint32_t bytes);
    virtual std::uint64_t GetSize();

    /// Goes to the end, which is the size from now on.
    virtual bool SeekToEnd();
    virtual bool Flush();
    virtual bool IsOpen();

    /// Makes a file that was just opened ready to be appended to; closes it on failure.
    virtual bool PrepareAppend();

    /// The size is this, as somebody knows who wrote to the file: spares SeekToEnd().
    void FollowTo(std::uint64_t size) { m_size = size; }

private:
    std::uint64_t m_size = 0;
    Platform::File m_file;
};

} // namespace NlOrbLogging
