#include "devkit/strata_cli/Item.h"

#include "devkit/strata/json/JsonReader.h"
#include "devkit/strata/json/JsonWriter.h"
#include "devkit/strata/json/Utf8.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace StrataCli
{

namespace
{

constexpr std::string_view TypeNames[] = {"none", "bool", "int32", "int64", "string", "utf8", "object"};

bool IsInteger(const std::string& text, int64_t& number)
{
    Strata::JsonReader reader(text);
    return !text.empty() && text.find_first_of(" \t\r\n") == std::string::npos && reader.Integer(number) &&
           reader.AtEnd();
}

bool FitsInt32(int64_t number)
{
    return number >= std::numeric_limits<int32_t>::min() && number <= std::numeric_limits<int32_t>::max();
}

bool IsObject(const std::string& text)
{
    OrbStrataObject* object = OrbStrata_CreateObjectFromString(text.c_str());
    OrbStrata_DeleteObject(object);
    return object != nullptr;
}

} // namespace

std::string_view NameOf(OrbStrataType type)
{
    return TypeNames[type];
}

std::optional<OrbStrataType> TypeNamed(std::string_view name)
{
    const auto at = std::find(std::begin(TypeNames), std::end(TypeNames), name);
    return at == std::end(TypeNames) ? std::nullopt
                                     : std::optional(static_cast<OrbStrataType>(at - std::begin(TypeNames)));
}

bool ParseValue(OrbStrataType type, const std::string& text, Item& item, std::string& error)
{
    item.type = type;
    item.number = 0;
    item.text.clear();
    switch (type)
    {
    case ORB_STRATA_TYPE_NONE:
        error = "A value cannot be of the type none.";
        return false;
    case ORB_STRATA_TYPE_BOOL:
        item.number = text == "true" ? 1 : 0;
        error = "\"" + text + "\" is not a boolean: true or false.";
        return text == "true" || text == "false";
    case ORB_STRATA_TYPE_INT32:
        error = "\"" + text + "\" is not an integer of 32 bits.";
        return IsInteger(text, item.number) && FitsInt32(item.number);
    case ORB_STRATA_TYPE_INT64:
        error = "\"" + text + "\" is not an integer of 64 bits.";
        return IsInteger(text, item.number);
    case ORB_STRATA_TYPE_STRING:
    case ORB_STRATA_TYPE_UTF8:
        item.text = text;
        error = "The value is not UTF-8 text.";
        return Strata::IsUtf8(text);
    case ORB_STRATA_TYPE_OBJECT:
        item.text = text;
        error = "The value is not an object: {\"field\": …} with booleans, integers and strings, or a list of such.";
        return IsObject(text);
    }
    return false;
}

OrbStrataType GuessType(const std::string& text)
{
    int64_t number = 0;
    if (text == "true" || text == "false")
        return ORB_STRATA_TYPE_BOOL;
    if (IsInteger(text, number))
        return FitsInt32(number) ? ORB_STRATA_TYPE_INT32 : ORB_STRATA_TYPE_INT64;
    return IsObject(text) ? ORB_STRATA_TYPE_OBJECT : ORB_STRATA_TYPE_STRING;
}

std::string PlainValue(const Item& item)
{
    return item.type == ORB_STRATA_TYPE_STRING || item.type == ORB_STRATA_TYPE_UTF8 ? item.text : JsonValue(item);
}

std::string JsonValue(const Item& item)
{
    switch (item.type)
    {
    case ORB_STRATA_TYPE_NONE:
        return "null";
    case ORB_STRATA_TYPE_BOOL:
        return item.number != 0 ? "true" : "false";
    case ORB_STRATA_TYPE_INT32:
    case ORB_STRATA_TYPE_INT64:
        return std::to_string(item.number);
    case ORB_STRATA_TYPE_OBJECT:
        return item.text;
    case ORB_STRATA_TYPE_STRING:
    case ORB_STRATA_TYPE_UTF8:
        break;
    }
    std::string json;
    Strata::AppendJsonString(json, item.text);
    return json;
}

std::string JsonItem(const Item& item)
{
    std::string json = "{\"type\":\"";
    json += NameOf(item.type);
    json += '"';
    if (item.type != ORB_STRATA_TYPE_NONE)
        json += ",\"value\":" + JsonValue(item);
    return json + ",\"constraints\":" + std::to_string(item.constraints) + "}";
}

std::string Describe(const Item& item)
{
    std::string line = item.type == ORB_STRATA_TYPE_NONE ? "no value" : JsonValue(item);
    line += "  (";
    line += NameOf(item.type);
    if ((item.constraints & ORB_STRATA_CONSTRAINT_ENFORCED) != 0)
        line += ", enforced";
    if (const uint32_t others = item.constraints & ~uint32_t{ORB_STRATA_CONSTRAINT_ENFORCED}; others != 0)
        line += ", constraints " + std::to_string(item.constraints);
    return line + ")";
}

} // namespace StrataCli
