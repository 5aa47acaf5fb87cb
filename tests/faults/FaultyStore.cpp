#include "tests/faults/FaultyStore.h"

#include <atomic>
#include <iterator>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

namespace
{

struct Function
{
    std::atomic<int> calls{0};
    std::atomic<bool> failed{false};
    std::optional<StoreFault> fault; // under State::mutex
};

#define NL_COUNT(result, name, parameters) +1
constexpr std::size_t kCount = 0 NL_ORB_STRATA_FUNCTIONS(NL_COUNT);
#undef NL_COUNT

struct State
{
    const OrbStrataTable real = g_orbStrata;
    std::mutex mutex;
    Function functions[kCount];

    /// Counts a call, and tells how it has to fail.
    std::optional<StoreFault> Enter(std::size_t number)
    {
        Function& function = functions[number];
        const int call = ++function.calls;
        const std::lock_guard lock(mutex);
        const std::optional<StoreFault>& fault = function.fault;
        if (!fault || call < fault->first || (fault->count != 0 && call >= fault->first + fault->count))
            return std::nullopt;
        function.failed = true;
        return fault;
    }
};

State* g_state = nullptr;

template <class Value>
constexpr bool kIsText = std::is_same_v<Value, char*> || std::is_same_v<Value, wchar_t*>;

/// What a failing read is asked instead: nothing that is there, so that it answers a copy of its default.
template <class Argument>
Argument Elsewhere(Argument argument)
{
    if constexpr (std::is_same_v<Argument, OrbStrataHandle> || std::is_same_v<Argument, const OrbStrataObject*>)
        return nullptr;
    else if constexpr (std::is_same_v<Argument, const char*>)
        return "not to be used";
    else if constexpr (std::is_same_v<Argument, const wchar_t*>)
        return L"not to be used";
    else
        return argument;
}

template <class Result, class Argument>
void TakeDefault(Argument argument, Result& value)
{
    if constexpr (std::is_same_v<Argument, Result> && std::is_arithmetic_v<Result>)
        value = argument;
}

template <class Argument>
bool Report(Argument argument, OrbStrataResult code)
{
    if constexpr (std::is_same_v<Argument, OrbStrataResult*>)
        *argument = code;
    return std::is_same_v<Argument, OrbStrataResult*>;
}

template <auto Entry, std::size_t Number>
struct Faulty;

template <class Result, class... Arguments, Result (NL_SUITE_CALL* OrbStrataTable::*Entry)(Arguments...),
          std::size_t Number>
struct Faulty<Entry, Number>
{
    static constexpr bool kReports = (std::is_same_v<Arguments, OrbStrataResult*> || ...);
    static constexpr bool kAnswersCode = std::is_same_v<Result, OrbStrataResult> && !kReports;

    static constexpr FaultyStore::Trait Trait(const char* name)
    {
        return {name, !std::is_void_v<Result>, kReports || kAnswersCode, kAnswersCode, std::is_pointer_v<Result>};
    }

    static Result NL_SUITE_CALL Call(Arguments... arguments)
    {
        const std::optional<StoreFault> fault = g_state->Enter(Number);
        if constexpr (!std::is_void_v<Result>)
        {
            if (fault)
                return Fail(*fault, arguments...);
        }
        return (g_state->real.*Entry)(arguments...);
    }

    static Result Fail(const StoreFault& fault, Arguments... arguments)
    {
        Result value{};
        if (fault.carriedOut)
            value = (g_state->real.*Entry)(arguments...);
        else if constexpr (kIsText<Result>)
        {
            if (fault.code != ORB_STRATA_SUCCESS)
                value = (g_state->real.*Entry)(Elsewhere(arguments)...);
        }
        else
            (TakeDefault(arguments, value), ...);

        (Report(arguments, fault.code), ...);
        if constexpr (kAnswersCode)
            return fault.code;
        else if constexpr (kReports && std::is_same_v<Result, bool>)
            return !value;
        else if constexpr (kReports && std::is_integral_v<Result>)
            return static_cast<Result>(~value);
        else
            return value;
    }
};

#define NL_FAULTY_NUMBER(name) static_cast<std::size_t>(StoreFunction::k##name)
#define NL_FAULTY_ENTRY(result, name, parameters) Faulty<&OrbStrataTable::name, NL_FAULTY_NUMBER(name)>::Call,
#define NL_FAULTY_TRAIT(result, name, parameters) Faulty<&OrbStrataTable::name, NL_FAULTY_NUMBER(name)>::Trait(#name),

constexpr FaultyStore::Trait kTraits[] = {NL_ORB_STRATA_FUNCTIONS(NL_FAULTY_TRAIT)};

Function& Of(StoreFunction function)
{
    return g_state->functions[static_cast<std::size_t>(function)];
}

} // namespace

FaultyStore::FaultyStore()
{
    g_state = new State;
    g_orbStrata = {NL_ORB_STRATA_FUNCTIONS(NL_FAULTY_ENTRY)};
}

FaultyStore::~FaultyStore()
{
    g_orbStrata = g_state->real;
    delete std::exchange(g_state, nullptr);
}

void FaultyStore::Fail(StoreFunction function, const StoreFault& fault)
{
    const std::lock_guard lock(g_state->mutex);
    Of(function).calls = 0;
    Of(function).failed = false;
    Of(function).fault = fault;
}

void FaultyStore::Work(StoreFunction function)
{
    const std::lock_guard lock(g_state->mutex);
    Of(function).fault.reset();
}

void FaultyStore::Work()
{
    const std::lock_guard lock(g_state->mutex);
    for (Function& function : g_state->functions)
        function.fault.reset();
}

int FaultyStore::Calls(StoreFunction function) const
{
    return Of(function).calls;
}

bool FaultyStore::HasFailed(StoreFunction function) const
{
    return Of(function).failed;
}

const FaultyStore::Trait& FaultyStore::TraitOf(StoreFunction function)
{
    return kTraits[static_cast<std::size_t>(function)];
}

std::size_t FaultyStore::FunctionCount()
{
    return std::size(kTraits);
}
