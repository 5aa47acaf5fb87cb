#include "settings/binding/DelayedSave.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

#include <future>
#include <vector>

using StrataSettings::DelayedSave;
using testing::ElementsAre;

namespace
{

constexpr std::chrono::hours kNever(1);

} // namespace

TEST(DelayedSaveTest, WhatWaitsAtTheEndIsSavedOnceInOrder)
{
    std::vector<std::string> saved;
    {
        DelayedSave delayed(
            MethodLog(L"A", L"B"), [&](const std::string& sid) { saved.push_back(sid); }, kNever);
        for (const char* sid : {"S-2", "S-1", "S-2"})
            delayed.Request(sid);
        EXPECT_TRUE(delayed.IsWaiting("S-1"));
        EXPECT_TRUE(saved.empty());
    }
    EXPECT_THAT(saved, ElementsAre("S-1", "S-2"));
    EXPECT_THAT(LogCapture::Take(), testing::IsSupersetOf({LogLine{5, "A::B: entering"}, LogLine{5, "A::B: leaving"},
                                                           LogLine{5, "A::B: Now saving sid S-1"}}));
}

TEST(DelayedSaveTest, EachTickSavesOneScopeOnTheThread)
{
    using Clock = DelayedSave::Clock;
    constexpr std::chrono::milliseconds kTick(5);
    std::promise<Clock::time_point> first;
    std::promise<Clock::time_point> second;
    const std::thread::id caller = std::this_thread::get_id();
    DelayedSave delayed(
        MethodLog(L"A", L"B"),
        [&](const std::string& sid) {
            EXPECT_NE(caller, std::this_thread::get_id());
            (sid == "S-1" ? first : second).set_value(Clock::now());
        },
        kTick);
    EXPECT_EQ(Clock::time_point(), delayed.LastSave());
    const Clock::time_point requested = Clock::now();
    for (const char* sid : {"S-1", "S-2"})
        delayed.Request(sid);
    const Clock::time_point saved = first.get_future().get();
    EXPECT_GE(second.get_future().get() - saved, kTick);
    EXPECT_GE(delayed.LastSave(), requested);
}
