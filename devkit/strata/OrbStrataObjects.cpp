// The store's functions on structured values.

#include "devkit/strata/CInterface.h"
#include "devkit/strata/Object.h"
#include "devkit/strata/json/Utf8.h"

#include "platform/Text.h"

#include <utility>

using namespace Strata;

namespace
{

bool Fails(Function function)
{
    return Store::Instance().Fault(function) != Success;
}

template <class Value>
OrbStrataResult FindField(Function function, const OrbStrataObject* object, const wchar_t* name, const Value*& value)
{
    if (const auto fault = Store::Instance().Fault(function, name); fault != Success)
        return fault;
    if (object == nullptr)
        return ORB_STRATA_INVALID_HANDLE;
    if (name == nullptr)
        return ORB_STRATA_INVALID_ARGUMENT;
    if (object->isArray)
        return ORB_STRATA_WRONG_TYPE;
    const auto at = object->fields.find(Platform::ToUtf8(name));
    if (at == object->fields.end())
        return ORB_STRATA_NOT_FOUND;
    value = std::get_if<Value>(&at->second);
    return value != nullptr ? Success : OrbStrataResult{ORB_STRATA_WRONG_TYPE};
}

template <class Value>
Value FieldOr(Function function, const OrbStrataObject* object, const wchar_t* name, Value defaultValue,
              OrbStrataResult* result)
{
    const Value* value = nullptr;
    const auto answer = FindField(function, object, name, value);
    Tell(result, answer);
    return answer == Success ? *value : defaultValue;
}

OrbStrataResult SetField(Function function, OrbStrataObject* object, const wchar_t* name, OrbStrataObject::Field value)
{
    if (const auto fault = Store::Instance().Fault(function, name); fault != Success)
        return fault;
    if (object == nullptr)
        return ORB_STRATA_INVALID_HANDLE;
    auto utf8 = ToUtf8Strict(name);
    if (!utf8)
        return ORB_STRATA_INVALID_ARGUMENT;
    if (object->isArray)
        return ORB_STRATA_WRONG_TYPE;
    object->fields.insert_or_assign(std::move(*utf8), std::move(value));
    return Success;
}

} // namespace

OrbStrataObject* OrbStrata_CreateObject(void)
{
    return Fails(Function::OrbStrata_CreateObject) ? nullptr : new OrbStrataObject(false);
}

OrbStrataObject* OrbStrata_CreateArray(void)
{
    return Fails(Function::OrbStrata_CreateArray) ? nullptr : new OrbStrataObject(true);
}

OrbStrataObject* OrbStrata_CreateObjectFromString(const char* text)
{
    if (Fails(Function::OrbStrata_CreateObjectFromString) || text == nullptr)
        return nullptr;
    return ParseObject(text).release();
}

void OrbStrata_DeleteObject(OrbStrataObject* object)
{
    delete object;
}

bool OrbStrata_ObjectIsArray(const OrbStrataObject* object)
{
    return !Fails(Function::OrbStrata_ObjectIsArray) && object != nullptr && object->isArray;
}

OrbStrataIterator OrbStrata_ArrayBegin(const OrbStrataObject* array)
{
    return Fails(Function::OrbStrata_ArrayBegin) || array == nullptr ? nullptr : array->elements.data();
}

OrbStrataIterator OrbStrata_ArrayEnd(const OrbStrataObject* array)
{
    return Fails(Function::OrbStrata_ArrayEnd) || array == nullptr ? nullptr
                                                                   : array->elements.data() + array->elements.size();
}

const OrbStrataObject* OrbStrata_IteratorGetAssociatedObject(OrbStrataIterator iterator)
{
    return Fails(Function::OrbStrata_IteratorGetAssociatedObject) || iterator == nullptr ? nullptr : *iterator;
}

OrbStrataResult OrbStrata_ArrayPushBack(OrbStrataObject* array, const OrbStrataObject* element)
{
    if (const auto fault = Store::Instance().Fault(Function::OrbStrata_ArrayPushBack); fault != Success)
        return fault;
    if (array == nullptr || element == nullptr)
        return ORB_STRATA_INVALID_HANDLE;
    if (!array->isArray || element->isArray)
        return ORB_STRATA_WRONG_TYPE;
    array->elements.push_back(new OrbStrataObject(*element));
    return Success;
}

bool OrbStrata_ObjectGetBool(const OrbStrataObject* object, const wchar_t* field, bool defaultValue,
                             OrbStrataResult* result)
{
    return FieldOr(Function::OrbStrata_ObjectGetBool, object, field, defaultValue, result);
}

OrbStrataResult OrbStrata_ObjectSetBool(OrbStrataObject* object, const wchar_t* field, bool value)
{
    return SetField(Function::OrbStrata_ObjectSetBool, object, field, value);
}

int64_t OrbStrata_ObjectGetInt64(const OrbStrataObject* object, const wchar_t* field, int64_t defaultValue,
                                 OrbStrataResult* result)
{
    return FieldOr(Function::OrbStrata_ObjectGetInt64, object, field, defaultValue, result);
}

OrbStrataResult OrbStrata_ObjectSetInt64(OrbStrataObject* object, const wchar_t* field, int64_t value)
{
    return SetField(Function::OrbStrata_ObjectSetInt64, object, field, value);
}

char* OrbStrata_ObjectGetStringUtf8(const OrbStrataObject* object, const wchar_t* field, const char* defaultValue,
                                    OrbStrataResult* result)
{
    const std::string* value = nullptr;
    const auto answer = FindField(Function::OrbStrata_ObjectGetStringUtf8, object, field, value);
    Tell(result, answer);
    return CopyText(answer == Success ? value->c_str() : defaultValue);
}

OrbStrataResult OrbStrata_ObjectSetStringUtf8(OrbStrataObject* object, const wchar_t* field, const char* value)
{
    if (value != nullptr && IsUtf8(value))
        return SetField(Function::OrbStrata_ObjectSetStringUtf8, object, field, std::string(value));
    const auto fault = Store::Instance().Fault(Function::OrbStrata_ObjectSetStringUtf8, field);
    return fault != Success ? fault : OrbStrataResult{ORB_STRATA_INVALID_ARGUMENT};
}
