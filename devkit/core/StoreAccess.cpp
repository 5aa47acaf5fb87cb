#include "devkit/core/StoreAccess.h"

#include <utility>

namespace
{

QString LastError()
{
    char* const text = OrbStrataControl_LastError();
    const QString sentence = QString::fromUtf8(text);
    OrbStrata_FreeString(text);
    return sentence.isEmpty() ? QStringLiteral("The store could not be read or written.") : sentence;
}

template <class T = QVariant>
Result<T> Explain(OrbStrataResult result, const QString& key)
{
    switch (result)
    {
    case ORB_STRATA_SUCCESS:
        return {};
    case ORB_STRATA_ACCESS_DENIED:
        return Result<T>::Failure(QStringLiteral("The store denies access to \"%1\".").arg(key));
    case ORB_STRATA_NOT_FOUND:
        return Result<T>::Failure(QStringLiteral("There is no value under \"%1\" in this scope.").arg(key),
                                  FailureKind::NotFound);
    case ORB_STRATA_INVALID_ARGUMENT:
        return Result<T>::Failure(QStringLiteral("The store does not take this key or value (\"%1\").").arg(key),
                                  FailureKind::Refused);
    case ORB_STRATA_STORE_FAILED:
    case ORB_STRATA_BUSY:
        return Result<T>::Failure(LastError());
    default:
        return Result<T>::Failure(QStringLiteral("The store answered %1 for \"%2\".").arg(result).arg(key));
    }
}

void NL_SUITE_CALL Collect(void* context, const OrbStrataEntry* entry)
{
    static_cast<StoreAccess::Entries*>(context)->emplace(QString::fromWCharArray(entry->key),
                                                         StoreEntry::FromC(*entry));
}

} // namespace

StoreAccess::StoreAccess(const QString& storeFile, QString userSid) : m_userSid(std::move(userSid))
{
    OrbStrataControl_SetStoreFile(storeFile.toUtf8().constData());
}

StoreAccess::~StoreAccess()
{
    for (const auto& [sid, handle] : m_handles)
        OrbStrata_CloseHandle(handle);
    OrbStrataControl_Shutdown();
}

Result<StoreEntry> StoreAccess::Get(const QString& scope, const QString& key)
{
    const auto target = Locate(scope, key);
    if (!target.Ok())
        return Result<StoreEntry>::Failure(target);
    Entries found;
    const OrbStrataResult result =
        OrbStrataControl_Find(target.value.handle, target.value.key.c_str(), &Collect, &found);
    if (result != ORB_STRATA_SUCCESS && result != ORB_STRATA_NOT_FOUND)
        return Explain<StoreEntry>(result, key);
    return {found.empty() ? StoreEntry() : found.begin()->second, {}};
}

Result<StoreAccess::Entries> StoreAccess::List(const QString& scope, const QString& prefix)
{
    const auto target = Locate(scope, prefix);
    if (!target.Ok())
        return Result<Entries>::Failure(target);
    Entries entries;
    const OrbStrataResult result =
        OrbStrataControl_List(target.value.handle, target.value.key.c_str(), &Collect, &entries);
    if (result != ORB_STRATA_SUCCESS)
        return Explain<Entries>(result, prefix);
    return {entries, {}};
}

template <class Call>
Answer StoreAccess::Do(const QString& scope, const QString& key, Call&& call)
{
    const auto target = Locate(scope, key);
    return target.Ok() ? Explain(call(target.value), key.isEmpty() ? scope : key) : Answer::Failure(target);
}

Answer StoreAccess::Set(const QString& scope, const QString& key, const StoreEntry& entry)
{
    const EntriesForC written({{key, entry}});
    return Do(scope, key,
              [&](const Target& target) { return OrbStrataControl_WriteValue(target.handle, written.Data()); });
}

Answer StoreAccess::Write(const QString& scope, const Entries& entries)
{
    const EntriesForC all(entries);
    return Do(scope, {},
              [&](const Target& target) { return OrbStrataControl_WriteAll(target.handle, all.Data(), all.Count()); });
}

