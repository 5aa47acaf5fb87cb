#include "delay_load/NlFlyerApi.h"
#include "delay_load/OrbDpApi.h"
#include "delay_load/OrbStrataApi.h"
#include "platform/SharedLibrary.h"

#include <type_traits>

namespace
{

template <class Argument, class Result>
void Fail(Argument argument, Result& result, bool& reported)
{
    if constexpr (std::is_same_v<Argument, OrbStrataResult*>)
    {
        *argument = ORB_STRATA_INVALID_HANDLE;
        reported = true;
    }
    else if constexpr (std::is_same_v<Argument, Result> && std::is_arithmetic_v<Result>)
    {
        result = argument; // the default of a read
    }
}

/// What stands for a function whose library is not loaded.
template <class Function>
struct Unloaded;

template <class Result, class... Arguments>
struct Unloaded<Result(NL_SUITE_CALL*)(Arguments...)>
{
    static Result NL_SUITE_CALL Call(Arguments... arguments)
    {
        if constexpr (!std::is_void_v<Result>)
        {
            Result result{};
            bool reported = false;
            (Fail(arguments, result, reported), ...);
            if constexpr (std::is_same_v<Result, OrbStrataResult>)
                return reported ? result : static_cast<Result>(ORB_STRATA_INVALID_HANDLE);
            else if constexpr (std::is_same_v<Result, std::int32_t>)
                return reported ? result : static_cast<Result>(Platform::SharedLibrary::kErrorModuleNotFound);
            else
                return result;
        }
        else
        {
            (static_cast<void>(arguments), ...);
        }
    }
};

#define NL_UNLOADED_ENTRY(result, name, parameters) Unloaded<decltype(Table::name)>::Call,

} // namespace

template <>
OrbStrataTable UnloadedTable()
{
    using Table = OrbStrataTable;
    return {NL_ORB_STRATA_FUNCTIONS(NL_UNLOADED_ENTRY)};
}

template <>
OrbDpTable UnloadedTable()
{
    using Table = OrbDpTable;
    return {NL_ORB_DP_API_FUNCTIONS(NL_UNLOADED_ENTRY)};
}

template <>
NlFlyerTable UnloadedTable()
{
    using Table = NlFlyerTable;
    return {NL_FLYER_FUNCTIONS(NL_UNLOADED_ENTRY)};
}

OrbStrataTable g_orbStrata = UnloadedTable<OrbStrataTable>();
OrbDpTable g_orbDp = UnloadedTable<OrbDpTable>();
NlFlyerTable g_nlFlyer = UnloadedTable<NlFlyerTable>();
