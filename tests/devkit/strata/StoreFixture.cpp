#include "tests/devkit/strata/StoreFixture.h"

#include "text/Utf.h"

#include <utility>

Opened::Opened(Kind kind, const wchar_t* sid)
{
    m_handle = kind == Kind::Normal     ? OrbStrata_OpenHandle(L"safe", sid, L"test", &m_result)
               : kind == Kind::Elevated ? OrbStrata_OpenElevatedHandle(L"safe", sid, L"test", &m_result)
                                        : OrbStrataControl_OpenProductHandle(sid, &m_result);
}

void Opened::Close()
{
    OrbStrata_CloseHandle(m_handle);
    m_handle = nullptr;
}

OrbStrataSubscription Deliveries::Subscribe(OrbStrataHandle handle, const wchar_t* key, int32_t changeType)
{
    return OrbStrata_Subscribe(handle, key, changeType, OnChange, this, nullptr);
}

OrbStrataSubscription Deliveries::Watch(OrbStrataHandle handle, const wchar_t* prefix)
{
    return OrbStrataControl_Watch(handle, prefix, OnWatched, this, nullptr);
}

std::vector<std::string> Deliveries::Take()
{
    EXPECT_TRUE(OrbStrataControl_WaitForDelivery(20000));
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_changes, {});
}

std::vector<std::string> Deliveries::WaitFor(std::size_t count)
{
    std::unique_lock lock(m_mutex);
    m_arrived.wait_for(lock, kPatience, [&] { return m_changes.size() >= count; });
    return m_changes;
}

void Deliveries::OnChange(void* context, const wchar_t* key, int32_t changeType, const char* text)
{
    auto& self = *static_cast<Deliveries*>(context);
    {
        const std::lock_guard lock(self.m_mutex);
        self.m_changes.push_back(Text::ToUtf8(key) + (changeType == ORB_STRATA_REMOVED ? " removed" : " changed") +
                                 (text ? std::string(" ") + text : ""));
        self.m_arrived.notify_all();
    }
    if (self.onDelivery)
        self.onDelivery();
}

void Deliveries::OnWatched(void* context, int32_t changeType, const OrbStrataEntry* entry)
{
    const bool isInt = changeType == ORB_STRATA_CHANGED && entry->type == ORB_STRATA_TYPE_INT32;
    OnChange(context, entry->key, changeType, isInt ? std::to_string(entry->number).c_str() : entry->text);
}

StoreFixture::StoreFixture()
{
    OrbStrataControl_SetStoreFile(StoreFile().c_str());
}

StoreFixture::~StoreFixture()
{
    EXPECT_EQ(OrbStrataControl_OpenHandles(), 0U);
    OrbStrataControl_Shutdown();
}

std::string StoreFixture::LastError()
{
    char* text = OrbStrataControl_LastError();
    const std::string sentence = text;
    OrbStrata_FreeString(text);
    return sentence;
}

std::string StoreFixture::String(OrbStrataHandle handle, const wchar_t* key, OrbStrataResult* result)
{
    char* text = OrbStrata_GetStringUtf8(handle, key, "default", result);
    const std::string copy = text;
    OrbStrata_FreeString(text);
    return copy;
}

OrbStrataResult StoreFixture::SetObject(OrbStrataHandle handle, const wchar_t* key, const std::string& text)
{
    OrbStrataObject* object = OrbStrata_CreateObjectFromString(text.c_str());
    const auto result = OrbStrata_SetObject(handle, key, object);
    OrbStrata_DeleteObject(object);
    return result;
}

std::string StoreFixture::Stored(OrbStrataHandle handle, const wchar_t* key)
{
    std::string stored;
    OrbStrataControl_Find(
        handle, key,
        [](void* context, const OrbStrataEntry* entry) {
            *static_cast<std::string*>(context) = std::to_string(entry->type) + " " + std::to_string(entry->number) +
                                                  " " + (entry->text ? entry->text : "") + " " +
                                                  std::to_string(entry->constraints);
        },
        &stored);
    return stored;
}
