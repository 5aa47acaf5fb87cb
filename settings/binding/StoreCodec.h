#pragma once

#include "settings/binding/SettingArrayItem.h"
#include "settings/binding/StoreTypes.h"
#include "settings/binding/StrataObject.h"

#include <set>
#include <string>
#include <type_traits>
#include <utility>

namespace StrataSettings
{

/// How a value type stands in the store, in both directions. `Read` changes `value` only when it answers 0.
template <class T>
struct StoreCodec;

template <>
struct StoreCodec<bool>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, bool& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, bool value);
};

template <>
struct StoreCodec<int>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, int& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, int value);
};

template <>
struct StoreCodec<std::int64_t>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, std::int64_t& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, std::int64_t value);
};

template <>
struct StoreCodec<std::string>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, std::string& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, const std::string& value);
};

template <>
struct StoreCodec<std::wstring>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, std::wstring& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, const std::wstring& value);
};

/// Minutes are the narrowest duration that is stored widened; a count beyond `int` is no value of theirs.
template <>
struct StoreCodec<Minutes>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, Minutes& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, Minutes value);
};

template <>
struct StoreCodec<Seconds>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, Seconds& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, Seconds value);
};

template <>
struct StoreCodec<TimePoint>
{
    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, TimePoint& value);
    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, TimePoint value);
};

/// A set is an array of records, one for each element in the set's order. An absent key and a value that is no array
/// read as an empty set, so a read never answers "not found".
template <class Item>
struct StoreCodec<std::set<Item>>
{
    static_assert(std::is_base_of_v<SettingArrayItem, Item>);

    struct Content
    {
        std::set<Item> items;
        bool whole = false;                          ///< No record lacked a field or equalled another one.
        OrbStrataResult result = ORB_STRATA_SUCCESS; ///< Why the records could not be read, else 0.
    };

    static Content FromArray(const StrataObject& array)
    {
        Content content;
        std::size_t records = 0;
        bool complete = true;
        const bool isArray = array.ForEach([&](const StrataObject& record) {
            content.items.insert(content.items.end(), Item(record));
            complete = complete && record.ReadWhole();
            content.result = content.result != ORB_STRATA_SUCCESS ? content.result : record.Failure();
            ++records;
        });
        content.whole = isArray && complete && content.items.size() == records;
        content.result = content.result != ORB_STRATA_SUCCESS ? content.result : array.Failure();
        return content;
    }

    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, std::set<Item>& value)
    {
        bool whole = true;
        return Read(handle, key, value, whole);
    }

    static OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, std::set<Item>& value, bool& whole)
    {
        OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
        const StrataObject array(OrbStrata_GetObject(handle, key, &result));
        if (result == ORB_STRATA_NOT_FOUND)
        {
            value.clear();
            return ORB_STRATA_SUCCESS;
        }
        if (result != ORB_STRATA_SUCCESS || !array.Raw())
            return result != ORB_STRATA_SUCCESS ? result : OrbStrataResult{ORB_STRATA_INVALID_HANDLE};
        Content content = FromArray(array);
        if (content.result != ORB_STRATA_SUCCESS)
            return content.result;
        value = std::move(content.items);
        whole = content.whole;
        return ORB_STRATA_SUCCESS;
    }

    static OrbStrataResult Write(OrbStrataHandle handle, const wchar_t* key, const std::set<Item>& value)
    {
        StrataObject array = StrataObject::Array();
        for (const Item& item : value)
        {
            StrataObject record = StrataObject::Record();
            if (!item.WriteTo(record) || !array.PushBack(record))
                return ORB_STRATA_STORE_FAILED;
        }
        return OrbStrata_SetObject(handle, key, array.Raw());
    }
};

} // namespace StrataSettings
