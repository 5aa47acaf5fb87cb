#include "logging/LoggerWin.h"

#include "logging/FileUtilsWin32.h"
#include "logging/LogLine.h"
#include "logging/LogSettings.h"
#include "logging/StringBuffer.h"
#include "platform/Ansi.h"
#include "platform/Clock.h"
#include "platform/DebugOutput.h"
#include "platform/Format.h"
#include "platform/LastError.h"
#include "platform/Sessions.h"
#include "text/Utf.h"

#include <chrono>
#include <string_view>
#include <thread>

namespace NlOrbLogging
{

namespace
{

using Platform::LastErrorGuard;

constexpr std::size_t kFirstBuffer = 2048;
constexpr std::size_t kBufferLimit = 0x40000;
constexpr std::uint32_t kUnknownSession = 0xDEADBEEF;
constexpr int kUnknownOffset = 3599;
constexpr auto kExitWait = std::chrono::milliseconds(500);

/// Runs what must not disturb its caller: nothing is thrown, and the thread's last error stays as it was. Without
/// memory the line is lost, or the session begins with a later one.
template <class Operation>
void Undisturbing(Operation operation) noexcept
{
    const LastErrorGuard guard;
    try
    {
        operation();
    }
    catch (...)
    {}
}

/// Hands `take` the formatted message. False: it is longer than any buffer.
template <class Char, class Take>
bool FormatMessage(const Char* format, va_list arguments, Take take)
{
    StringBuffer<Char, kFirstBuffer> buffer;
    for (std::size_t size = kFirstBuffer; size < kBufferLimit; size *= 2)
    {
        if (!buffer.Reserve(size))
            return false;
        const int length = Platform::Format(buffer.Data(), size, format, arguments);
        if (length >= 0)
        {
            take(buffer.Data(), static_cast<std::size_t>(length));
            return true;
        }
    }
    return false;
}

std::uint32_t SessionOfProcess()
{
    std::uint32_t session = kUnknownSession;
    Platform::Get<Platform::Sessions>().ProcessSession(session);
    return session;
}

} // namespace

LoggerWin::~LoggerWin()
{
    LoggerWin::Shutdown();
}

void LoggerWin::InitializeA(const char* component, const char* module, int defaultLevel, unsigned flags)
{
    Undisturbing([=] {
        Initialize(Platform::FromAnsi(component).c_str(), Platform::FromAnsi(module).c_str(), defaultLevel, flags);
    });
}

void LoggerWin::Initialize(const wchar_t* component, const wchar_t* module, int defaultLevel, unsigned flags)
{
    Undisturbing([=] {
        const bool deferred = (flags & DeferredInit) != 0;
        {
            const std::lock_guard lock(m_lock);
            if (m_file)
                return;
            m_config = {component, module, defaultLevel, flags};
            m_flags = flags;
            m_dirty = true;
            m_debugOutput = false;
            m_threshold = deferred ? Verbose : defaultLevel; // lines that pass it configure what could not be before
        }
        if (!deferred)
            Reconfigure();
    });
}

void LoggerWin::Shutdown()
{
    Undisturbing([this] {
        Log(BannerLevel(m_flags), L"***  LOGGING ENDED  ***");
        const std::lock_guard lock(m_lock);
        m_threshold = 0;
        m_debugOutput = false;
        m_dirty = false;
        m_file.reset();
        LoggerConfig().Swap(m_config); // gives the memory back, too: this object is never destroyed
        m_flags = 0;
    });
}

void LoggerWin::ShutdownAtExit()
{
    const auto deadline = std::chrono::steady_clock::now() + kExitWait;
    while (!m_lock.try_lock())
    {
        if (std::chrono::steady_clock::now() > deadline)
            return;
        std::this_thread::yield();
    }
    m_lock.unlock();
    Shutdown();
}

void LoggerWin::Flush()
{
    Undisturbing([this] {
        const std::lock_guard lock(m_lock);
        if (m_file)
            m_file->Flush();
    });
}

void LoggerWin::LogV(int level, const wchar_t* format, va_list arguments)
{
    if (IsFiltered(level))
        return;
    Undisturbing([&] {
        const auto write = [=](const wchar_t* text, std::size_t length) { FormatLine(level, text, length); };
        if (!FormatMessage(format, arguments, write))
            Log(Error, L"NL_ORB_LOG failure: too large message. Format: %s", format);
    });
}

void LoggerWin::LogVA(int level, const char* format, va_list arguments)
{
    if (IsFiltered(level))
        return;
    Undisturbing([&] {
        const auto write = [=](const char* text, std::size_t length) {
            const std::wstring wide = Platform::FromAnsi({text, length});
            FormatLine(level, wide.data(), wide.size());
        };
        if (!FormatMessage(format, arguments, write))
            Log(Error, L"NL_ORB_LOG failure: too large message. Format: %hs", format);
    });
}

std::unique_ptr<FileLowLevel> LoggerWin::CreateFileLowLevel()
{
    return std::make_unique<FileLowLevel>();
}

std::unique_ptr<FileUtils> LoggerWin::CreateFileUtils()
{
    return std::make_unique<FileUtilsWin32>();
}

void LoggerWin::Reconfigure()
{
    unsigned flags;
    {
        const std::lock_guard lock(m_lock);
        if (!m_dirty)
            return;
        const LogSettings settings(m_config.component, m_config.module);
        m_debugOutput = settings.ReadDword(L"DebugOutputLogging", 0) != 0;
        if (!m_file)
        {
            m_threshold =
                static_cast<int>(settings.ReadDword(L"LogLevel", static_cast<std::uint32_t>(m_config.defaultLevel)));
            m_file = std::make_unique<FileAccess>(m_config.component, m_config.module, CreateFileLowLevel(),
                                                  CreateFileUtils(), m_config.flags);
        }
        flags = m_config.flags;
        m_dirty = false;
    }
    WriteStartBanner(flags);
}

void LoggerWin::WriteStartBanner(unsigned flags)
{
    int offset = kUnknownOffset;
    Platform::Get<Platform::Clock>().UtcOffset(offset);
    const int level = BannerLevel(flags);
    if (!IsFiltered(level))
        WriteLine(level, u"\r\n");
    Log(level,
        (flags & UtcTimestamps) != 0 ? L"***  LOGGING STARTED  *** (UTC+00:00, local:%+02d:%02d, session: 0x%x)"
                                     : L"***  LOGGING STARTED  *** (UTC%+02d:%02d, session: 0x%x)",
        offset / 60, offset % 60, SessionOfProcess());
}

void LoggerWin::FormatLine(int level, const wchar_t* message, std::size_t length)
{
    auto& clock = Platform::Get<Platform::Clock>();
    const Platform::CalendarTime time = (m_flags & UtcTimestamps) != 0 ? clock.UtcTime() : clock.LocalTime();
    constexpr std::size_t kBesideMessage = kLongestPrefix + 2; // beside the message
    StringBuffer<char16_t, kBesideMessage + 2 * kFirstBuffer> line;
    if (!line.Reserve(kBesideMessage + 2 * length))
        return;
    const std::size_t prefix = PrintPrefix(line.Data(), time, LevelTag(level));
    if (prefix == 0)
        return;
    char16_t* end = line.Data() + prefix;
    end += Text::ToUtf16({message, length}, end);
    *end++ = u'\r';
    *end++ = u'\n';
    WriteLine(level, {line.Data(), static_cast<std::size_t>(end - line.Data())});
}

void LoggerWin::WriteLine(int level, std::u16string_view line)
{
    if (m_dirty)
    {
        Reconfigure();
        if (IsFiltered(level))
            return;
    }
    if (m_debugOutput)
        Platform::Get<Platform::DebugOutput>().Write(Text::FromUtf16(line).c_str());
    const std::lock_guard lock(m_lock);
    if (m_file)
        m_file->Write(line.data(), static_cast<std::uint32_t>(line.size() * sizeof(char16_t)));
}

} // namespace NlOrbLogging
