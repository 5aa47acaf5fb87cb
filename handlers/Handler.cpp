#include "handlers/Handler.h"

#include <algorithm>

void Handler::OnNotify(VariableIdentifier identifier)
{
    LOG(m_notifyLog, 5, L"%s: %ls", LogString(identifier).c_str());
    for (const auto& [first, last] : m_rules)
    {
        const auto* rule = std::find_if(first, last, [&](const NotifyRule& each) { return each.id == identifier; });
        if (rule == last)
            continue;
        if (rule->action)
            (this->*rule->action)();
        else if (rule->actionOnId)
            (this->*rule->actionOnId)(identifier);
        return;
    }
}

void Handler::Follow(const NotifyRule* first, const NotifyRule* last)
{
    m_rules.emplace_back(first, last);
    for (const NotifyRule* rule = first; rule != last; ++rule)
        m_variables.Subscribe({rule->id});
}
