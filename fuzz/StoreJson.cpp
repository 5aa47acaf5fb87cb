// The store's own JSON: structured values, and whole scopes as the command line imports and exports them.

#include "devkit/core/Json.h"
#include "devkit/strata/Object.h"
#include "devkit/strata_cli/EntryString.h"
#include "fuzz/Target.h"

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

void ImportScope(std::string_view text)
{
    const QVariantMap entries = Json::Parse({text.data(), static_cast<int>(text.size())}).value.toMap();
    StoreAccess::Entries read;
    for (auto it = entries.begin(); it != entries.end(); ++it)
        if (const Result<StoreEntry> entry = StoreEntry::FromJson(it.value()); entry.Ok())
            read.emplace(it.key(), entry.value);
    const Json::Parsed again = Json::Parse(EntryString::Export(read));
    const QVariantMap exported = again.value.toMap();
    Require(again.error.isEmpty() && exported.size() == static_cast<int>(read.size()), "what is exported can be read");
    for (const auto& [key, entry] : read)
    {
        const Result<StoreEntry> back = StoreEntry::FromJson(exported.value(key));
        Require(back.Ok() && back.value.type == entry.type && back.value.value == entry.value &&
                    back.value.constraints == entry.constraints,
                "and imported, and is the same then");
    }
}

const Target kTarget("store_json", [](std::string_view input) {
    ReadObject(input);
    ImportScope(input);
});

} // namespace
