#include "devkit/strata/Faults.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Strata
{

namespace
{

#define STRATA_NAME(result, name, parameters) std::string_view(#name),
constexpr std::string_view Names[] = {NL_ORB_STRATA_FUNCTIONS(STRATA_NAME)};
#undef STRATA_NAME

} // namespace

bool Faults::Set(const char* function, const wchar_t* key, OrbStrataResult code, uint32_t count)
{
    const auto name = std::find(std::begin(Names), std::end(Names), function == nullptr ? "" : function);
    if (name == std::end(Names))
        return false;
    const auto number = static_cast<Function>(name - std::begin(Names));
    const auto forKey = key == nullptr ? std::nullopt : std::optional<std::wstring>(key);
    const std::lock_guard lock(m_mutex);
    if (code != Success)
    {
        m_faults.push_back({number, forKey, code, count});
    }
    else
    {
        const auto same = [&](const Fault& fault) { return fault.function == number && fault.key == forKey; };
        m_faults.erase(std::remove_if(m_faults.begin(), m_faults.end(), same), m_faults.end());
    }
    m_any = !m_faults.empty();
    return true;
}

void Faults::Clear()
{
    const std::lock_guard lock(m_mutex);
    m_faults.clear();
    m_any = false;
}

OrbStrataResult Faults::TakeMatching(Function function, const wchar_t* key)
{
    const std::lock_guard lock(m_mutex);
    const auto at = std::find_if(m_faults.begin(), m_faults.end(), [&](const Fault& fault) {
        return fault.function == function && (!fault.key || (key != nullptr && *fault.key == key));
    });
    if (at == m_faults.end())
        return Success;
    const OrbStrataResult code = at->code;
    if (at->left != 0 && --at->left == 0)
    {
        m_faults.erase(at);
        m_any = !m_faults.empty();
    }
    return code;
}

} // namespace Strata
