#include "platform/NamedMutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace
{

using Platform::NamedMutex;
using Wait = NamedMutex::Wait;

constexpr const wchar_t* kMutexName = L"Local\\Veridan_NamedMutexTest";

TEST(NamedMutex, ExcludesOtherHandlesOfTheSameName)
{
    NamedMutex first;
    NamedMutex second;
    ASSERT_EQ(first.Create(kMutexName, nullptr), 0U);
    ASSERT_EQ(second.Create(kMutexName, nullptr), 0U);
    ASSERT_EQ(first.Lock(0), Wait::Acquired);

    std::thread([&] { EXPECT_EQ(second.Lock(10), Wait::TimedOut); }).join();
    first.Unlock();
    std::thread([&] {
        EXPECT_EQ(second.Lock(0), Wait::Acquired);
        second.Unlock();
    }).join();
}

TEST(NamedMutex, IsAbandonedByAThreadThatEndsWithIt)
{
    NamedMutex mutex;
    ASSERT_EQ(mutex.Create(kMutexName, nullptr), 0U);
    std::thread([&] { EXPECT_EQ(mutex.Lock(0), Wait::Acquired); }).join();

    EXPECT_EQ(mutex.Lock(0), Wait::Abandoned);
    mutex.Unlock();
    EXPECT_EQ(mutex.Lock(0), Wait::Acquired);
    mutex.Unlock();
}

TEST(NamedMutex, EndsWithItsLastUser)
{
    NamedMutex late;
    EXPECT_NE(late.Open(kMutexName), 0U);
    {
        NamedMutex first;
        ASSERT_EQ(first.Create(kMutexName, nullptr), 0U);
        {
            NamedMutex second;
            ASSERT_EQ(second.Open(kMutexName), 0U);
        }
        NamedMutex third;
        EXPECT_EQ(third.Open(kMutexName), 0U);
    }
    EXPECT_NE(late.Open(kMutexName), 0U);
    EXPECT_FALSE(late.IsOpen());
}

TEST(NamedMutex, IsOneObjectHoweverManyOpenItAtOnce)
{
    constexpr int kThreads = 8;
    constexpr int kRounds = 200;
    std::atomic<int> holders{0};
    std::atomic<int> overlaps{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
    {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round)
            {
                NamedMutex mutex;
                ASSERT_EQ(mutex.Create(kMutexName, nullptr), 0U);
                ASSERT_EQ(mutex.Lock(10000), Wait::Acquired);
                overlaps += holders.fetch_add(1);
                holders.fetch_sub(1);
                mutex.Unlock();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(overlaps, 0);
}

} // namespace
