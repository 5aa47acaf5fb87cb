#pragma once

#include "handlers/ShownVariable.h"
#include "logging/FunctionLog.h"
#include "tarn/IDataPeer.h"
#include "tarn/IPlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

class QObject;

/// A handler's side of the UI variables: a data peer of the host's and the handler that the host notifies. Before
/// Obtain() there is no peer, and only the test for it may be called. UI thread only.
class UiVariables
{
public:
    using Ids = std::initializer_list<std::reference_wrapper<const VariableIdentifier>>;

    static constexpr const char* kOnNotify = "1OnNotify(VariableIdentifier)";

    explicit UiVariables(QObject& handler) : m_handler(handler) {}

    /// Takes a peer from the manager; it goes back when this object is destroyed or takes another. False, after a log
    /// line of the caller's, when the host gives none.
    bool Obtain(const FunctionLog& log, IPlugInManager* manager);
    explicit operator bool() const noexcept { return m_dataPeer != nullptr; }

    /// Declare variables that the handler owns, and such whose value the host keeps.
    void Register(Ids ids);
    void Register(const VariableIdentifier& id) { m_dataPeer->Register(id); }
    void RegisterKept(Ids ids);
    template <std::size_t Count>
    void Register(const ShownVariable (&table)[Count])
    {
        for (const ShownVariable& variable : table)
            Register(VariableIdentifier(variable.id));
    }

    /// Has the handler's slot invoked when one of these is notified.
    void Subscribe(Ids ids, const char* slot = kOnNotify);

    QVariant Get(const VariableIdentifier& id) const { return m_dataPeer->GetValue(id); }

    /// Strings become the host's, which may unload this library: they must own their characters (see UiString()).
    void Set(const VariableIdentifier& id, const QVariant& value) { m_dataPeer->SetValue(id, value, 0); }

    /// Sets each variable of the table, in its order.
    template <std::size_t Count>
    void Show(const ShownVariable (&table)[Count], const VdnSettings& settings)
    {
        for (const ShownVariable& variable : table)
            Set(VariableIdentifier(variable.id), variable.value(settings));
    }

    /// What the host answered.
    bool Fire(const VariableIdentifier& trigger) { return m_dataPeer->Trigger(trigger, 0); }

private:
    QObject& m_handler;
    std::shared_ptr<IDataPeer> m_dataPeer;
};

/// A text for the host, which keeps it: it owns its characters, unlike a QStringLiteral.
inline QString UiString(const char* ascii)
{
    return QString::fromLatin1(ascii);
}

/// An identifier's text as log formats take it.
inline std::wstring LogString(const VariableIdentifier& id)
{
    return id.ToString().toStdWString();
}
