// What the development kit adds to the store's functions.

#include "devkit/strata/CInterface.h"
#include "devkit/strata/Utf8.h"

#include "text/Utf.h"

#include <limits>
#include <utility>

using namespace Strata;

namespace
{

void Visit(const wchar_t* key, const Entry& entry, OrbStrataEntryVisitor visitor, void* context)
{
    const OrbStrataEntry view = ViewOf(key, entry);
    visitor(context, &view);
}

/// Whether the number is one of the type; true for types without one.
bool NumberFits(const OrbStrataEntry& view)
{
    using Int32 = std::numeric_limits<int32_t>;
    switch (view.type)
    {
    case ORB_STRATA_TYPE_BOOL:
        return view.number == 0 || view.number == 1;
    case ORB_STRATA_TYPE_INT32:
        return view.number >= Int32::min() && view.number <= Int32::max();
    default:
        return true;
    }
}

/// The edit that writes the entry; ORB_STRATA_INVALID_ARGUMENT for an entry that cannot be.
OrbStrataResult Checked(const OrbStrataEntry& view, Edit& edit)
{
    auto key = ToUtf8Strict(view.key);
    const bool knownType = view.type >= ORB_STRATA_TYPE_NONE && view.type <= ORB_STRATA_TYPE_OBJECT;
    if (!key || key->empty() || !knownType || !NumberFits(view))
        return ORB_STRATA_INVALID_ARGUMENT;
    edit.key = std::move(*key);
    edit.entry.type = view.type;
    edit.entry.constraints = view.constraints;
    if (HasString(view.type))
        return MakeStringEntry(view.type, view.text, edit.entry);
    edit.entry.number = view.type == ORB_STRATA_TYPE_NONE ? 0 : view.number;
    return kSuccess;
}

OrbStrataResult WriteEntries(OrbStrataHandle handle, Edit::Kind kind, const OrbStrataEntry* entries, uint32_t count,
                             uint32_t* written)
{
    if (!entries && count != 0)
        return ORB_STRATA_INVALID_ARGUMENT;
    std::vector<Edit> edits(count, Edit{kind, {}, {}});
    for (uint32_t i = 0; i < count; ++i)
    {
        if (const auto result = Checked(entries[i], edits[i]); result != kSuccess)
            return result;
        if (kind == Edit::Kind::Value && entries[i].type == ORB_STRATA_TYPE_NONE)
            return ORB_STRATA_INVALID_ARGUMENT;
    }
    return Store::Instance().Apply(handle, edits, written);
}

} // namespace

void OrbStrataControl_SetStoreFile(const char* path)
{
    Store::Instance().SetFile(path);
}

char* OrbStrataControl_LastError(void)
{
    return CopyString(Store::Instance().LastError().c_str());
}

OrbStrataHandle OrbStrataControl_OpenProductHandle(const wchar_t* sid, OrbStrataResult* result)
{
    OrbStrataResult answer = kSuccess;
    const auto handle = Store::Instance().Open(sid, Access::Product, nullptr, answer);
    Tell(result, answer);
    return handle;
}

OrbStrataResult OrbStrataControl_Remove(OrbStrataHandle handle, const wchar_t* key)
{
    return ApplyEdit(handle, key, Edit::Kind::Remove, {});
}

OrbStrataResult OrbStrataControl_Find(OrbStrataHandle handle, const wchar_t* key, OrbStrataEntryVisitor visitor,
                                      void* context)
{
    Entry entry;
    const auto result = Store::Instance().Find(handle, key, entry);
    if (result == kSuccess)
        Visit(key, entry, visitor, context);
    return result;
}

OrbStrataResult OrbStrataControl_List(OrbStrataHandle handle, const wchar_t* prefix, OrbStrataEntryVisitor visitor,
                                      void* context)
{
    Entries entries;
    const auto result = Store::Instance().List(handle, prefix, entries);
    for (const auto& [key, entry] : entries)
        Visit(Text::FromUtf8(key).c_str(), entry, visitor, context);
    return result;
}

bool OrbStrataControl_IsScope(const wchar_t* sid)
{
    return sid && IsScope(Text::ToUtf8(sid));
}

OrbStrataResult OrbStrataControl_WriteValue(OrbStrataHandle handle, const OrbStrataEntry* entry)
{
    return WriteEntries(handle, Edit::Kind::Value, entry, 1, nullptr);
}

OrbStrataResult OrbStrataControl_WriteIfAbsent(OrbStrataHandle handle, const OrbStrataEntry* entries, uint32_t count,
                                               uint32_t* written)
{
    return WriteEntries(handle, Edit::Kind::IfAbsent, entries, count, written);
}

OrbStrataResult OrbStrataControl_Write(OrbStrataHandle handle, const OrbStrataEntry* entry)
{
    return WriteEntries(handle, Edit::Kind::Whole, entry, 1, nullptr);
}

OrbStrataResult OrbStrataControl_WriteAll(OrbStrataHandle handle, const OrbStrataEntry* entries, uint32_t count)
{
    return WriteEntries(handle, Edit::Kind::Whole, entries, count, nullptr);
}

void OrbStrataControl_HoldDelivery(bool on)
{
    Store::Instance().HoldDelivery(on);
}

void OrbStrataControl_SetWriteObserver(OrbStrataWriteObserver observer, void* context)
{
    Store::Instance().writes.SetObserver(observer, context);
}

OrbStrataSubscription OrbStrataControl_Watch(OrbStrataHandle handle, const wchar_t* prefix, OrbStrataWatcher watcher,
                                             void* context, OrbStrataResult* result)
{
    OrbStrataResult answer = ORB_STRATA_INVALID_ARGUMENT;
    OrbStrataSubscription subscription = nullptr;
    const auto keys = ToUtf8Strict(prefix ? prefix : L"");
    if (watcher && keys)
        subscription = Store::Instance().Subscribe(handle, {*keys, true, 0, nullptr, watcher, context}, answer);
    Tell(result, answer);
    return subscription;
}

void OrbStrataControl_SetElevationAnswer(bool accept)
{
    Store::Instance().acceptElevation = accept;
}

void OrbStrataControl_SetElevationHandler(OrbStrataElevationHandler handler, void* context)
{
    Store::Instance().SetElevationHandler(handler, context);
}

bool OrbStrataControl_SetFault(const char* function, const wchar_t* key, OrbStrataResult code, uint32_t count)
{
    auto& faults = Store::Instance().faults;
    return function &&
           (code == kSuccess ? faults.Remove(function, key) : faults.Add({function, key, code, 1, count, false}));
}

bool OrbStrataControl_AddFault(const SuiteFault* fault)
{
    return fault && Store::Instance().faults.Add(*fault);
}

uint32_t OrbStrataControl_CallsOf(const char* function, uint32_t* failed)
{
    const auto calls = Store::Instance().faults.CallsOf(function);
    if (failed)
        *failed = calls.failed;
    return calls.all;
}

void OrbStrataControl_ClearFaults(void)
{
    Store::Instance().faults.Clear();
}

void OrbStrataControl_Faults(SuiteFaultVisitor visitor, void* context)
{
    Store::Instance().faults.Visit(visitor, context);
}

bool OrbStrataControl_WaitForDelivery(uint32_t timeoutMs)
{
    return Store::Instance().WaitForDelivery(std::chrono::milliseconds(timeoutMs));
}

uint32_t OrbStrataControl_OpenHandles(void)
{
    return Store::Instance().OpenHandles();
}

void OrbStrataControl_Shutdown(void)
{
    Store::Shutdown();
}
