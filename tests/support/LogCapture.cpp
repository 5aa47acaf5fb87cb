#include "tests/support/LogCapture.h"

#include "logging/Log.h"
#include "platform/Format.h"
#include "platform/LastError.h"
#include "text/Utf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <ostream>
#include <utility>

namespace
{

struct Lines
{
    std::mutex lock;
    std::vector<LogLine> logged;
    std::vector<LogLine> expected;   // and still to come
    std::vector<LogLine> unexpected; // of level 1 or 2, and not taken yet
    int threshold = NlOrbLogging::Verbose;
};

Lines& TheLines()
{
    static auto* const s_lines = new Lines; // outlives whatever logs last
    return *s_lines;
}

class CapturingLogger : public NlOrbLogging::Logger
{
public:
    CapturingLogger() { m_threshold = NlOrbLogging::Verbose; }

    void InitializeA(const char*, const char*, int, unsigned) override {}
    void Initialize(const wchar_t*, const wchar_t*, int, unsigned) override {}
    void Shutdown() override {}
    void Flush() override {}

    bool IsFiltered(int level) override
    {
        const std::lock_guard lock(TheLines().lock);
        return level > TheLines().threshold;
    }

    void LogV(int level, const wchar_t* format, va_list arguments) override
    {
        const Platform::LastErrorGuard guard;
        std::wstring text(kCapacity, L'\0');
        const int length = Platform::Format(text.data(), text.size(), format, arguments);
        text.resize(static_cast<std::size_t>(std::max(length, 0)));
        Keep(level, Text::ToUtf8(text));
    }

    void LogVA(int level, const char* format, va_list arguments) override
    {
        const Platform::LastErrorGuard guard;
        std::string text(kCapacity, '\0');
        const int length = Platform::Format(text.data(), text.size(), format, arguments);
        text.resize(static_cast<std::size_t>(std::max(length, 0)));
        Keep(level, std::move(text));
    }

private:
    static constexpr std::size_t kCapacity = 0x20000;

    void Keep(int level, std::string text)
    {
        Lines& lines = TheLines();
        const std::lock_guard lock(lines.lock);
        if (level > lines.threshold)
            return;
        lines.logged.push_back({level, std::move(text)});
        const auto expected = std::find(lines.expected.begin(), lines.expected.end(), lines.logged.back());
        if (expected != lines.expected.end())
            lines.expected.erase(expected);
        else if (level <= NlOrbLogging::Error)
            lines.unexpected.push_back(lines.logged.back());
    }
};

class Watch : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override
    {
        Lines& lines = TheLines();
        const std::lock_guard lock(lines.lock);
        lines.logged.clear();
        lines.expected.clear();
        lines.unexpected.clear();
        lines.threshold = NlOrbLogging::Verbose;
    }

    void OnTestEnd(const testing::TestInfo& test) override
    {
        Lines& lines = TheLines();
        const std::lock_guard lock(lines.lock);
        for (const LogLine& line : lines.unexpected)
            ADD_FAILURE() << "unexpected in the log: " << line;
        for (const LogLine& line : lines.expected)
            if (!test.result()->Skipped())
                ADD_FAILURE() << "missing in the log: " << line;
    }
};

} // namespace

std::ostream& operator<<(std::ostream& stream, const LogLine& line)
{
    return stream << line.level << " \"" << line.text << '"';
}

void LogCapture::Expect(int level, std::string text)
{
    const std::lock_guard lock(TheLines().lock);
    TheLines().expected.push_back({level, std::move(text)});
}

std::vector<LogLine> LogCapture::Take()
{
    const std::lock_guard lock(TheLines().lock);
    TheLines().unexpected.clear();
    return std::exchange(TheLines().logged, {});
}

std::vector<LogLine> LogCapture::Take(int highest)
{
    std::vector<LogLine> lines = Take();
    lines.erase(std::remove_if(lines.begin(), lines.end(), [=](const LogLine& line) { return line.level > highest; }),
                lines.end());
    return lines;
}

void LogCapture::SetThreshold(int level)
{
    const std::lock_guard lock(TheLines().lock);
    TheLines().threshold = level;
}

void LogCapture::Install()
{
    static bool s_watching = false;
    if (!s_watching)
    {
        s_watching = true;
        testing::UnitTest::GetInstance()->listeners().Append(new Watch);
    }
    NlOrbLogging::ReplaceLogger(std::make_unique<CapturingLogger>());
}
