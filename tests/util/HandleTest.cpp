#include "util/Handle.h"

#include "platform/Format.h"
#include "platform/NamedEvents.h"
#include "tests/support/LogCapture.h"
#include "text/Utf.h"

#include <gmock/gmock.h>

namespace
{

constexpr const wchar_t* kName = L"Local\\Veridan_HandleTest";

class Handle : public testing::Test
{
protected:
    bool Exists() const
    {
        const RAII::Handle probe(m_events.Open(kName));
        return probe.Get() != nullptr;
    }

    Platform::NamedEvents& m_events = Platform::Get<Platform::NamedEvents>();
};

TEST_F(Handle, ClosesWhatItOwnsOnce)
{
    {
        RAII::Handle handle(m_events.Create(kName));
        EXPECT_TRUE(Exists());
        EXPECT_TRUE(handle.Close());
        EXPECT_FALSE(Exists());
        EXPECT_EQ(handle.Get(), nullptr);
        EXPECT_TRUE(handle.Close());
        handle = m_events.Create(kName);
        EXPECT_TRUE(Exists());
    }
    EXPECT_FALSE(Exists());
}

TEST_F(Handle, SignalsItsEvent)
{
    const RAII::Handle event(m_events.Create(kName));
    EXPECT_FALSE(m_events.IsSet(event.Get()));
    RAII::Handle signaller(m_events.Open(kName));
    EXPECT_TRUE(signaller.Signal());
    EXPECT_TRUE(m_events.IsSet(event.Get()));
    EXPECT_FALSE(RAII::Handle().Signal());
}

TEST_F(Handle, AssignmentClosesTheOldOneButRefusesItself)
{
    RAII::Handle handle(m_events.Create(kName));
    const Platform::KernelHandle raw = handle.Get();
    handle = raw;
    EXPECT_EQ(handle.Get(), raw);
    EXPECT_TRUE(Exists());
    const std::vector<LogLine> lines = LogCapture::Take(2);
    ASSERT_EQ(lines.size(), 1U);
    const std::string pointer = Text::ToUtf8(Platform::FormatString(L"%p", raw));
    EXPECT_EQ(lines[0], (LogLine{2, "RAII::Handle::operator =: Invalid assingment, pointers are equal! " + pointer +
                                        "==" + pointer}));

    handle = nullptr;
    EXPECT_FALSE(Exists());
}

} // namespace
