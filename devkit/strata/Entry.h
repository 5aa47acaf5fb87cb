#pragma once

#include "devkit/strata/OrbStrataControl.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Strata
{

/// The enumerators are integers, results are unsigned: success as a result.
constexpr OrbStrataResult kSuccess = ORB_STRATA_SUCCESS;

/// What a scope holds under one key. `number` is a boolean's or an integer's value; `text` a string's UTF-8 text or an
/// object's text in canonical form, never null for these types and shared by everyone who read it.
struct Entry
{
    OrbStrataType type = ORB_STRATA_TYPE_NONE;
    int64_t number = 0;
    std::shared_ptr<const std::string> text;
    uint32_t constraints = 0;
};

/// As a visitor sees it, while both live.
inline OrbStrataEntry ViewOf(const wchar_t* key, const Entry& entry)
{
    return {key, entry.type, entry.number, entry.text ? entry.text->c_str() : nullptr, entry.constraints};
}

constexpr bool HasString(OrbStrataType type)
{
    return type >= ORB_STRATA_TYPE_STRING && type <= ORB_STRATA_TYPE_OBJECT;
}

inline bool operator==(const Entry& one, const Entry& other)
{
    return one.type == other.type && one.constraints == other.constraints &&
           (HasString(one.type) ? *one.text == *other.text : one.number == other.number);
}

inline bool operator!=(const Entry& one, const Entry& other)
{
    return !(one == other);
}

/// A write of one key.
struct Edit
{
    enum class Kind
    {
        Value,       ///< the value; the constraint word stays
        IfAbsent,    ///< the value where there is none yet, and the constraint word where there is none either
        Constraints, ///< the constraint word; the value stays
        Whole,       ///< both
        Remove       ///< neither is left
    };
    Kind kind;
    std::string key;
    Entry entry;
};

/// A write that was committed, as the store tells of it. `kind` is 0 for a write that changed nothing, else
/// ORB_STRATA_CHANGED or ORB_STRATA_REMOVED; `entry` is what the key held from then on.
struct Change
{
    int64_t revision = 0;
    std::string scope;
    std::string key;
    int32_t kind = 0;
    bool valueWrite = false;
    Entry entry;
};

} // namespace Strata
