#include "logging/FileLowLevel.h"

namespace NlOrbLogging
{

bool FileLowLevel::Open(const std::wstring& path, const wchar_t* security)
{
    return !IsOpen() && m_file.Open(path, security) && PrepareAppend();
}

void FileLowLevel::Close()
{
    m_file.Close();
    m_size = 0;
}

bool FileLowLevel::Write(const void* data, std::uint32_t bytes)
{
    std::size_t written = 0;
    const bool complete = m_file.Write(data, bytes, written);
    m_size += written;
    if (!complete && written != 0 && SeekToEnd() && m_file.Truncate(m_size - written))
        m_size -= written;
    return complete;
}

std::uint64_t FileLowLevel::GetSize()
{
    return m_size;
}

bool FileLowLevel::SeekToEnd()
{
    return m_file.SeekToEnd(m_size);
}

bool FileLowLevel::Flush()
{
    return m_file.Flush();
}

bool FileLowLevel::IsOpen()
{
    return m_file.IsOpen();
}

bool FileLowLevel::PrepareAppend()
{
    constexpr unsigned char kByteOrderMark[] = {0xFF, 0xFE};
    if (SeekToEnd() && (m_size != 0 || Write(kByteOrderMark, sizeof(kByteOrderMark))))
        return true;
    Close();
    return false;
}

} // namespace NlOrbLogging
