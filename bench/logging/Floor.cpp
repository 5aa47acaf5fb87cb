#include "bench/logging/Floor.h"

#include <cstdint>

Floor::Floor(const std::wstring& path)
{
    m_mutex.Create(path, nullptr);
    m_file.Open(path, nullptr);
}

void Floor::Write(const std::string& line)
{
    m_mutex.Lock(500);
    std::uint64_t end = 0;
    std::size_t written = 0;
    m_file.SeekToEnd(end);
    m_file.Write(line.data(), line.size(), written);
    m_mutex.Unlock();
}
