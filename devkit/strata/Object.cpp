#include "devkit/strata/Object.h"

#include "devkit/strata/json/JsonReader.h"
#include "devkit/strata/json/JsonWriter.h"

#include <utility>

OrbStrataObjectTag::OrbStrataObjectTag(const OrbStrataObjectTag& other) : isArray(other.isArray), fields(other.fields)
{
    elements.reserve(other.elements.size());
    for (const OrbStrataObject* element : other.elements)
        elements.push_back(new OrbStrataObjectTag(*element));
}

OrbStrataObjectTag::~OrbStrataObjectTag()
{
    for (const OrbStrataObject* element : elements)
        delete element;
}

namespace Strata
{

namespace
{

struct FieldPrinter
{
    std::string& json;
    void operator()(bool value) const { json += value ? "true" : "false"; }
    void operator()(int64_t value) const { json += std::to_string(value); }
    void operator()(const std::string& value) const { AppendJsonString(json, value); }
};

void AppendRecord(std::string& json, const OrbStrataObject& record)
{
    json += '{';
    const char* separator = "";
    for (const auto& [name, field] : record.fields)
    {
        json += separator;
        AppendJsonString(json, name);
        json += ':';
        std::visit(FieldPrinter{json}, field);
        separator = ",";
    }
    json += '}';
}

template <class Value, class Read>
bool ReadInto(OrbStrataObject::Field& field, Read&& read)
{
    return read(field.emplace<Value>());
}

bool ReadField(JsonReader& reader, OrbStrataObject::Field& field)
{
    switch (reader.Peek())
    {
    case JsonReader::Kind::Boolean:
        return ReadInto<bool>(field, [&](bool& value) { return reader.Boolean(value); });
    case JsonReader::Kind::Integer:
        return ReadInto<int64_t>(field, [&](int64_t& value) { return reader.Integer(value); });
    case JsonReader::Kind::String:
        return ReadInto<std::string>(field, [&](std::string& value) { return reader.String(value); });
    default:
        return reader.Fail("expected true, false, an integer or a string");
    }
}

bool ReadRecord(JsonReader& reader, OrbStrataObject& record)
{
    return reader.Object([&](const std::string& name) {
        const auto size = record.fields.size();
        // Canonical text comes in order: each field goes to the end without a search.
        const auto at = record.fields.try_emplace(record.fields.end(), name);
        return record.fields.size() == size ? reader.Fail("the field \"" + name + "\" is there twice")
                                            : ReadField(reader, at->second);
    });
}

bool ReadArray(JsonReader& reader, OrbStrataObject& array)
{
    return reader.Array([&] {
        array.elements.push_back(new OrbStrataObjectTag(false));
        return ReadRecord(reader, *array.elements.back());
    });
}

} // namespace

std::string PrintObject(const OrbStrataObject& object)
{
    std::string json;
    if (!object.isArray)
    {
        AppendRecord(json, object);
        return json;
    }
    json += '[';
    for (std::size_t i = 0; i < object.elements.size(); ++i)
    {
        json += i == 0 ? "" : ",";
        AppendRecord(json, *object.elements[i]);
    }
    json += ']';
    return json;
}

std::unique_ptr<OrbStrataObject> ParseObject(std::string_view text, std::string* error)
{
    JsonReader reader(text);
    auto object = std::make_unique<OrbStrataObject>(reader.Peek() == JsonReader::Kind::Array);
    const bool whole = (object->isArray ? ReadArray(reader, *object) : ReadRecord(reader, *object)) && reader.AtEnd();
    if (error != nullptr)
        *error = reader.Error();
    return whole ? std::move(object) : nullptr;
}

} // namespace Strata
