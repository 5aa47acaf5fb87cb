#pragma once

#include "suite/OrbStrata.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A structured value: a record of named fields, or an array of records. Fields are kept in the order of their names,
/// so that equal values have equal texts.
struct OrbStrataObjectTag
{
    using Field = std::variant<bool, int64_t, std::string>;
    using Fields = std::map<std::string, Field, std::less<>>;

    explicit OrbStrataObjectTag(bool array) : isArray(array) {}
    OrbStrataObjectTag(const OrbStrataObjectTag& other);
    OrbStrataObjectTag& operator=(const OrbStrataObjectTag&) = delete;
    ~OrbStrataObjectTag();

    const bool isArray;
    Fields fields;
    std::vector<OrbStrataObject*> elements; ///< owned; plain pointers, since iterators point into the list
};

namespace Strata
{

/// The canonical text form: JSON without spaces.
std::string PrintObject(const OrbStrataObject& object);

/// Null if `text` is not the text form of an object; `error`, where given, then tells why.
std::unique_ptr<OrbStrataObject> ParseObject(std::string_view text, std::string* error = nullptr);

} // namespace Strata
