// The store's functions on structured values.

#include "devkit/strata/Api.h"
#include "devkit/strata/CInterface.h"
#include "devkit/strata/Object.h"
#include "devkit/strata/Utf8.h"

#include "text/Utf.h"

#include <utility>

using namespace Strata;

namespace
{

template <class Value>
OrbStrataResult FindField(const OrbStrataObject* object, const wchar_t* name, const Value*& value)
{
    if (!object)
        return ORB_STRATA_INVALID_HANDLE;
    if (!name)
        return ORB_STRATA_INVALID_ARGUMENT;
    if (object->isArray)
        return ORB_STRATA_WRONG_TYPE;
    const auto at = object->fields.find(Text::ToUtf8(name));
    if (at == object->fields.end())
        return ORB_STRATA_NOT_FOUND;
    value = std::get_if<Value>(&at->second);
    return value ? kSuccess : OrbStrataResult{ORB_STRATA_WRONG_TYPE};
}

template <class Value>
Value FieldOr(const OrbStrataObject* object, const wchar_t* name, Value defaultValue, OrbStrataResult* result)
{
    const Value* value = nullptr;
    const auto answer = FindField(object, name, value);
    Tell(result, answer);
    return answer == kSuccess ? *value : defaultValue;
}

OrbStrataResult SetField(OrbStrataObject* object, const wchar_t* name, OrbStrataObject::Field value)
{
    if (!object)
        return ORB_STRATA_INVALID_HANDLE;
    auto utf8 = ToUtf8Strict(name);
    if (!utf8)
        return ORB_STRATA_INVALID_ARGUMENT;
    if (object->isArray)
        return ORB_STRATA_WRONG_TYPE;
    object->fields.insert_or_assign(std::move(*utf8), std::move(value));
    return kSuccess;
}

} // namespace

namespace Strata::Api
{

OrbStrataObject* OrbStrata_CreateObject()
{
    return new OrbStrataObject(false);
}

OrbStrataObject* OrbStrata_CreateArray()
{
    return new OrbStrataObject(true);
}

OrbStrataObject* OrbStrata_CreateObjectFromString(const char* text)
{
    return text ? ParseObject(text).release() : nullptr;
}

void OrbStrata_DeleteObject(OrbStrataObject* object)
{
    delete object;
}

bool OrbStrata_ObjectIsArray(const OrbStrataObject* object)
{
    return object && object->isArray;
}

OrbStrataIterator OrbStrata_ArrayBegin(const OrbStrataObject* array)
{
    return array ? array->elements.data() : nullptr;
}

OrbStrataIterator OrbStrata_ArrayEnd(const OrbStrataObject* array)
{
    return array ? array->elements.data() + array->elements.size() : nullptr;
}

const OrbStrataObject* OrbStrata_IteratorGetAssociatedObject(OrbStrataIterator iterator)
{
    return iterator ? *iterator : nullptr;
}

OrbStrataResult OrbStrata_ArrayPushBack(OrbStrataObject* array, const OrbStrataObject* element)
{
    if (!array || !element)
        return ORB_STRATA_INVALID_HANDLE;
    if (!array->isArray || element->isArray)
        return ORB_STRATA_WRONG_TYPE;
    array->elements.push_back(new OrbStrataObject(*element));
    return kSuccess;
}

bool OrbStrata_ObjectGetBool(const OrbStrataObject* object, const wchar_t* field, bool defaultValue,
                             OrbStrataResult* result)
{
    return FieldOr(object, field, defaultValue, result);
}

OrbStrataResult OrbStrata_ObjectSetBool(OrbStrataObject* object, const wchar_t* field, bool value)
{
    return SetField(object, field, value);
}

int64_t OrbStrata_ObjectGetInt64(const OrbStrataObject* object, const wchar_t* field, int64_t defaultValue,
                                 OrbStrataResult* result)
{
    return FieldOr(object, field, defaultValue, result);
}

OrbStrataResult OrbStrata_ObjectSetInt64(OrbStrataObject* object, const wchar_t* field, int64_t value)
{
    return SetField(object, field, value);
}

char* OrbStrata_ObjectGetStringUtf8(const OrbStrataObject* object, const wchar_t* field, const char* defaultValue,
                                    OrbStrataResult* result)
{
    const std::string* value = nullptr;
    const auto answer = FindField(object, field, value);
    Tell(result, answer);
    return CopyString(answer == kSuccess ? value->c_str() : defaultValue);
}

OrbStrataResult OrbStrata_ObjectSetStringUtf8(OrbStrataObject* object, const wchar_t* field, const char* value)
{
    return value && IsUtf8(value) ? SetField(object, field, std::string(value))
                                  : OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT};
}

} // namespace Strata::Api
