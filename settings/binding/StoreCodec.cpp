#include "settings/binding/StoreCodec.h"

#include "settings/binding/StoreString.h"

#include <limits>

namespace StrataSettings
{

namespace
{

template <class Stored, class Get, class Take>
OrbStrataResult ReadNumber(Get get, OrbStrataHandle handle, const wchar_t* key, Take take)
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const Stored stored = get(handle, key, Stored{}, &result);
    if (result == ORB_STRATA_SUCCESS)
        take(stored);
    return result;
}

template <class Char, class Get>
OrbStrataResult ReadString(Get get, OrbStrataHandle handle, const wchar_t* key, std::basic_string<Char>& value)
{
    static constexpr Char kEmpty[1] = {};
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const StoreString<Char> text(get(handle, key, kEmpty, &result));
    if (result != ORB_STRATA_SUCCESS)
        return result;
    if (!text)
        return ORB_STRATA_STORE_FAILED;
    value = text.get();
    return ORB_STRATA_SUCCESS;
}

} // namespace

OrbStrataResult StoreCodec<bool>::Read(OrbStrataHandle handle, const wchar_t* key, bool& value)
{
    return ReadNumber<bool>(
        OrbStrata_GetBool, handle, key, [&](bool stored) { value = stored; });
}

OrbStrataResult StoreCodec<bool>::Write(OrbStrataHandle handle, const wchar_t* key, bool value)
{
    return OrbStrata_SetBool(handle, key, value);
}

OrbStrataResult StoreCodec<int>::Read(OrbStrataHandle handle, const wchar_t* key, int& value)
{
    return ReadNumber<std::int32_t>(
        OrbStrata_GetInt32, handle, key, [&](std::int32_t stored) { value = stored; });
}

OrbStrataResult StoreCodec<int>::Write(OrbStrataHandle handle, const wchar_t* key, int value)
{
    return OrbStrata_SetInt32(handle, key, value);
}

OrbStrataResult StoreCodec<std::int64_t>::Read(OrbStrataHandle handle, const wchar_t* key, std::int64_t& value)
{
    return ReadNumber<std::int64_t>(
        OrbStrata_GetInt64, handle, key, [&](std::int64_t stored) { value = stored; });
}

OrbStrataResult StoreCodec<std::int64_t>::Write(OrbStrataHandle handle, const wchar_t* key, std::int64_t value)
{
    return OrbStrata_SetInt64(handle, key, value);
}

OrbStrataResult StoreCodec<std::string>::Read(OrbStrataHandle handle, const wchar_t* key, std::string& value)
{
    return ReadString(OrbStrata_GetStringUtf8, handle, key, value);
}

OrbStrataResult StoreCodec<std::string>::Write(OrbStrataHandle handle, const wchar_t* key, const std::string& value)
{
    return OrbStrata_SetStringUtf8(handle, key, value.c_str());
}

OrbStrataResult StoreCodec<std::wstring>::Read(OrbStrataHandle handle, const wchar_t* key, std::wstring& value)
{
    return ReadString(OrbStrata_GetString, handle, key, value);
}

OrbStrataResult StoreCodec<std::wstring>::Write(OrbStrataHandle handle, const wchar_t* key, const std::wstring& value)
{
    return OrbStrata_SetString(handle, key, value.c_str());
}

OrbStrataResult StoreCodec<Minutes>::Read(OrbStrataHandle handle, const wchar_t* key, Minutes& value)
{
    std::int64_t count = 0;
    const OrbStrataResult result = StoreCodec<std::int64_t>::Read(handle, key, count);
    if (result != ORB_STRATA_SUCCESS)
        return result;
    if (count < std::numeric_limits<int>::min() || count > std::numeric_limits<int>::max())
        return ORB_STRATA_WRONG_TYPE;
    value = Minutes(static_cast<int>(count));
    return result;
}

OrbStrataResult StoreCodec<Minutes>::Write(OrbStrataHandle handle, const wchar_t* key, Minutes value)
{
    return OrbStrata_SetInt64(handle, key, value.count());
}

OrbStrataResult StoreCodec<Seconds>::Read(OrbStrataHandle handle, const wchar_t* key, Seconds& value)
{
    return ReadNumber<std::int64_t>(
        OrbStrata_GetInt64, handle, key, [&](std::int64_t stored) { value = Seconds(stored); });
}

OrbStrataResult StoreCodec<Seconds>::Write(OrbStrataHandle handle, const wchar_t* key, Seconds value)
{
    return OrbStrata_SetInt64(handle, key, value.count());
}

OrbStrataResult StoreCodec<TimePoint>::Read(OrbStrataHandle handle, const wchar_t* key, TimePoint& value)
{
    return ReadNumber<std::int64_t>(
        OrbStrata_GetInt64, handle, key, [&](std::int64_t stored) { value = TimePoint(Ticks(stored)); });
}

OrbStrataResult StoreCodec<TimePoint>::Write(OrbStrataHandle handle, const wchar_t* key, TimePoint value)
{
    return OrbStrata_SetInt64(handle, key, value.time_since_epoch().count());
}

} // namespace StrataSettings
