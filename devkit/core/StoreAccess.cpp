#include "devkit/core/StoreAccess.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/StoreValue.h"
#include "devkit/strata/OrbStrataControl.h"

#include <QElapsedTimer>
#include <QRegularExpression>

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

QString Explain(OrbStrataResult result, const QString& key)
{
    switch (result)
    {
    case ORB_STRATA_SUCCESS:
        return {};
    case ORB_STRATA_ACCESS_DENIED:
        return QStringLiteral("The store denies access to \"%1\".").arg(key);
    case ORB_STRATA_NOT_FOUND:
        return QStringLiteral("There is no setting \"%1\" in this scope.").arg(key);
    case ORB_STRATA_INVALID_ARGUMENT:
        return QStringLiteral("The store does not take this key or value (\"%1\").").arg(key);
    case ORB_STRATA_STORE_FAILED:
        return LastError();
    default:
        return QStringLiteral("The store answered %1 for \"%2\".").arg(result).arg(key);
    }
}

void NL_SUITE_CALL Collect(void* context, const OrbStrataEntry* entry)
{
    static_cast<QVariantMap*>(context)->insert(QString::fromWCharArray(entry->key), StoreValue::Describe(*entry));
}

} // namespace

StoreAccess::StoreAccess(const QString& storeFile, QString userSid) : m_userSid(std::move(userSid))
{
    OrbStrataControl_SetStoreFile(storeFile.toUtf8().constData());
    OrbStrataControl_SetWriteObserver(&StoreAccess::OnWrite, this);
}

StoreAccess::~StoreAccess()
{
    for (const auto& [sid, handle] : m_handles)
        OrbStrata_CloseHandle(handle);
    OrbStrataControl_Shutdown();
    OrbStrataControl_SetWriteObserver(nullptr, nullptr);
}

Answer StoreAccess::Get(const QString& scope, const QString& key)
{
    const auto target = Locate(scope, key);
    if (!target.Ok())
        return Answer::Failure(target.error);
    QVariantMap found;
    const OrbStrataResult result =
        OrbStrataControl_Find(target.value.handle, target.value.key.c_str(), &Collect, &found);
    if (result != ORB_STRATA_SUCCESS && result != ORB_STRATA_NOT_FOUND)
        return Answer::Failure(Explain(result, key));
    return {found.value(key, StoreValue::Describe(OrbStrataEntry{})), {}};
}

Answer StoreAccess::List(const QString& scope, const QString& prefix)
{
    const auto target = Locate(scope, prefix);
    if (!target.Ok())
        return Answer::Failure(target.error);
    QVariantMap entries;
    const OrbStrataResult result =
        OrbStrataControl_List(target.value.handle, target.value.key.c_str(), &Collect, &entries);
    return {entries, Explain(result, prefix)};
}

Answer StoreAccess::Set(const QString& scope, const QString& key, const QString& type, const QVariant& value)
{
    const auto target = Locate(scope, key);
    const auto stored = StoreValue::Make(type, value);
    if (!target.Ok() || !stored.Ok())
        return Answer::Failure(target.Ok() ? stored.error : target.error);
    OrbStrataEntry entry{};
    const OrbStrataResult found = OrbStrataControl_Find(
        target.value.handle, target.value.key.c_str(),
        [](void* context, const OrbStrataEntry* present) {
            static_cast<OrbStrataEntry*>(context)->constraints = present->constraints;
        },
        &entry);
    if (found != ORB_STRATA_SUCCESS && found != ORB_STRATA_NOT_FOUND)
        return Answer::Failure(Explain(found, key));
    entry.key = target.value.key.c_str();
    entry.type = stored.value.type;
    entry.number = stored.value.number;
    entry.text = stored.value.text.constData();
    return {{}, Explain(OrbStrataControl_Write(target.value.handle, &entry), key)};
}

Answer StoreAccess::Remove(const QString& scope, const QString& key)
{
    const auto target = Locate(scope, key);
    if (!target.Ok())
        return Answer::Failure(target.error);
    return {{}, Explain(OrbStrataControl_Remove(target.value.handle, target.value.key.c_str()), key)};
}

Answer StoreAccess::Constrain(const QString& scope, const QString& key, quint32 constraints)
{
    const auto target = Locate(scope, key);
    if (!target.Ok())
        return Answer::Failure(target.error);
    return {{}, Explain(OrbStrata_SetConstraints(target.value.handle, target.value.key.c_str(), constraints), key)};
}

std::vector<StoreAccess::Write> StoreAccess::Writes() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_writes;
}

bool StoreAccess::Settle(int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    std::size_t known = 0;
    do
    {
        known = WriteCount();
        const qint64 left = timeoutMs - timer.elapsed();
        if (left < 0 || !OrbStrataControl_WaitForDelivery(static_cast<uint32_t>(left)))
            return false;
        RunUntilIdle();
    } while (WriteCount() != known);
    return true;
}

Result<StoreAccess::Target> StoreAccess::Locate(const QString& scope, const QString& key)
{
    static const QRegularExpression SidForm(QStringLiteral("^S(-\\d+){2,}$"));
    const bool system = scope == QLatin1String("system");
    const bool user = scope == QLatin1String("user");
    if (!system && !user && !SidForm.match(scope).hasMatch())
    {
        return Result<Target>::Failure(
            QStringLiteral("A scope is \"system\", \"user\" or a SID, not \"%1\".").arg(scope));
    }
    if (key.contains(QChar(0))) // would end the key in the store's interface and name another setting
        return Result<Target>::Failure(QStringLiteral("A key cannot hold a NUL character."));
    const QString sid = system ? QLatin1String(SystemSid) : user ? m_userSid : scope;
    auto known = m_handles.find(sid);
    if (known == m_handles.end())
    {
        OrbStrataResult result = ORB_STRATA_SUCCESS;
        auto* const handle = OrbStrataControl_OpenProductHandle(sid.toStdWString().c_str(), &result);
        if (result != ORB_STRATA_SUCCESS)
            return Result<Target>::Failure(Explain(result, scope));
        known = m_handles.emplace(sid, handle).first;
    }
    return {{known->second, key.toStdWString()}, {}};
}

QString StoreAccess::ScopeOf(const QString& sid) const
{
    return sid == QLatin1String(SystemSid) ? QStringLiteral("system") : sid == m_userSid ? QStringLiteral("user") : sid;
}

std::size_t StoreAccess::WriteCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_writes.size();
}

void NL_SUITE_CALL StoreAccess::OnWrite(void* context, const char* sid, const wchar_t* key, bool byPlugIn)
{
    auto* const self = static_cast<StoreAccess*>(context);
    const std::lock_guard<std::mutex> lock(self->m_mutex);
    self->m_writes.push_back(
        {self->m_writes.size() + 1, self->ScopeOf(QString::fromUtf8(sid)), QString::fromWCharArray(key), byPlugIn});
}
