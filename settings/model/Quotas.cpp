#include "settings/model/Quotas.h"

#include "settings/model/Invariant.h"

namespace Settings
{

namespace
{
constexpr FunctionLog kQuotaLog(L"Settings::Quota::Quota");
}

Quota::Quota(Model* parent, const wchar_t* day, Seconds duration)
    : Group(parent), enabled(this, std::wstring(L"common.time.quota.") + day + L".enabled", false),
      Duration(this, std::wstring(L"common.time.quota.") + day + L".duration", duration)
{
    CheckInvariant(kQuotaLog, duration >= std::chrono::hours(0), L"*Duration >= std::chrono::hours(0)");
    CheckInvariant(kQuotaLog, duration <= std::chrono::hours(24), L"*Duration <= std::chrono::hours(24)");
}

} // namespace Settings
