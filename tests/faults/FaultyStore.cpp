#include "tests/faults/FaultyStore.h"

#include <iterator>
#include <type_traits>

namespace
{

template <class Function>
struct TraitsOf;

template <class Result, class... Arguments>
struct TraitsOf<Result(NL_SUITE_CALL*)(Arguments...)>
{
    static constexpr bool kReports = (std::is_same_v<Arguments, OrbStrataResult*> || ...);
    static constexpr bool kAnswersCode = std::is_same_v<Result, OrbStrataResult> && !kReports;

    static constexpr FaultyStore::Trait Get(const char* name)
    {
        return {name, !std::is_void_v<Result>, kReports || kAnswersCode, kAnswersCode, std::is_pointer_v<Result>};
    }
};

#define NL_FAULTY_TRAIT(result, name, parameters) TraitsOf<decltype(OrbStrataTable::name)>::Get(#name),
constexpr FaultyStore::Trait kTraits[] = {NL_ORB_STRATA_FUNCTIONS(NL_FAULTY_TRAIT)};

} // namespace

FaultyStore::FaultyStore(const StoreTest::StrataControl& control) : m_control(control)
{
    Work();
}

FaultyStore::~FaultyStore()
{
    Work();
}

void FaultyStore::Fail(StoreFunction function, const StoreFault& fault)
{
    Work(function);
    const SuiteFault added{TraitOf(function).name,
                           nullptr,
                           fault.code,
                           static_cast<std::uint32_t>(fault.first),
                           static_cast<std::uint32_t>(fault.count),
                           fault.carriedOut};
    EXPECT_TRUE(m_control.OrbStrataControl_AddFault(&added));
}

void FaultyStore::Work(StoreFunction function)
{
    EXPECT_TRUE(m_control.OrbStrataControl_SetFault(TraitOf(function).name, nullptr, ORB_STRATA_SUCCESS, 0));
}

int FaultyStore::Calls(StoreFunction function) const
{
    return static_cast<int>(m_control.OrbStrataControl_CallsOf(TraitOf(function).name, nullptr));
}

bool FaultyStore::HasFailed(StoreFunction function) const
{
    std::uint32_t failed = 0;
    m_control.OrbStrataControl_CallsOf(TraitOf(function).name, &failed);
    return failed != 0;
}

const FaultyStore::Trait& FaultyStore::TraitOf(StoreFunction function)
{
    return kTraits[static_cast<std::size_t>(function)];
}

std::size_t FaultyStore::FunctionCount()
{
    return std::size(kTraits);
}
