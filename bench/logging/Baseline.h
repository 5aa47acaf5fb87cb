#pragma once

#include "platform/Files.h"
#include "platform/NamedMutex.h"

#include <cstddef>
#include <string>

/// The least that a log which processes share has to do for a line: lock, go to the end, write once, unlock.
class Baseline
{
public:
    explicit Baseline(const std::wstring& path);

    void Write(const std::string& line);

private:
    Platform::NamedMutex m_mutex;
    Platform::File m_file;
};
