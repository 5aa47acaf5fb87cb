#include "devkit/strata_cli/Transfer.h"

#include "devkit/strata/json/JsonReader.h"
#include "devkit/strata/json/JsonWriter.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <system_error>

namespace StrataCli
{

namespace
{

using Strata::JsonReader;

/// A value of any type, as text for ParseValue; members may come in any order, so the type is not known yet.
struct Value
{
    JsonReader::Kind kind = JsonReader::Kind::Other;
    std::string text;
};

bool ReadValue(JsonReader& reader, Value& value)
{
    value.kind = reader.Peek();
    bool boolean = false;
    int64_t number = 0;
    std::string_view raw;
    switch (value.kind)
    {
    case JsonReader::Kind::Boolean:
        return reader.Boolean(boolean) && (value.text = boolean ? "true" : "false", true);
    case JsonReader::Kind::Integer:
        return reader.Integer(number) && (value.text = std::to_string(number), true);
    case JsonReader::Kind::String:
        return reader.String(value.text);
    case JsonReader::Kind::Object:
    case JsonReader::Kind::Array:
        return reader.Raw(raw) && (value.text = raw, true);
    default:
        return reader.Fail("expected a value");
    }
}

/// Whether JSON writes values of the type so: a string "5" is no integer, and 5 is no string.
bool IsWrittenAs(OrbStrataType type, JsonReader::Kind kind)
{
    switch (type)
    {
    case ORB_STRATA_TYPE_BOOL:
        return kind == JsonReader::Kind::Boolean;
    case ORB_STRATA_TYPE_INT32:
    case ORB_STRATA_TYPE_INT64:
        return kind == JsonReader::Kind::Integer;
    case ORB_STRATA_TYPE_STRING:
    case ORB_STRATA_TYPE_UTF8:
        return kind == JsonReader::Kind::String;
    case ORB_STRATA_TYPE_OBJECT:
        return kind == JsonReader::Kind::Object || kind == JsonReader::Kind::Array;
    case ORB_STRATA_TYPE_NONE:
        break;
    }
    return kind == JsonReader::Kind::Other;
}

bool ReadItem(JsonReader& reader, Item& item)
{
    std::string typeName;
    int64_t constraints = 0;
    Value value;
    const bool read = reader.Object([&](const std::string& member) {
        return member == "type"          ? reader.String(typeName)
               : member == "constraints" ? reader.Integer(constraints)
               : member == "value"       ? ReadValue(reader, value)
                                         : reader.Fail("an entry has no \"" + member + "\"");
    });
    if (!read)
        return false;
    const auto type = TypeNamed(typeName);
    if (!type)
        return reader.Fail("there is no type \"" + typeName + "\"");
    if (constraints < 0 || constraints > std::numeric_limits<uint32_t>::max())
        return reader.Fail("the constraints do not fit 32 bits");
    std::string error;
    item.type = *type;
    item.constraints = static_cast<uint32_t>(constraints);
    return (IsWrittenAs(*type, value.kind) || reader.Fail("the value is not of the type " + typeName)) &&
           (*type == ORB_STRATA_TYPE_NONE || ParseValue(*type, value.text, item, error) || reader.Fail(error));
}

bool ReadItems(JsonReader& reader, Items& items)
{
    return reader.Object([&](const std::string& key) {
        const auto [at, isNew] = items.try_emplace(key);
        return isNew && !key.empty() ? ReadItem(reader, at->second)
                                     : reader.Fail("the key \"" + key + "\" is empty or there twice");
    });
}

std::string FileError(const std::string& path, const char* what)
{
    return "\"" + path + "\" cannot be " + what + ": " + std::generic_category().message(errno) + ".";
}

} // namespace

std::string Export(const Items& items)
{
    std::string json = "{";
    const char* separator = "\n  ";
    for (const auto& [key, item] : items)
    {
        json += separator;
        Strata::AppendJsonString(json, key);
        json += ": " + JsonItem(item);
        separator = ",\n  ";
    }
    return json + (items.empty() ? "}\n" : "\n}\n");
}

bool Import(std::string_view json, Items& items, std::string& error)
{
    JsonReader reader(json);
    const bool read = ReadItems(reader, items) && reader.AtEnd();
    error = reader.Error();
    return read;
}

bool ReadInput(const std::string& path, std::string& contents, std::string& error)
{
    const auto readAll = [&contents](std::istream& stream) {
        contents.assign(std::istreambuf_iterator<char>(stream), {});
        return !stream.bad();
    };
    if (path == "-")
        return readAll(std::cin) || (error = "Standard input cannot be read.", false);
    std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
    return (file && readAll(file)) || (error = FileError(path, "read"), false);
}

bool WriteOutput(const std::string& path, const std::string& contents, std::string& error)
{
    if (path == "-")
    {
        const bool written =
            std::fwrite(contents.data(), 1, contents.size(), stdout) == contents.size() && std::fflush(stdout) == 0;
        return written || (error = "Standard output cannot be written.", false);
    }
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary | std::ios::trunc);
    file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    file.close();
    return file.good() || (error = FileError(path, "written"), false);
}

} // namespace StrataCli
