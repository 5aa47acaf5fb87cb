// Days on which metrics, flyers or the people at the elevation prompt refuse.

#include "tests/faults/FaultyDay.h"

using testing::IsEmpty;

namespace
{

class SurroundingsFaultTest : public FaultyDay
{
protected:
    /// As a day on which nothing fails: all of this is beside what the plug-in is for.
    void LiveAsOnAGoodDay()
    {
        Live();
        EXPECT_THAT(WrongOnThePages(), IsEmpty());
        EXPECT_EQ(StoredSwitches(), ShownSwitches());
        End();
        LiveTheNextDay();
    }
};

/// The number of the prompt that is declined, and whether all after it are, too.
class DeclinedElevationTest : public FaultyDay, public testing::WithParamInterface<std::tuple<int, bool>>
{};

} // namespace

TEST_F(SurroundingsFaultTest, MetricsThatFailChangeNothing)
{
    FailMetrics(31, 0);
    LiveAsOnAGoodDay();
    EXPECT_THAT(MetricEvents(), IsEmpty());
}

TEST_F(SurroundingsFaultTest, FlyersThatCannotBeMadeChangeNothing)
{
    FailFlyers("NlFlyer_CreateFlyer", 31);
    LiveAsOnAGoodDay();
}

TEST_F(SurroundingsFaultTest, FlyersThatCannotBeUsedChangeNothing)
{
    for (const char* const function : {"NlFlyer_AddButton", "NlFlyer_ShowFlyer", "NlFlyer_CloseFlyer"})
        FailFlyers(function, 31);
    LiveAsOnAGoodDay();
}

TEST_P(DeclinedElevationTest, SavesNothingShowsNothingWrongAndCanBeAskedAgain)
{
    const auto [prompt, others] = GetParam();
    const auto function = StoreFunction::kOrbStrata_OpenElevatedHandle;
    ASSERT_LE(prompt, GoodDay::Get().calls[static_cast<std::size_t>(function)]);
    m_store.Fail(function, {ORB_STRATA_ACCESS_DENIED, false, prompt, others ? 0 : 1});
    Live();
    EXPECT_TRUE(m_store.HasFailed(function));
    EXPECT_EQ(StoredSwitches(), ShownSwitches());
    EXPECT_THAT(WrongOnThePages(), IsEmpty());
    End();
    m_store.Work();
    LiveTheNextDay();
}

INSTANTIATE_TEST_SUITE_P(EachPrompt, DeclinedElevationTest, testing::Combine(testing::Range(1, 6), testing::Bool()));
