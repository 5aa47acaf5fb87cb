#pragma once

#include <QVariant>

class QObject;
class VariableIdentifier;

/// A handler's access to the host's UI variables. UI thread only. Every operation answers true when the host carried
/// it out; the plug-in need not look. Flags are 0.
class IDataPeer
{
public:
    virtual ~IDataPeer() = default; // slot 0

    virtual void Reserved1() = 0;
    virtual void Reserved2() = 0;

    /// The variable's current value; an invalid QVariant when it has none.
    virtual QVariant GetValue(const VariableIdentifier& id) = 0; // slot 3

    /// Stores the value and notifies every subscriber of the variable, the writer too.
    virtual bool SetValue(const VariableIdentifier& id, const QVariant& value, int flags) = 0; // slot 4

    /// Fires a trigger variable; it carries no value.
    virtual bool Trigger(const VariableIdentifier& id, int flags) = 0; // slot 5

    virtual void Reserved6() = 0;

    /// Declares a variable whose value the host keeps.
    virtual bool RegisterKept(const VariableIdentifier& id) = 0; // slot 7

    virtual void Reserved8() = 0;
    virtual void Reserved9() = 0;
    virtual void Reserved10() = 0;

    /// From now on invokes `slot` (Qt's slot string, such as "1OnNotify(VariableIdentifier)") of `receiver` whenever
    /// the variable is notified, until the receiver dies or the peer is handed back.
    virtual bool Subscribe(const VariableIdentifier& id, QObject* receiver, const char* slot) = 0; // slot 11

    virtual void Reserved12() = 0;
    virtual void Reserved13() = 0;
    virtual void Reserved14() = 0;
    virtual void Reserved15() = 0;

    /// Declares a variable that the caller owns, before its first SetValue().
    virtual bool Register(const VariableIdentifier& id) = 0; // slot 16
};
