// The store's functions: handles, typed values, constraints, subscriptions.

#include "devkit/strata/Api.h"
#include "devkit/strata/CInterface.h"
#include "devkit/strata/Object.h"
#include "devkit/strata/Utf8.h"

#include "text/Utf.h"

#include <cstdlib>
#include <cwchar>
#include <utility>

using namespace Strata;

namespace
{

OrbStrataHandle Open(const wchar_t* store, const wchar_t* sid, const wchar_t* clientId, Access access,
                     OrbStrataResult* result)
{
    OrbStrataHandle handle = nullptr;
    OrbStrataResult answer = ORB_STRATA_INVALID_ARGUMENT;
    if (store && std::wcscmp(store, L"safe") == 0)
        handle = Store::Instance().Open(sid, access, clientId, answer);
    Tell(result, answer);
    return handle;
}

/// Reads the value of a key, which has to be of `type`.
OrbStrataResult Read(OrbStrataHandle handle, const wchar_t* key, OrbStrataType type, Entry& entry)
{
    const OrbStrataResult answer = Store::Instance().Find(handle, key, entry);
    if (answer == kSuccess && entry.type != type)
        return entry.type == ORB_STRATA_TYPE_NONE ? ORB_STRATA_NOT_FOUND : ORB_STRATA_WRONG_TYPE;
    return answer;
}

template <class Number>
Number ReadNumber(OrbStrataHandle handle, const wchar_t* key, OrbStrataType type, Number defaultValue,
                  OrbStrataResult* result)
{
    Entry entry;
    const auto answer = Read(handle, key, type, entry);
    Tell(result, answer);
    return answer == kSuccess ? static_cast<Number>(entry.number) : defaultValue;
}

OrbStrataResult WriteNumber(OrbStrataHandle handle, const wchar_t* key, OrbStrataType type, int64_t value)
{
    return ApplyEdit(handle, key, Edit::Kind::Value, Entry{type, value, nullptr, 0});
}

OrbStrataResult WriteString(OrbStrataHandle handle, const wchar_t* key, OrbStrataType type, const char* value)
{
    Entry entry;
    const auto answer = MakeStringEntry(type, value, entry);
    return answer != kSuccess ? answer : ApplyEdit(handle, key, Edit::Kind::Value, std::move(entry));
}

} // namespace

