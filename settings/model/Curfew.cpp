#include "settings/model/Curfew.h"

#include "settings/model/Invariant.h"

namespace Settings
{

namespace
{

constexpr FunctionLog kCurfewLog(L"Settings::Curfew::Curfew");

void CheckInvariants(const Curfew& curfew)
{
    CheckInvariant(kCurfewLog, curfew.From >= std::chrono::hours(0), L"From >= std::chrono::hours(0)");
    CheckInvariant(kCurfewLog, curfew.Until > std::chrono::hours(0), L"Until > std::chrono::hours(0)");
    CheckInvariant(kCurfewLog, curfew.Until <= std::chrono::hours(24), L"Until <= std::chrono::hours(24)");
}

void Read(const StrataSettings::StrataObject& record, const wchar_t* field, StrataSettings::Seconds& value)
{
    std::int64_t seconds = value.count();
    record.Get(field, seconds);
    value = StrataSettings::Seconds(seconds);
}

} // namespace

Curfew::Curfew(int fromHour, int untilHour) : From(std::int64_t{3600} * fromHour), Until(std::int64_t{3600} * untilHour)
{
    CheckInvariants(*this);
}

Curfew::Curfew(const StrataSettings::StrataObject& record)
{
    Read(record, L"from", From);
    Read(record, L"until", Until);
    CheckInvariants(*this);
}

bool Curfew::WriteTo(StrataSettings::StrataObject& record) const
{
    return record.Set(L"from", From.count()) && record.Set(L"until", Until.count());
}

} // namespace Settings
