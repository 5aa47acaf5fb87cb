// Structured values of any shape that the store takes, read into every set of the settings.

#include "fuzz/MemoryStore.h"
#include "fuzz/Target.h"
#include "settings/binding/PropertySet.h"
#include "settings/model/Curfew.h"
#include "settings/model/DailyCounter.h"
#include "settings/model/PrivacyProtectedSite.h"
#include "settings/model/Site.h"

namespace
{

using StrataSettings::PropertySet;

constexpr const wchar_t* kKey = L"set";

/// Whatever was kept of the text comes back from the store as it is held, and complete.
template <class Item>
void RequireSaved(PropertySet<Item>& held)
{
    MemoryStore& store = MemoryStore::Get();
    held.MarkChanged();
    Require(held.Save(store.Handle()), "what was read can be saved");
    PropertySet<Item> again(nullptr, kKey);
    again.Load(store.Handle());
    Require(again.WasReadWhole(), "what is saved is complete");
    Require(again.Get() == held.Get(), "what is saved comes back as it was");
}

/// A notification's text says the same as the store.
template <class Item>
void RequireSameFromText(const PropertySet<Item>& held, const std::string& text)
{
    MemoryStore& store = MemoryStore::Get();
    PropertySet<Item> told(nullptr, kKey);
    store.FailReads(true);
    told.Refresh(store.Handle(), text.c_str());
    store.FailReads(false);
    Require(told.Get() == held.Get(), "a text that is told of is read as a stored one");
    Require(held.Get().empty() || told.WasReadWhole() == held.WasReadWhole(), "and is as complete");
}

template <class Item>
void Read(const std::string& text)
{
    MemoryStore& store = MemoryStore::Get();
    store.Clear();
    store.String(kKey) = text;
    PropertySet<Item> held(nullptr, kKey);
    held.Load(store.Handle());
    RequireSameFromText(held, text);
    RequireSaved(held);
}

const Target kTarget("store_objects", [](std::string_view input) {
    const std::string text(input);
    Read<Settings::Site>(text);
    Read<Settings::PrivacyProtectedSite>(text);
    Read<Settings::Curfew>(text);
    Read<Settings::DailyCounter>(text);
});

} // namespace
