#pragma once

#include <atomic>
#include <cstdarg>

namespace NlOrbLogging
{

/// What a line is about, from what a user notices to what only a developer wants to see. Any other number is a level
/// too; its lines have a blank tag.
enum Level : int
{
    Fatal = 1,
    Error = 2,
    Warning = 3,
    Information = 4,
    Debug = 5,
    Verbose = 6
};

/// Bits of the flags given to Logger::Initialize().
enum Flags : unsigned
{
    BannerAtDebug = 0x02,    ///< Start and end banners at level 5 instead of 4.
    DeferredInit = 0x04,     ///< The registry is read and the file named when the first line is written.
    PerUserLocation = 0x08,  ///< The per-user folder, for administrators too.
    UtcTimestamps = 0x10,    ///< Times in UTC instead of local time.
    RestrictedAccess = 0x20, ///< Only the system and administrators may read the file.
};

/// A log. Formats have the meanings of Platform::Format(). Any thread may call any operation but the destructor.
/// Nothing fails toward the caller, nothing is thrown, and the thread's last error is left as it was.
class Logger
{
public:
    Logger() = default;
    virtual ~Logger() = default; // slot 0
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    /// Names in the system's narrow encoding.
    virtual void InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags) = 0;

    /// Starts a session of the log for a component's module; ignored while one is running.
    virtual void Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags) = 0;

    /// Ends the session. Lines are dropped until the next Initialize().
    virtual void Shutdown() = 0;

    /// Brings what was written to the disk.
    virtual void Flush() = 0;

    virtual void LogV(int level, const wchar_t* format, va_list arguments) = 0;
    virtual void LogVA(int level, const char* format, va_list arguments) = 0;

    virtual bool IsEnabled(int level);
    virtual bool IsFiltered(int level);

    /// Two characters that stand for the level in a line.
    virtual const wchar_t* LevelTag(int level);

    /// The level of the start and end banners.
    virtual int BannerLevel(unsigned flags);

    virtual void LogA(int level, const char* format, ...);
    virtual void Log(int level, const wchar_t* format, ...);

protected:
    std::atomic<int> m_threshold{0}; ///< Lines of a level above it are filtered.
};

} // namespace NlOrbLogging
