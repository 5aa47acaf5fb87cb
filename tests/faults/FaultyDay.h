#pragma once

#include "tests/faults/Day.h"
#include "tests/faults/FaultyStore.h"
#include "tests/faults/StoreHistory.h"

#include <map>
#include <string>
#include <vector>

/// What a day without a failure is like.
struct GoodDay
{
    /// Lives it, the first time. Not while a test's store is open: SetUpTestSuite() is the place.
    static const GoodDay& Get();

    StoreHistory history;
    std::vector<int> calls;                             // of each of the store's functions
    std::map<std::string, StoreTest::Entries> repeated; // what the store holds after it was lived twice
};

/// A day on which something fails. What is logged then is not its subject.
class FaultyDay : public Day
{
protected:
    static void SetUpTestSuite() { GoodDay::Get(); }

    FaultyDay();
    ~FaultyDay() override;

    /// Where the plug-in has written, each key holds what it held before, or what somebody chose.
    void CheckStore(const char* when);
    void AfterStep(const char* name) override { CheckStore(name); }

    /// Lives another day, on which nothing fails and after which everything is as it should be.
    void LiveTheNextDay();

    FaultyStore m_store{m_strata}; // counts from the plug-in's start
};
