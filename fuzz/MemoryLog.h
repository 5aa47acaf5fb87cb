#pragma once

#include "logging/LoggerWin.h"

#include <string>

/// The product's log with its file in memory. It is open on every level.
class MemoryLog : public NlOrbLogging::LoggerWin
{
public:
    static MemoryLog& Get();
    ~MemoryLog() override;

    /// What was written since the last call.
    std::u16string Take();

    std::unique_ptr<NlOrbLogging::FileLowLevel> CreateFileLowLevel() override;
    std::unique_ptr<NlOrbLogging::FileUtils> CreateFileUtils() override;

private:
    MemoryLog();

    std::u16string m_written;
};
