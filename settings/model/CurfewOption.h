#pragma once

#include "settings/model/Group.h"

namespace Settings
{

/// A bedtime that serves several nights: enabled, and one range of a day in seconds from midnight. By default the
/// smallest valid range.
class CurfewOption : public Group
{
public:
    CurfewOption(Model* parent, const std::wstring& keyBase)
        : Group(parent), enabled(this, keyBase + L".enabled", false),
          rangeFrom(this, keyBase + L".range.from", Seconds(0)), rangeUntil(this, keyBase + L".range.until", Seconds(1))
    {}

    Property<bool> enabled;
    Property<Seconds> rangeFrom;
    Property<Seconds> rangeUntil;
};

class SchoolNights : public CurfewOption
{
public:
    explicit SchoolNights(Model* parent) : CurfewOption(parent, L"common.time.curfew.options.school_nights") {}
};

class Weekends : public CurfewOption
{
public:
    explicit Weekends(Model* parent) : CurfewOption(parent, L"common.time.curfew.options.weekends") {}
};

} // namespace Settings
