#include "devkit/core/VariableHub.h"

#include "tarn/VariableIdentifier.h"

#include <algorithm>
#include <utility>

namespace
{

/// What a page can tell apart; numbers of different widths are one kind.
QString KindOf(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.type()))
    {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return QStringLiteral("number");
    default:
        return QString::fromLatin1(value.typeName());
    }
}

} // namespace

QMetaMethod FindSlot(const QObject& receiver, const char* slot)
{
    if (!slot || slot[0] != '0' + QSLOT_CODE)
        return {};
    const QMetaObject* metaObject = receiver.metaObject();
    const QMetaMethod method = metaObject->method(metaObject->indexOfSlot(QMetaObject::normalizedSignature(slot + 1)));
    const QList<QByteArray> parameters = method.parameterTypes();
    const bool fits = parameters.isEmpty() || parameters == QList<QByteArray>{"VariableIdentifier"};
    return fits ? method : QMetaMethod();
}

QVariantMap VariableHub::View::Describe() const
{
    return {{QStringLiteral("value"), value},
            {QStringLiteral("type"), value.isValid() ? QVariant(QLatin1String(value.typeName())) : QVariant()},
            {QStringLiteral("registered"), registered},
            {QStringLiteral("kept"), kept},
            {QStringLiteral("owner"), owner.isEmpty() ? QVariant() : QVariant(owner)},
            {QStringLiteral("subscribers"), subscribers},
            {QStringLiteral("writes"), writes},
            {QStringLiteral("triggers"), triggers}};
}

VariableHub::VariableHub(Warn warn, History::Limits limits) : m_history(limits), m_warn(std::move(warn)) {}

QVariant VariableHub::Value(const QString& name) const
{
    const auto found = m_variables.find(name);
    return found == m_variables.end() ? QVariant() : found->second.value;
}

void VariableHub::Set(const QString& name, const QVariant& value, Actor by)
{
    Variable& variable = m_variables[name];
    WarnOfMisuse(name, variable, value, by);
    variable.value = value;
    ++variable.writes;
    Record(name, VariableChange::Kind::Set, by, value);
}

void VariableHub::Trigger(const QString& name, const QVariant& value, Actor by)
{
    Variable& variable = m_variables[name];
    if (value.isValid())
        variable.value = value;
    ++variable.triggers;
    Record(name, VariableChange::Kind::Trigger, by, value);
}

void VariableHub::Register(const QString& name, Owner owner)
{
    std::vector<Owner>& providers = m_variables[name].providers;
    if (std::find(providers.begin(), providers.end(), owner) == providers.end())
        providers.push_back(owner);
}

void VariableHub::RegisterKept(const QString& name, Owner owner)
{
    Register(name, owner);
    m_variables[name].kept = true;
}

bool VariableHub::Subscribe(const QString& name, Owner owner, QObject* receiver, const char* slot)
{
    const QMetaMethod method = receiver ? FindSlot(*receiver, slot) : QMetaMethod();
    if (!method.isValid())
    {
        m_warn(QStringLiteral("A subscription of %1 names no slot that could take it: %2")
                   .arg(name, QString::fromUtf8(slot)));
        return false;
    }
    const quint64 key = m_nextSubscription++;
    m_subscriptions.emplace(key, Subscription{owner, receiver, method});
    m_variables[name].subscriptions.push_back(key);
    return true;
}

void VariableHub::Release(Owner owner)
{
    for (auto it = m_subscriptions.begin(); it != m_subscriptions.end();)
        it = it->second.owner == owner ? m_subscriptions.erase(it) : std::next(it);
    for (auto& [name, variable] : m_variables)
    {
        auto& providers = variable.providers;
        providers.erase(std::remove(providers.begin(), providers.end(), owner), providers.end());
        auto& keys = variable.subscriptions;
        keys.erase(
            std::remove_if(keys.begin(), keys.end(), [this](quint64 key) { return m_subscriptions.count(key) == 0; }),
            keys.end());
    }
}

std::map<QString, VariableHub::View> VariableHub::Variables(const QString& prefix) const
{
    std::map<Owner, QString> owners;
    for (const auto& [key, subscription] : m_subscriptions)
        if (subscription.receiver)
            owners.emplace(subscription.owner, QLatin1String(subscription.receiver->metaObject()->className()));
    std::map<QString, View> views;
    for (auto it = m_variables.lower_bound(prefix); it != m_variables.end() && it->first.startsWith(prefix); ++it)
    {
        const Variable& variable = it->second;
        const auto alive = std::count_if(variable.subscriptions.begin(), variable.subscriptions.end(),
                                         [this](quint64 key) { return m_subscriptions.at(key).receiver != nullptr; });
        const bool registered = !variable.providers.empty();
        const auto owner = registered ? owners.find(variable.providers.front()) : owners.end();
        views.emplace(it->first,
                      View{variable.value, registered, variable.kept, owner == owners.end() ? QString() : owner->second,
                           static_cast<int>(alive), variable.writes, variable.triggers});
    }
    return views;
}

void VariableHub::Record(const QString& name, VariableChange::Kind kind, Actor by, const QVariant& value)
{
    const VariableChange change = m_history.Add({0, name, kind, by, value, by == Actor::PlugIn ? m_told : 0});
    if (m_observer)
        m_observer(change);
    Notify(change.sequence, name);
}

void VariableHub::Notify(quint64 change, const QString& name)
{
    m_pending.emplace_back(change, name);
    if (m_told > 0)
        return;
    while (!m_pending.empty())
    {
        const auto [next, nextName] = m_pending.front();
        m_pending.pop_front();
        m_told = next;
        Deliver(nextName);
    }
    m_told = 0;
}

void VariableHub::Deliver(const QString& name)
{
    // A subscriber may subscribe, release its peer or delete another subscriber: each is looked up when its turn comes.
    const std::vector<quint64> keys = m_variables[name].subscriptions;
    for (const quint64 key : keys)
    {
        const auto found = m_subscriptions.find(key);
        if (found == m_subscriptions.end() || !found->second.receiver)
            continue;
        QObject* receiver = found->second.receiver;
        const QMetaMethod slot = found->second.slot;
        if (slot.parameterCount() == 0)
            slot.invoke(receiver, Qt::DirectConnection);
        else
            slot.invoke(receiver, Qt::DirectConnection, Q_ARG(VariableIdentifier, VariableIdentifier(name)));
    }
}

void VariableHub::WarnOfMisuse(const QString& name, Variable& variable, const QVariant& value, Actor by)
{
    if (variable.warned)
        return;
    const bool undeclared = by == Actor::PlugIn && variable.providers.empty() && variable.subscriptions.empty();
    const bool otherType = variable.value.isValid() && value.isValid() && KindOf(variable.value) != KindOf(value) &&
                           variable.triggers == 0;
    variable.warned = undeclared || otherType;
    if (undeclared)
        m_warn(QStringLiteral("The plug-in writes %1, which it has neither registered nor subscribed.").arg(name));
    else if (otherType)
        m_warn(QStringLiteral("%1 held a value of type %2 and is now written as %3.")
                   .arg(name, KindOf(variable.value), KindOf(value)));
}
