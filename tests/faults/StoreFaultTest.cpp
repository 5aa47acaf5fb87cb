// A day on which one function of the store fails: in its first call, in one in the middle, or in all of them.

#include "tests/faults/FaultyDay.h"

#include <algorithm>
#include <ostream>

namespace
{

enum class Moment
{
    First,
    Middle,
    Always
};

struct Case
{
    StoreFunction function;
    Moment moment;
    OrbStrataResult code;
    bool carriedOut;
};

std::string NameOfCase(const testing::TestParamInfo<Case>& info)
{
    const Case& tested = info.param;
    static constexpr const char* kMoments[] = {"First", "Middle", "Always"};
    const std::string name(FaultyStore::TraitOf(tested.function).name);
    return name.substr(name.find('_') + 1) + kMoments[static_cast<int>(tested.moment)] + std::to_string(tested.code) +
           (tested.carriedOut ? "CarriedOut" : "");
}

void PrintTo(const Case& tested, std::ostream* stream)
{
    *stream << NameOfCase({tested, 0});
}

/// Functions that no page leads to: they are tested with the settings' tree.
constexpr StoreFunction kUnused[] = {StoreFunction::kOrbStrata_SetString, StoreFunction::kOrbStrata_SetStringUtf8,
                                     StoreFunction::kOrbStrata_CreateObjectFromString};

bool IsUsed(StoreFunction function)
{
    return std::find(std::begin(kUnused), std::end(kUnused), function) == std::end(kUnused);
}

/// A read that answers "not found" is to be believed, whatever the store holds.
bool IsBelieved(const Case& fault)
{
    const bool isRead = !FaultyStore::TraitOf(fault.function).isResult;
    return (isRead && fault.code == ORB_STRATA_NOT_FOUND) ||
           (fault.function == StoreFunction::kOrbStrata_ObjectIsArray && fault.moment == Moment::Always);
}

std::vector<Case> Cases()
{
    std::vector<Case> cases;
    for (std::size_t number = 0; number < FaultyStore::FunctionCount(); ++number)
    {
        const auto function = static_cast<StoreFunction>(number);
        const FaultyStore::Trait& trait = FaultyStore::TraitOf(function);
        if (!trait.canFail || !IsUsed(function))
            continue;
        for (const Moment moment : {Moment::First, Moment::Middle, Moment::Always})
            cases.push_back({function, moment, ORB_STRATA_STORE_FAILED, false});
        if (trait.tellsResult)
            for (const OrbStrataResult code : {ORB_STRATA_ACCESS_DENIED, ORB_STRATA_NOT_FOUND})
                cases.push_back({function, Moment::Always, code, false});
        if (trait.tellsResult && trait.givesPointer)
            cases.push_back({function, Moment::Always, ORB_STRATA_SUCCESS, false});
        if (trait.isResult)
            cases.push_back({function, Moment::Always, ORB_STRATA_STORE_FAILED, true});
    }
    return cases;
}

class StoreFaultTest : public FaultyDay, public testing::WithParamInterface<Case>
{
protected:
    void Fail(const Case& fault)
    {
        const int calls = CallsOnAGoodDay();
        const int first = fault.moment == Moment::Middle ? std::max(1, calls / 2) : 1;
        m_store.Fail(fault.function, {fault.code, fault.carriedOut, first, fault.moment == Moment::Always ? 0 : 1});
    }

    int CallsOnAGoodDay() const { return GoodDay::Get().calls[static_cast<std::size_t>(GetParam().function)]; }

    /// Whether the page can know what holds: the store answers reads again, or never failed to.
    bool PageCanKnow() const
    {
        const Case& fault = GetParam();
        return fault.function != StoreFunction::kOrbStrata_Subscribe &&
               (fault.moment != Moment::Always || FaultyStore::TraitOf(fault.function).isResult);
    }

    void AfterStep(const char* name) override
    {
        if (IsBelieved(GetParam()))
            return;
        CheckStore(name);
        if (FaultyStore::TraitOf(GetParam().function).isResult)
            EXPECT_EQ(StoredSwitches(), ShownSwitches()) << name;
    }
};

} // namespace

TEST_P(StoreFaultTest, NothingIsLostOrShownWrongAndTheNextDayIsGood)
{
    ASSERT_LT(0, CallsOnAGoodDay()) << "the day does not use this function";
    Fail(GetParam());
    Live();
    if (IsBelieved(GetParam()))
        return; // it did not crash
    if (PageCanKnow())
        EXPECT_THAT(WrongOnThePages(), testing::IsEmpty());
    End();
    CheckStore("end");
    if (GetParam().moment == Moment::First || GetParam().moment == Moment::Always)
        EXPECT_TRUE(m_store.HasFailed(GetParam().function));

    m_store.Work();
    LiveTheNextDay();
}

INSTANTIATE_TEST_SUITE_P(EachFunction, StoreFaultTest, testing::ValuesIn(Cases()), NameOfCase);
