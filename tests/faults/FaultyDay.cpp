#include "tests/faults/FaultyDay.h"

#include "logging/Log.h"
#include "tests/support/LogCapture.h"

using testing::IsEmpty;

namespace
{

class RecordedDay : public FaultyDay
{
public:
    GoodDay Record()
    {
        AfterStep("before");
        Live();
        End();
        AfterStep("end");
        for (std::size_t number = 0; number < FaultyStore::FunctionCount(); ++number)
            m_day.calls.push_back(m_store.Calls(static_cast<StoreFunction>(number)));
        Live();
        End();
        for (const char* sid : {kSystem, kUser})
            m_day.repeated[sid] = Contents(sid);
        EXPECT_THAT(LogCapture::Take(), IsEmpty());
        return m_day;
    }

private:
    void TestBody() override {}
    void AfterStep(const char*) override
    {
        for (const char* sid : {kSystem, kUser})
            m_day.history.Add(sid, Contents(sid));
    }

    GoodDay m_day;
};

} // namespace

const GoodDay& GoodDay::Get()
{
    static const GoodDay s_day = RecordedDay().Record();
    return s_day;
}

FaultyDay::FaultyDay()
{
    LogCapture::SetThreshold(NlOrbLogging::Error);
    LogCapture::Take();
}

FaultyDay::~FaultyDay()
{
    End();
    LogCapture::Take();
}

void FaultyDay::CheckStore(const char* when)
{
    if (TakeWrites().empty())
        return;
    for (const char* sid : {kSystem, kUser})
        EXPECT_THAT(GoodDay::Get().history.WrongIn(sid, Contents(sid)), IsEmpty()) << when;
}

void FaultyDay::LiveTheNextDay()
{
    Live();
    EXPECT_THAT(WrongOnThePages(), IsEmpty());
    End();
    for (auto [sid, expected] : GoodDay::Get().repeated)
    {
        Entries stored = Contents(sid.c_str());
        for (Entries* entries : {&stored, &expected})
            entries->erase(L"windows.browsing_protection.internal.reinstall_extensions"); // counts what succeeded
        StoreHistory only;
        only.Add(sid, expected);
        EXPECT_THAT(only.WrongIn(sid, stored), IsEmpty());
    }
}
