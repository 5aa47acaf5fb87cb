#include "devkit/strata_cli/StoreScope.h"

#include "platform/Text.h"

#include <vector>

namespace StrataCli
{

namespace
{

std::wstring SidOf(const std::string& scope)
{
    return scope == "user" ? std::wstring() : Platform::FromUtf8(scope == "system" ? "S-1-5-18" : scope);
}

Item ItemOf(const OrbStrataEntry& entry)
{
    return {entry.type, entry.number, entry.text == nullptr ? "" : entry.text, entry.constraints};
}

void NL_SUITE_CALL KeepItem(void* context, const OrbStrataEntry* entry)
{
    *static_cast<std::optional<Item>*>(context) = ItemOf(*entry);
}

void NL_SUITE_CALL AddItem(void* context, const OrbStrataEntry* entry)
{
    static_cast<Items*>(context)->emplace(Platform::ToUtf8(entry->key), ItemOf(*entry));
}

} // namespace

StoreScope::StoreScope(const std::string& scope)
    : m_handle(OrbStrataControl_OpenProductHandle(SidOf(scope).c_str(), &m_result))
{}

StoreScope::~StoreScope()
{
    OrbStrata_CloseHandle(m_handle);
}

std::optional<Item> StoreScope::Find(const std::string& key)
{
    std::optional<Item> item;
    m_result = OrbStrataControl_Find(m_handle, Platform::FromUtf8(key).c_str(), KeepItem, &item);
    return item;
}

Items StoreScope::List(const std::string& prefix)
{
    Items items;
    m_result = OrbStrataControl_List(m_handle, Platform::FromUtf8(prefix).c_str(), AddItem, &items);
    return items;
}

bool StoreScope::Write(const Items& items)
{
    std::vector<std::wstring> keys;
    std::vector<OrbStrataEntry> entries;
    keys.reserve(items.size()); // the entries point into it
    entries.reserve(items.size());
    for (const auto& [key, item] : items)
    {
        const std::wstring& wide = keys.emplace_back(Platform::FromUtf8(key));
        entries.push_back({wide.c_str(), item.type, item.number, item.text.c_str(), item.constraints});
    }
    m_result = OrbStrataControl_WriteAll(m_handle, entries.data(), static_cast<uint32_t>(entries.size()));
    return m_result == ORB_STRATA_SUCCESS;
}

bool StoreScope::Remove(const std::string& key)
{
    m_result = OrbStrataControl_Remove(m_handle, Platform::FromUtf8(key).c_str());
    return m_result == ORB_STRATA_SUCCESS;
}

bool StoreScope::Constrain(const std::string& key, uint32_t constraints)
{
    m_result = OrbStrata_SetConstraints(m_handle, Platform::FromUtf8(key).c_str(), constraints);
    return m_result == ORB_STRATA_SUCCESS;
}

std::string Explain(OrbStrataResult result)
{
    if (result == ORB_STRATA_STORE_FAILED)
    {
        char* text = OrbStrataControl_LastError();
        const std::string sentence = text == nullptr ? "" : text;
        OrbStrata_FreeString(text);
        return sentence;
    }
    return result == ORB_STRATA_ACCESS_DENIED ? "The store does not allow this."
                                              : "The store answered " + std::to_string(result) + ".";
}

} // namespace StrataCli
