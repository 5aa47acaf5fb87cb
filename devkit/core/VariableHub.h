#pragma once

#include "devkit/core/History.h"

#include <QMetaMethod>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <deque>
#include <functional>
#include <map>
#include <utility>
#include <vector>

/// The method behind Qt's slot string ("1OnSave()"): a slot that takes nothing or one VariableIdentifier; invalid when
/// `receiver` has no such slot.
QMetaMethod FindSlot(const QObject& receiver, const char* slot);

/// The UI variables: their values by id, who declared them, who listens. Plug-ins reach it through their data peers,
/// pages through the commands of the host. UI thread only.
///
/// A write or trigger notifies the variable's subscribers, the writer too, in the order of their subscription, before
/// Set() or Trigger() returns. One that is made from inside a notification is stored at once and its notification
/// delivered after the present one: notifications never nest.
class VariableHub
{
public:
    /// The party that declares and subscribes: a data peer. Only its address matters here.
    using Owner = const void*;
    /// Told of every change before the subscribers are.
    using Observer = std::function<void(const VariableChange& change)>;
    using Warn = std::function<void(const QString& sentence)>;

    struct View
    {
        QVariant value;
        bool registered;
        bool kept;
        QString owner; // the class of the plug-in that listens beside declaring it; empty: nobody declares it
        int subscribers;
        quint32 writes;
        quint32 triggers;

        /// {"value", "type", "registered", "kept", "owner", "subscribers", "writes", "triggers"}; the type is Qt's name
        /// of it, null where there is no value; the owner is null where nobody declares it.
        QVariantMap Describe() const;
    };

    explicit VariableHub(Warn warn, History::Limits limits = {});

    QVariant Value(const QString& name) const;
    void Set(const QString& name, const QVariant& value, Actor by);

    /// A trigger's value, where it carries one, becomes the variable's value first. Invalid: the value stays.
    void Trigger(const QString& name, const QVariant& value, Actor by);

    /// Declares a variable that `owner` provides. A value that is there already stays.
    void Register(const QString& name, Owner owner);
    void RegisterKept(const QString& name, Owner owner);

    /// `slot` is Qt's slot string of a slot that takes nothing or one VariableIdentifier. False: there is no such slot.
    bool Subscribe(const QString& name, Owner owner, QObject* receiver, const char* slot);

    /// Ends the declarations and subscriptions of `owner`. Values stay.
    void Release(Owner owner);

    std::map<QString, View> Variables(const QString& prefix) const;
    const std::deque<VariableChange>& Changes() const { return m_history.Changes(); }
    void SetObserver(Observer observer) { m_observer = std::move(observer); }

private:
    struct Subscription
    {
        Owner owner = nullptr;
        QPointer<QObject> receiver;
        QMetaMethod slot;
    };

    struct Variable
    {
        QVariant value;
        std::vector<Owner> providers;
        bool kept = false;
        bool warned = false;
        quint32 writes = 0;
        quint32 triggers = 0;
        std::vector<quint64> subscriptions; // keys of m_subscriptions, ascending
    };

    /// Keeps the change and tells of it.
    void Record(const QString& name, VariableChange::Kind kind, Actor by, const QVariant& value);
    void Notify(quint64 change, const QString& name);
    void Deliver(const QString& name);
    void WarnOfMisuse(const QString& name, Variable& variable, const QVariant& value, Actor by);

    std::map<QString, Variable> m_variables;
    std::map<quint64, Subscription> m_subscriptions; // by order of subscription
    quint64 m_nextSubscription = 0;
    std::deque<std::pair<quint64, QString>> m_pending; // changes that the subscribers are not told of yet
    quint64 m_told = 0;                                // the one that they are being told of; 0: none
    History m_history;
    Observer m_observer;
    Warn m_warn;
};
