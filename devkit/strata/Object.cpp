#include "devkit/strata/Object.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
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

using Json = nlohmann::json;

void AppendString(std::string& json, const std::string& value)
{
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\'; };
    if (std::all_of(value.begin(), value.end(), isPlain))
        json.append(1, '"').append(value).append(1, '"');
    else
        json += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
}

struct FieldPrinter
{
    std::string& json;
    void operator()(bool value) const { json += value ? "true" : "false"; }
    void operator()(int64_t value) const { json += std::to_string(value); }
    void operator()(const std::string& value) const { AppendString(json, value); }
};

void AppendRecord(std::string& json, const OrbStrataObject& record)
{
    json += '{';
    const char* separator = "";
    for (const auto& [name, field] : record.fields)
    {
        json += separator;
        AppendString(json, name);
        json += ':';
        std::visit(FieldPrinter{json}, field);
        separator = ",";
    }
    json += '}';
}

/// Builds the object while the library reads the text; false ends that.
class Builder
{
public:
    std::unique_ptr<OrbStrataObject> Take() { return std::move(m_root); }
    const std::string& Error() const { return m_error; }

    bool start_object(std::size_t)
    {
        if (m_record || (m_root && !m_root->isArray))
            return Fail("a field holds an object");
        auto* const record = new OrbStrataObject(false);
        if (m_root)
            m_root->elements.push_back(record);
        else
            m_root.reset(record);
        m_record = record;
        return true;
    }
    bool start_array(std::size_t)
    {
        if (m_root)
            return Fail("an array holds an array, or a field one");
        m_root = std::make_unique<OrbStrataObject>(true);
        return true;
    }
    bool end_object()
    {
        m_record = nullptr;
        return true;
    }
    bool end_array() { return true; }
    bool key(std::string& name)
    {
        if (HasNul(name))
            return Fail("a name holds U+0000");
        // Canonical text comes in order: each field goes to the end without a search.
        const auto size = m_record->fields.size();
        m_field = &m_record->fields.try_emplace(m_record->fields.end(), std::move(name))->second;
        return m_record->fields.size() != size || Fail("a field is there twice");
    }
    bool boolean(bool value) { return Put(value); }
    bool number_integer(int64_t value) { return Put(value); }
    bool number_unsigned(uint64_t value)
    {
        return value <= static_cast<uint64_t>(std::numeric_limits<int64_t>::max())
                   ? Put(static_cast<int64_t>(value))
                   : Fail("a number does not fit 64 bits");
    }
    bool string(std::string& value) { return HasNul(value) ? Fail("a string holds U+0000") : Put(std::move(value)); }
    bool null() { return Fail("a field holds null"); }
    bool number_float(double, const std::string&) { return Fail("a number is no integer"); }
    bool binary(std::vector<std::uint8_t>&) { return false; }
    bool parse_error(std::size_t, const std::string&, const Json::exception& error) { return Fail(error.what()); }

    bool Fail(std::string reason)
    {
        m_error = std::move(reason);
        return false;
    }

private:
    static bool HasNul(const std::string& text) { return text.find('\0') != std::string::npos; }

    template <class Value>
    bool Put(Value value)
    {
        if (!m_record)
            return Fail("expected an object or an array of objects");
        *m_field = std::move(value);
        return true;
    }

    std::unique_ptr<OrbStrataObject> m_root;
    OrbStrataObject* m_record = nullptr; // that is read
    OrbStrataObject::Field* m_field = nullptr;
    std::string m_error;
};

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
    Builder builder;
    // The library takes a NUL for the end of the text and skips a byte order mark.
    const bool readable = text.find('\0') == std::string_view::npos && text.substr(0, 3) != "\xEF\xBB\xBF";
    const bool whole = readable ? Json::sax_parse(text.begin(), text.end(), &builder) : builder.Fail("no JSON");
    if (error)
        *error = builder.Error();
    return whole ? builder.Take() : nullptr;
}

} // namespace Strata
