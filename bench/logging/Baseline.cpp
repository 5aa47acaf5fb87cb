#include "bench/logging/Baseline.h"

#include <cstdint>

Baseline::Baseline(const std::wstring& path)
{
    m_mutex.Create(path, nullptr);
    m_file.Open(path, nullptr);
}

void Baseline::Write(const std::string& line)
{
    m_mutex.Lock(500);
    std::uint64_t end = 0;
    std::size_t written = 0;
    m_file.SeekToEnd(end);
    m_file.Write(line.data(), line.size(), written);
    m_mutex.Unlock();
}
