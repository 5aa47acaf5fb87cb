#include "tests/devkit/strata/StoreFixture.h"

#include <atomic>
#include <future>

using Kind = Opened::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Notification = StoreFixture;

TEST_F(Notification, OtherHandlesHearRealChangesInOrderAndTheWriterDoesNot)
{
    Deliveries heard;
    Deliveries own;
    Deliveries elsewhere;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    const Opened otherScope(Kind::Normal, L"S-1-5-21-1");
    for (const wchar_t* key : {L"a", L"b"})
    {
        for (const int32_t type : {ORB_STRATA_CHANGED, ORB_STRATA_REMOVED})
        {
            heard.Subscribe(reader, key, type);
            own.Subscribe(writer, key, type);
            elsewhere.Subscribe(otherScope, key, type);
        }
    }
    OrbStrata_SetInt32(writer, L"a", 1);
    OrbStrata_SetInt32(writer, L"a", 1);
    SetObject(writer, L"b", R"([{"x":1}])");
    SetObject(writer, L"b", R"([ {"x" : 1} ])");
    OrbStrata_SetConstraints(writer, L"a", 1);
    OrbStrata_SetConstraints(writer, L"a", 1);
    OrbStrata_SetInt64(writer, L"a", 1);
    OrbStrata_SetBool(writer, L"c", true);
    OrbStrataControl_Remove(writer, L"a");
    OrbStrataControl_Remove(writer, L"a");
    OrbStrata_SetConstraints(writer, L"a", 2);
    OrbStrataControl_Remove(writer, L"a"); // which holds no value
    EXPECT_THAT(heard.Take(), ElementsAre("a changed", R"(b changed [{"x":1}])", "a changed", "a changed", "a removed",
                                          "a changed", "a removed"));
    EXPECT_THAT(own.Take(), IsEmpty());
    EXPECT_THAT(elsewhere.Take(), IsEmpty());
}

TEST_F(Notification, WhatIsHeldIsToldWhenItIsLetGo)
{
    Deliveries heard;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    heard.Subscribe(reader, L"key", ORB_STRATA_CHANGED);
    OrbStrataControl_HoldDelivery(true);
    OrbStrata_SetInt32(writer, L"key", 1);
    EXPECT_FALSE(OrbStrataControl_WaitForDelivery(20));
    OrbStrataControl_HoldDelivery(false);
    EXPECT_THAT(heard.Take(), ElementsAre("key changed"));
}

TEST_F(Notification, SubscriberHearsItsTypeOfChangeFromThenOnUntilItLeaves)
{
    Deliveries removals;
    Deliveries changes;
    Deliveries watched;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    OrbStrata_SetInt32(writer, L"key", 0);
    removals.Subscribe(reader, L"key", ORB_STRATA_REMOVED);
    const auto subscription = changes.Subscribe(reader, L"key", ORB_STRATA_CHANGED);
    watched.Watch(reader, L"k");
    OrbStrata_SetInt32(writer, L"key", 1);
    OrbStrata_SetInt32(writer, L"knee", 1);
    OrbStrataControl_Remove(writer, L"key");
    EXPECT_THAT(changes.Take(), ElementsAre("key changed"));
    EXPECT_THAT(removals.Take(), ElementsAre("key removed"));
    EXPECT_THAT(watched.Take(), ElementsAre("key changed 1", "knee changed 1", "key removed"));
    OrbStrata_Unsubscribe(reader, subscription);
    OrbStrata_SetInt32(writer, L"key", 2);
    EXPECT_THAT(changes.Take(), IsEmpty());
    EXPECT_EQ(changes.Subscribe(reader, L"key", 3), nullptr);
}

TEST_F(Notification, CallbackReadsAndWritesTheStore)
{
    Deliveries heard;
    Deliveries answers;
    std::atomic<int32_t> seen = 0;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Product);
    heard.onDelivery = [&] {
        seen = OrbStrata_GetInt32(reader, L"question", 0, nullptr);
        OrbStrata_SetInt32(reader, L"answer", 42);
    };
    heard.Subscribe(reader, L"question", ORB_STRATA_CHANGED);
    answers.Subscribe(writer, L"answer", ORB_STRATA_CHANGED);
    OrbStrata_SetInt32(writer, L"question", 7);
    EXPECT_THAT(answers.WaitFor(1), ElementsAre("answer changed"));
    EXPECT_EQ(seen, 7);
    OrbStrata_Unsubscribe(reader, nullptr);
}

/// A subscriber whose callback waits until it is let go.
struct Blocked
{
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> returned = false;
    Deliveries deliveries;

