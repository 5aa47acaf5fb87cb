// The store's own JSON: structured values, and whole scopes as the command line imports and exports them.

#include "devkit/strata/Object.h"
#include "devkit/strata_cli/Transfer.h"
#include "fuzz/Target.h"

#include <algorithm>

namespace
{

void ReadObject(std::string_view text)
{
    std::string error;
    const auto object = Strata::ParseObject(text, &error);
    Require((object == nullptr) == !error.empty(), "a text that is refused has its reason");
    if (!object)
        return;
    const std::string printed = Strata::PrintObject(*object);
    const auto again = Strata::ParseObject(printed);
    Require(again && Strata::PrintObject(*again) == printed, "an object has one text, which is read again");
    Require(again->isArray == object->isArray && again->elements.size() == object->elements.size(),
            "and loses no element");
}

bool IsSame(const StrataCli::Items& left, const StrataCli::Items& right)
{
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(),
        [](const auto& one, const auto& other) {
            return one.first == other.first && one.second.type == other.second.type &&
                   one.second.number == other.second.number && one.second.text == other.second.text &&
                   one.second.constraints == other.second.constraints;
        });
}

void ImportScope(std::string_view text)
{
    StrataCli::Items items;
    std::string error;
    const bool imported = StrataCli::Import(text, items, error);
    Require(imported == error.empty(), "a file that is refused has its reason");
    if (!imported)
        return;
    StrataCli::Items again;
    Require(StrataCli::Import(StrataCli::Export(items), again, error), "what is exported can be imported");
    Require(IsSame(items, again), "and is the same then");
}

const Target g_target("store_json", [](std::string_view input) {
    ReadObject(input);
    ImportScope(input);
});

} // namespace