namespace Strata::Api
{

OrbStrataHandle OrbStrata_OpenHandle(const wchar_t* store, const wchar_t* sid, const wchar_t* clientId,
                                     OrbStrataResult* result)
{
    return Open(store, sid, clientId, Access::Normal, result);
}

OrbStrataHandle OrbStrata_OpenElevatedHandle(const wchar_t* store, const wchar_t* sid, const wchar_t* clientId,
                                             OrbStrataResult* result)
{
    return Open(store, sid, clientId, Access::Elevated, result);
}

void OrbStrata_CloseHandle(OrbStrataHandle handle)
{
    Store::Instance().Close(handle);
}

bool OrbStrata_GetBool(OrbStrataHandle handle, const wchar_t* key, bool defaultValue, OrbStrataResult* result)
{
    return ReadNumber(handle, key, ORB_STRATA_TYPE_BOOL, defaultValue, result);
}

OrbStrataResult OrbStrata_SetBool(OrbStrataHandle handle, const wchar_t* key, bool value)
{
    return WriteNumber(handle, key, ORB_STRATA_TYPE_BOOL, value ? 1 : 0);
}

int32_t OrbStrata_GetInt32(OrbStrataHandle handle, const wchar_t* key, int32_t defaultValue, OrbStrataResult* result)
{
    return ReadNumber(handle, key, ORB_STRATA_TYPE_INT32, defaultValue, result);
}

OrbStrataResult OrbStrata_SetInt32(OrbStrataHandle handle, const wchar_t* key, int32_t value)
{
    return WriteNumber(handle, key, ORB_STRATA_TYPE_INT32, value);
}

int64_t OrbStrata_GetInt64(OrbStrataHandle handle, const wchar_t* key, int64_t defaultValue, OrbStrataResult* result)
{
    return ReadNumber(handle, key, ORB_STRATA_TYPE_INT64, defaultValue, result);
}

OrbStrataResult OrbStrata_SetInt64(OrbStrataHandle handle, const wchar_t* key, int64_t value)
{
    return WriteNumber(handle, key, ORB_STRATA_TYPE_INT64, value);
}

wchar_t* OrbStrata_GetString(OrbStrataHandle handle, const wchar_t* key, const wchar_t* defaultValue,
                             OrbStrataResult* result)
{
    Entry entry;
    const auto answer = Read(handle, key, ORB_STRATA_TYPE_STRING, entry);
    Tell(result, answer);
    return CopyString(answer == kSuccess ? Text::FromUtf8(*entry.text).c_str() : defaultValue);
}

OrbStrataResult OrbStrata_SetString(OrbStrataHandle handle, const wchar_t* key, const wchar_t* value)
{
    const auto text = ToUtf8Strict(value);
    return WriteString(handle, key, ORB_STRATA_TYPE_STRING, text ? text->c_str() : nullptr);
}

char* OrbStrata_GetStringUtf8(OrbStrataHandle handle, const wchar_t* key, const char* defaultValue,
                              OrbStrataResult* result)
{
    Entry entry;
    const auto answer = Read(handle, key, ORB_STRATA_TYPE_UTF8, entry);
    Tell(result, answer);
    return CopyString(answer == kSuccess ? entry.text->c_str() : defaultValue);
}

OrbStrataResult OrbStrata_SetStringUtf8(OrbStrataHandle handle, const wchar_t* key, const char* value)
{
    return WriteString(handle, key, ORB_STRATA_TYPE_UTF8, value);
}

void OrbStrata_FreeString(void* text)
{
    std::free(text);
}

uint32_t OrbStrata_GetConstraints(OrbStrataHandle handle, const wchar_t* key, OrbStrataResult* result)
{
    Entry entry;
    const auto answer = Store::Instance().Find(handle, key, entry);
    Tell(result, answer);
    return answer == kSuccess ? entry.constraints : 0;
}

OrbStrataResult OrbStrata_SetConstraints(OrbStrataHandle handle, const wchar_t* key, uint32_t constraints)
{
    return ApplyEdit(handle, key, Edit::Kind::Constraints, Entry{ORB_STRATA_TYPE_NONE, 0, nullptr, constraints});
}

OrbStrataObject* OrbStrata_GetObject(OrbStrataHandle handle, const wchar_t* key, OrbStrataResult* result)
{
    Entry entry;
    std::unique_ptr<OrbStrataObject> object;
    auto answer = Read(handle, key, ORB_STRATA_TYPE_OBJECT, entry);
    if (answer == kSuccess)
    {
        object = ParseObject(*entry.text);
        answer = object ? kSuccess : OrbStrataResult{ORB_STRATA_STORE_FAILED};
    }
    Tell(result, answer);
    return object.release();
}

OrbStrataResult OrbStrata_SetObject(OrbStrataHandle handle, const wchar_t* key, const OrbStrataObject* object)
{
    if (!object)
        return ORB_STRATA_INVALID_HANDLE;
    return ApplyEdit(handle, key, Edit::Kind::Value,
                     Entry{ORB_STRATA_TYPE_OBJECT, 0, std::make_shared<const std::string>(PrintObject(*object)), 0});
}

OrbStrataSubscription OrbStrata_Subscribe(OrbStrataHandle handle, const wchar_t* key, int32_t changeType,
                                          OrbStrataCallback callback, void* context, OrbStrataResult* result)
{
    OrbStrataSubscription subscription = nullptr;
    OrbStrataResult answer = ORB_STRATA_INVALID_ARGUMENT;
    const bool knownType = changeType == ORB_STRATA_CHANGED || changeType == ORB_STRATA_REMOVED;
    const auto utf8 = ToUtf8Strict(key);
    if (utf8 && !utf8->empty() && callback && knownType)
    {
        subscription =
            Store::Instance().Subscribe(handle, {*utf8, false, changeType, callback, nullptr, context}, answer);
    }
    Tell(result, answer);
    return subscription;
}

void OrbStrata_Unsubscribe(OrbStrataHandle handle, OrbStrataSubscription subscription)
{
    Store::Instance().Unsubscribe(handle, subscription);
}

} // namespace Strata::Api
