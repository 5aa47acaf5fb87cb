#include "settings/binding/DelayedSave.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

#include <future>
#include <vector>

using StrataSettings::DelayedSave;
using testing::ElementsAre;

namespace
{

constexpr FunctionLog kLog(L"DelayedSave");
constexpr std::chrono::hours kNever(1);

} // namespace

TEST(DelayedSaveTest, WhatWaitsAtTheEndIsSavedOnceInOrder)
{
    std::vector<std::string> saved;
    {
        DelayedSave delayed(
            kLog, [&](const std::string& sid) { saved.push_back(sid); }, kNever);
        for (const char* sid : {"S-2", "S-1", "S-2"})
            delayed.Request(sid);
        EXPECT_TRUE(delayed.IsWaiting("S-1"));
        EXPECT_TRUE(saved.empty());
    }
    EXPECT_THAT(saved, ElementsAre("S-1", "S-2"));
    EXPECT_THAT(LogCapture::Take(),
                testing::IsSupersetOf({LogLine{5, "DelayedSave: entering"}, LogLine{5, "DelayedSave: leaving"},
                                       LogLine{5, "DelayedSave: Now saving sid S-1"}}));
}

TEST(DelayedSaveTest, EachTickSavesOneScopeOnTheThread)
{
    std::promise<std::thread::id> first;
    std::promise<std::thread::id> second;
    DelayedSave delayed(
        kLog, [&](const std::string& sid) { (sid == "S-1" ? first : second).set_value(std::this_thread::get_id()); },
        std::chrono::milliseconds(1));
    EXPECT_EQ(DelayedSave::Clock::time_point(), delayed.LastSave());
    delayed.Request("S-2");
    delayed.Request("S-1");
    EXPECT_NE(std::this_thread::get_id(), first.get_future().get());
    EXPECT_NE(std::this_thread::get_id(), second.get_future().get());
    EXPECT_NE(DelayedSave::Clock::time_point(), delayed.LastSave());
}
