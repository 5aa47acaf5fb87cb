#pragma once

#include "logging/FileAccess.h"
#include "logging/FileLowLevel.h"
#include "logging/FileUtils.h"
#include "logging/Logger.h"
#include "logging/LoggerConfig.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string_view>

namespace NlOrbLogging
{

/// The product's logger: one file for a component's module, set up by the registry. See logging/FileAccess.h for where
/// the file lies and how processes share it.
class LoggerWin : public Logger
{
public:
    LoggerWin() = default;
    ~LoggerWin() override;

    void InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags) override;
    void Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags) override;
    void Shutdown() override;
    void Flush() override;
    void LogV(int level, const wchar_t* format, va_list arguments) override;
    void LogVA(int level, const char* format, va_list arguments) override;

    /// What a new FileAccess takes over.
    virtual std::unique_ptr<FileLowLevel> CreateFileLowLevel(); // slot 13
    virtual std::unique_ptr<FileUtils> CreateFileUtils();

    /// Shutdown(), but gives up after half a second if another thread does not leave the log: at the end of a process
    /// the system may have ended that thread.
    void ShutdownAtExit();

private:
    void Reconfigure();
    void WriteStartBanner(unsigned flags);
    void FormatLine(int level, const wchar_t* message, std::size_t length);
    void WriteLine(int level, std::u16string_view line);

    std::unique_ptr<FileAccess> m_file; // null until configured
    std::atomic<bool> m_debugOutput{false};
    std::mutex m_lock; // guards m_file and m_config
    LoggerConfig m_config;
    std::atomic<bool> m_dirty{false}; // the registry has not been read for m_config
    std::atomic<unsigned> m_flags{0}; // those of m_config
};

} // namespace NlOrbLogging