Answer StoreAccess::WriteIfAbsent(const QString& scope, const Entries& entries)
{
    const EntriesForC all(entries);
    uint32_t written = 0;
    Answer answer = Do(scope, {}, [&](const Target& target) {
        return OrbStrataControl_WriteIfAbsent(target.handle, all.Data(), all.Count(), &written);
    });
    if (answer.Ok())
        answer.value = written;
    return answer;
}

Answer StoreAccess::Remove(const QString& scope, const QString& key)
{
    return Do(
        scope, key, [](const Target& target) { return OrbStrataControl_Remove(target.handle, target.key.c_str()); });
}

Answer StoreAccess::Constrain(const QString& scope, const QString& key, quint32 constraints)
{
    return Do(
        scope, key,
        [constraints](const Target& target) {
            return OrbStrata_SetConstraints(target.handle, target.key.c_str(), constraints);
        });
}

StoreAccess::Watch::~Watch()
{
    OrbStrata_Unsubscribe(m_handle, m_subscription);
    OrbStrata_CloseHandle(m_handle);
}

void NL_SUITE_CALL StoreAccess::Watch::Tell(void* context, int32_t changeType, const OrbStrataEntry* entry)
{
    static_cast<Watch*>(context)->m_onChange(QString::fromWCharArray(entry->key), changeType == ORB_STRATA_REMOVED,
                                             StoreEntry::FromC(*entry));
}

Result<std::shared_ptr<StoreAccess::Watch>> StoreAccess::WatchChanges(const QString& scope, const QString& prefix,
                                                                      Watch::OnChange onChange)
{
    using Watching = Result<std::shared_ptr<Watch>>;
    const auto handle = Open(scope);
    if (!handle.Ok())
        return Watching::Failure(handle);
    const std::shared_ptr<Watch> watch(new Watch());
    watch->m_onChange = std::move(onChange);
    watch->m_handle = handle.value;
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    watch->m_subscription =
        OrbStrataControl_Watch(watch->m_handle, prefix.toStdWString().c_str(), &Watch::Tell, watch.get(), &result);
    if (result != ORB_STRATA_SUCCESS)
        return Explain<std::shared_ptr<Watch>>(result, prefix);
    return {watch, {}};
}

Result<QString> StoreAccess::SidOf(const QString& scope) const
{
    const QString sid = scope == QLatin1String("system") ? QString(QLatin1String(kSystemSid))
                        : scope == QLatin1String("user") ? m_userSid
                                                         : scope;
    if (scope.contains(QChar(0)) || !OrbStrataControl_IsScope(sid.toStdWString().c_str()))
    {
        return Result<QString>::Failure(
            QStringLiteral("A scope is \"system\", \"user\" or a SID, not \"%1\".").arg(scope), FailureKind::Misused);
    }
    return {sid, {}};
}

QString StoreAccess::ScopeOf(const QString& sid) const
{
    return sid == QLatin1String(kSystemSid) ? QStringLiteral("system")
           : sid == m_userSid               ? QStringLiteral("user")
                                            : sid;
}

Result<OrbStrataHandle> StoreAccess::Open(const QString& scope) const
{
    const Result<QString> sid = SidOf(scope);
    if (!sid.Ok())
        return Result<OrbStrataHandle>::Failure(sid);
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    auto* const handle = OrbStrataControl_OpenProductHandle(sid.value.toStdWString().c_str(), &result);
    if (result != ORB_STRATA_SUCCESS)
        return Explain<OrbStrataHandle>(result, scope);
    return {handle, {}};
}

Result<StoreAccess::Target> StoreAccess::Locate(const QString& scope, const QString& key)
{
    if (key.contains(QChar(0)) || !key.isValidUtf16()) // would name another setting in the store's interface
        return Result<Target>::Failure(QStringLiteral("A key is text without NUL characters."), FailureKind::Refused);
    auto known = m_handles.find(scope);
    if (known == m_handles.end())
    {
        const auto opened = Open(scope);
        if (!opened.Ok())
            return Result<Target>::Failure(opened);
        known = m_handles.emplace(scope, opened.value).first;
    }
    return {{known->second, key.toStdWString()}, {}};
}