    explicit Blocked(OrbStrataHandle handle)
    {
        deliveries.onDelivery = [this] {
            entered.set_value();
            release.get_future().wait_for(kPatience);
            returned = true;
        };
        subscription = deliveries.Subscribe(handle, L"key", ORB_STRATA_CHANGED);
    }
    OrbStrataSubscription subscription;
};

TEST_F(Notification, WatcherIsToldWhatTheKeyHeldAfterEachWriteHoweverLateItIs)
{
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    Deliveries watched;
    watched.Watch(reader, L"watched");
    Blocked blocked(reader);
    OrbStrata_SetInt32(writer, L"key", 0);
    blocked.entered.get_future().wait();
    OrbStrata_SetInt32(writer, L"watched", 1);
    OrbStrata_SetStringUtf8(writer, L"watched", "two");
    OrbStrataControl_Remove(writer, L"watched");
    OrbStrata_SetInt32(writer, L"watched", 3);
    blocked.release.set_value();
    EXPECT_THAT(watched.Take(),
                ElementsAre("watched changed 1", "watched changed two", "watched removed", "watched changed 3"));
}

TEST_F(Notification, WritesGoOnWhileACallbackRuns)
{
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    Blocked blocked(reader);
    OrbStrata_SetInt32(writer, L"key", 1);
    blocked.entered.get_future().wait();
    EXPECT_EQ(OrbStrata_SetInt32(writer, L"other", 2), 0U);
    EXPECT_EQ(OrbStrata_GetInt32(reader, L"other", 0, nullptr), 2);
    EXPECT_FALSE(OrbStrataControl_WaitForDelivery(1));
    blocked.release.set_value();
    EXPECT_TRUE(OrbStrataControl_WaitForDelivery(20000));
    EXPECT_TRUE(blocked.returned);
}

TEST_F(Notification, LeavingWaitsForTheRunningCallback)
{
    for (const bool byClosing : {false, true})
    {
        const Opened writer(Kind::Product);
        Opened reader(Kind::Normal);
        Blocked blocked(reader);
        OrbStrata_SetInt32(writer, L"key", byClosing ? 1 : 2);
        blocked.entered.get_future().wait();
        auto left = std::async(std::launch::async, [&] {
            byClosing ? reader.Close() : OrbStrata_Unsubscribe(reader, blocked.subscription);
            return blocked.returned.load();
        });
        EXPECT_EQ(left.wait_for(std::chrono::milliseconds(1)), std::future_status::timeout);
        blocked.release.set_value();
        EXPECT_TRUE(left.get());
    }
}

TEST_F(Notification, CallbackMayEndAnotherSubscription)
{
    Deliveries first;
    Deliveries second;
    const Opened writer(Kind::Product);
    const Opened reader(Kind::Normal);
    OrbStrataSubscription secondSubscription = nullptr;
    first.onDelivery = [&] { OrbStrata_Unsubscribe(reader, secondSubscription); };
    first.Subscribe(reader, L"key", ORB_STRATA_CHANGED);
    secondSubscription = second.Subscribe(reader, L"key", ORB_STRATA_CHANGED);
    OrbStrata_SetInt32(writer, L"key", 1);
    EXPECT_THAT(first.Take(), ElementsAre("key changed"));
    EXPECT_THAT(second.Take(), IsEmpty());
}

TEST_F(Notification, ManyThreadsWriteReadAndSubscribeAtOnce)
{
    constexpr int kThreads = 4;
    constexpr int kRounds = 100;
    Deliveries heard;
    const Opened watcher(Kind::Normal);
    heard.Watch(watcher, L"");
    std::vector<std::future<void>> threads;
    for (int thread = 0; thread < kThreads; ++thread)
    {
        threads.push_back(std::async(
            std::launch::async,
            [thread] {
                const std::wstring key = L"key" + std::to_wstring(thread);
                for (int round = 0; round < kRounds; ++round)
                {
                    Deliveries own;
                    const Opened handle(Kind::Product);
                    own.Subscribe(handle, key.c_str(), ORB_STRATA_CHANGED);
                    EXPECT_EQ(OrbStrata_SetInt32(handle, key.c_str(), round), 0U);
                    EXPECT_EQ(OrbStrata_GetInt32(handle, key.c_str(), -1, nullptr), round);
                }
            }));
    }
    for (auto& thread : threads)
        thread.get();
    EXPECT_EQ(heard.Take().size(), static_cast<std::size_t>(kThreads * kRounds));
}

} // namespace
