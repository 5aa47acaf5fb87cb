#include "devkit/strata/Store.h"

#include "devkit/faults/Edge.h"

#include "devkit/strata/Environment.h"
#include "devkit/strata/Utf8.h"

#include "text/Utf.h"

#include <utility>

namespace Strata
{

namespace
{

constexpr std::string_view kWritableByAll = "windows.browsing_protection.internal.";

std::mutex g_creation;
std::atomic<Store*> g_store = nullptr;

/// Handles and subscriptions are numbers that are given once, so that a stale one is never taken for a later one.
uintptr_t NextId()
{
    static std::atomic<uintptr_t> s_last = 0;
    return ++s_last;
}

template <class Opaque>
uintptr_t IdOf(Opaque handle)
{
    return reinterpret_cast<uintptr_t>(handle);
}

template <class Opaque>
Opaque FromId(uintptr_t id)
{
    return reinterpret_cast<Opaque>(id);
}

bool MayWrite(Access access, const std::string& key)
{
    return access != Access::Normal || key.compare(0, kWritableByAll.size(), kWritableByAll) == 0;
}

} // namespace

bool IsScope(std::string_view text)
{
    constexpr std::string_view kStart = "S-1-";
    if (text.substr(0, kStart.size()) != kStart)
        return false;
    bool digitBefore = false;
    for (const char c : text.substr(kStart.size()))
    {
        const bool digit = c >= '0' && c <= '9';
        if (!digit && (c != '-' || !digitBefore))
            return false;
        digitBefore = digit;
    }
    return digitBefore;
}

Store::Store() : faults({NL_ORB_STRATA_FUNCTIONS(SUITE_FAULT_NAME)}) {}

Store& Store::Instance()
{
    Store* store = g_store.load(std::memory_order_acquire);
    if (!store)
    {
        const std::lock_guard lock(g_creation);
        store = g_store.load(std::memory_order_acquire);
        if (!store)
        {
            store = new Store();
            g_store.store(store, std::memory_order_release);
        }
    }
    return *store;
}

void Store::Shutdown()
{
    const std::lock_guard lock(g_creation);
    Store* store = g_store.load(std::memory_order_acquire);
    if (store && store->OpenHandles() == 0)
    {
        g_store.store(nullptr, std::memory_order_release);
        delete store;
    }
}

OrbStrataHandle Store::Open(const wchar_t* sid, Access access, const wchar_t* clientId, OrbStrataResult& result)
{
    const std::string scopeSid = !sid || *sid == L'\0' ? UserSid() : Text::ToUtf8(sid);
    result = ORB_STRATA_INVALID_ARGUMENT;
    if (!IsScope(scopeSid))
        return nullptr;
    result = ORB_STRATA_ACCESS_DENIED;
    if (access == Access::Elevated && !AcceptsElevation(clientId))
        return nullptr;
    result = ORB_STRATA_STORE_FAILED;
    std::shared_ptr<Session> session; // goes after the lock: its thread may be on its way into the store
    const std::lock_guard lock(m_mutex);
    session = OpenSession();
    auto scope = session ? session->OpenScope(scopeSid) : nullptr;
    if (!scope)
    {
        if (session)
            m_lastError = session->TakeError();
        if (m_handles.empty())
            m_session.reset(); // the next attempt begins anew
        return nullptr;
    }
    result = kSuccess;
    const uintptr_t id = NextId();
    m_handles.emplace(id, std::make_shared<const Handle>(Handle{access, session, std::move(scope)}));
    return FromId<OrbStrataHandle>(id);
}

std::shared_ptr<Session> Store::OpenSession()
{
    if (!m_session)
    {
        m_session = Session::Open(m_file.empty() ? DefaultStoreFile() : m_file, writes, m_lastError);
        if (m_session)
            m_session->HoldDelivery(m_holdsDelivery);
    }
    return m_session;
}

void Store::Close(OrbStrataHandle handle)
{
    const auto closing = Lookup(handle);
    if (!closing)
        return;
    std::shared_ptr<Session> unused; // ends, with its thread, when this function does
    {
        const std::lock_guard lock(m_mutex);
        m_handles.erase(IdOf(handle));
    }
    closing->session->UnsubscribeAll(IdOf(handle));
    const std::lock_guard lock(m_mutex);
    // The notification thread cannot wait for its own end: a session whose last handle is closed by a callback stays
    // until the next handle or Shutdown.
    if (m_handles.empty() && !closing->session->OnNotificationThread())
        unused.swap(m_session);
}

uint32_t Store::OpenHandles()
{
    const std::lock_guard lock(m_mutex);
    return static_cast<uint32_t>(m_handles.size());
}

std::shared_ptr<const Store::Handle> Store::Lookup(OrbStrataHandle handle)
{
    const std::lock_guard lock(m_mutex);
    const auto at = m_handles.find(IdOf(handle));
    return at == m_handles.end() ? nullptr : at->second;
}

OrbStrataResult Store::Answer(Session& session, OrbStrataResult result)
{
    if (result == ORB_STRATA_STORE_FAILED || result == ORB_STRATA_BUSY)
    {
        const std::lock_guard lock(m_mutex);
        m_lastError = session.TakeError();
    }
    return result;
}

OrbStrataResult Store::Find(OrbStrataHandle handle, const wchar_t* key, Entry& entry)
{
    const auto opened = Lookup(handle);
    if (!opened)
        return ORB_STRATA_INVALID_HANDLE;
    const auto utf8 = ToUtf8Strict(key);
    if (!utf8 || utf8->empty())
        return ORB_STRATA_INVALID_ARGUMENT;
    std::optional<Entry> found;
    const auto result = opened->session->Find(*opened->scope, *utf8, found);
    if (found)
    {
        entry = std::move(*found);
        return kSuccess;
    }
    if (result == kSuccess)
        return ORB_STRATA_NOT_FOUND;
    return Answer(*opened->session, result);
}

OrbStrataResult Store::List(OrbStrataHandle handle, const wchar_t* prefix, Entries& entries)
{
    const auto opened = Lookup(handle);
    if (!opened)
        return ORB_STRATA_INVALID_HANDLE;
    const auto start = ToUtf8Strict(prefix ? prefix : L"");
    if (!start)
        return ORB_STRATA_INVALID_ARGUMENT;
    return Answer(*opened->session, opened->session->List(*opened->scope, *start, entries));
}

OrbStrataResult Store::Apply(OrbStrataHandle handle, const std::vector<Edit>& edits, uint32_t* written)
{
    const auto opened = Lookup(handle);
    if (!opened)
        return ORB_STRATA_INVALID_HANDLE;
    for (const Edit& edit : edits)
        if (!MayWrite(opened->access, edit.key))
            return ORB_STRATA_ACCESS_DENIED;
    const Writer writer{IdOf(handle), opened->access == Access::Product, !writes.OnObserverThread()};
    return Answer(*opened->session, opened->session->Apply(*opened->scope, writer, edits, written));
}

OrbStrataSubscription Store::Subscribe(OrbStrataHandle handle, Interest interest, OrbStrataResult& result)
{
    const auto opened = Lookup(handle);
    if (!opened)
    {
        result = ORB_STRATA_INVALID_HANDLE;
        return nullptr;
    }
    const uintptr_t id = NextId();
    Subscription subscription{IdOf(handle), opened->scope->sid, std::move(interest)};
    result = Answer(*opened->session, opened->session->Subscribe(id, std::move(subscription)));
    return result == kSuccess ? FromId<OrbStrataSubscription>(id) : nullptr;
}

void Store::Unsubscribe(OrbStrataHandle handle, OrbStrataSubscription subscription)
{
    if (const auto opened = Lookup(handle))
        opened->session->Unsubscribe(IdOf(handle), IdOf(subscription));
}

void Store::HoldDelivery(bool on)
{
    std::unique_lock lock(m_mutex);
    m_holdsDelivery = on;
    const auto session = m_session;
    lock.unlock();
    if (session)
        session->HoldDelivery(on);
}

bool Store::WaitForDelivery(std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    std::unique_lock lock(m_mutex);
    const auto session = m_session;
    lock.unlock();
    return !session || session->WaitForDelivery(deadline);
}

bool Store::IsProduct(OrbStrataHandle handle)
{
    const auto opened = Lookup(handle);
    return opened && opened->access == Access::Product;
}

void Store::SetElevationHandler(OrbStrataElevationHandler handler, void* context)
{
    const std::lock_guard lock(m_mutex);
    m_elevationHandler = {handler, context};
}

bool Store::AcceptsElevation(const wchar_t* clientId)
{
    std::unique_lock lock(m_mutex);
    const auto [handler, context] = m_elevationHandler;
    lock.unlock();
    return handler ? handler(context, clientId) : acceptElevation.load();
}

void Store::SetFile(const char* path)
{
    const std::lock_guard lock(m_mutex);
    m_file = path ? path : "";
}

std::string Store::LastError()
{
    const std::lock_guard lock(m_mutex);
    return m_lastError;
}

} // namespace Strata
