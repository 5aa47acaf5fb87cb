#pragma once

#include "handlers/SettingsControllers.h"
#include "handlers/UiVariables.h"
#include "logging/FunctionLog.h"

#include <QObject>

#include <cstddef>
#include <utility>
#include <vector>

struct NotifyRule;

/// What the handlers share: their UI variables, the notifications, which lead to rows of the handler's tables, and
/// what they follow in the settings. UI thread only.
class Handler : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    /// Carries out the first rule that the variable matches, if there is one.
    void OnNotify(VariableIdentifier identifier);

protected:
    /// `notifyName` is what OnNotify() is called in the log.
    explicit Handler(const wchar_t* notifyName) : m_notifyLog(notifyName) {}

    /// Subscribes the rules' variables. The table must outlive the handler.
    template <std::size_t Count>
    void Follow(const NotifyRule (&rules)[Count])
    {
        Follow(rules, rules + Count);
    }

    /// Has `callback` called with the key of each change of the property, until the handler's end.
    void Follow(ControllerBase& controller, const StrataSettings::PropertyBase& property,
                ControllerBase::ChangeCallback callback)
    {
        m_registrations.push_back(controller.Subscribe(property, std::move(callback)));
    }

    UiVariables m_variables{*this};

private:
    void Follow(const NotifyRule* first, const NotifyRule* last);

    const FunctionLog m_notifyLog;
    std::vector<std::pair<const NotifyRule*, const NotifyRule*>> m_rules; // tables, from first to behind the last
    std::vector<ControllerBase::Registration> m_registrations;
};

/// What a notified variable leads to: an operation of the handler, with or without the variable's id, or none.
struct NotifyRule
{
    explicit constexpr NotifyRule(const VariableIdentifier& ruleId) : id(ruleId) {}

    template <class Derived>
    constexpr NotifyRule(const VariableIdentifier& ruleId, void (Derived::*ruleAction)())
        : id(ruleId), action(static_cast<void (Handler::*)()>(ruleAction))
    {}

    template <class Derived>
    constexpr NotifyRule(const VariableIdentifier& ruleId, void (Derived::*ruleAction)(const VariableIdentifier&))
        : id(ruleId), actionOnId(static_cast<void (Handler::*)(const VariableIdentifier&)>(ruleAction))
    {}

    const VariableIdentifier& id;
    void (Handler::*action)() = nullptr;
    void (Handler::*actionOnId)(const VariableIdentifier& id) = nullptr;
};
