#pragma once

#include "devkit/strata/OrbStrataControl.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace StrataCli
{

/// One entry of a scope. `number` holds a boolean or an integer, `text` a string or an object's JSON.
struct Item
{
    OrbStrataType type = ORB_STRATA_TYPE_NONE;
    int64_t number = 0;
    std::string text;
    uint32_t constraints = 0;
};

using Items = std::map<std::string, Item>;

/// "bool", "int32", "int64", "string", "utf8", "object"; "none" for constraints without a value.
std::string_view NameOf(OrbStrataType type);
std::optional<OrbStrataType> TypeNamed(std::string_view name);

/// The value that a person wrote, as `type`. False: it is none of that type; `error` is a sentence that says so.
bool ParseValue(OrbStrataType type, const std::string& text, Item& item, std::string& error);

/// The type that a text looks like: a boolean, the smaller integer that it fits, an object, else a string.
OrbStrataType GuessType(const std::string& text);

/// The value alone: a string as it is, anything else as in JSON.
std::string PlainValue(const Item& item);
/// The value in JSON.
std::string JsonValue(const Item& item);
/// {"type":…,"value":…,"constraints":…}; without "value" where there is none.
std::string JsonItem(const Item& item);
/// "value  (type, constraints)" for people.
std::string Describe(const Item& item);

} // namespace StrataCli
