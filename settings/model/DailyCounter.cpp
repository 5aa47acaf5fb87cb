#include "settings/model/DailyCounter.h"

#include "settings/model/Invariant.h"

namespace Settings
{

namespace
{

constexpr FunctionLog kCounterLog(L"Settings::DailyCounter::DailyCounter");

struct Field
{
    const wchar_t* name;
    std::int64_t DailyCounter::*member;
};

constexpr Field kFields[] = {
    {L"julianDate", &DailyCounter::JulianDate},
    {L"websitesChecked", &DailyCounter::websitesChecked},
    {L"bankingSessions", &DailyCounter::bankingSessions},
    {L"harmfulBlocks", &DailyCounter::harmfulBlocks},
    {L"wtsScans", &DailyCounter::wtsScans},
    {L"wtsBlocks", &DailyCounter::wtsBlocks},
};

} // namespace

DailyCounter::DailyCounter(const StrataSettings::StrataObject& record)
{
    for (const Field& field : kFields)
        record.Get(field.name, this->*field.member);
    CheckInvariant(kCounterLog, JulianDate >= 0, L"JulianDate >= 0");
}

bool DailyCounter::WriteTo(StrataSettings::StrataObject& record) const
{
    for (const Field& field : kFields)
        if (!record.Set(field.name, this->*field.member))
            return false;
    return true;
}

} // namespace Settings
