#include "tests/reference/Exploration.h"

#include "handlers/SettingsControllers.h"
#include "plugin/ContentControl.h"
#include "tests/settings/OtherValue.h"
#include "tests/support/LogCapture.h"

namespace
{

constexpr const char* kScopes[] = {StoreTest::kSystem, StoreTest::kUser};

// The day of the counters in tests/settings/OtherValue.cpp, a Friday.
constexpr const char* kNow = "2023-02-24T12:00:00";
constexpr int kDay = 86'400;

/// Values that a page could write instead: a switch's move, another week, an address, a new row.
QVariantList Instead(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType()))
    {
    case QMetaType::Bool:
        return {!value.toBool()};
    case QMetaType::Int:
        return {value.toInt() == 1 ? 2 : 1};
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (QVariant& entry : map)
            entry = Instead(entry).first();
        return {map};
    }
    case QMetaType::QString: {
        QString week = value.toString();
        for (QChar& hour : week)
            hour = hour == QLatin1Char('1') ? QLatin1Char('0') : QLatin1Char('1');
        return {QStringLiteral("MoveOn"), QStringLiteral("MoveOff"), week};
    }
    default:
        const QString address = QStringLiteral("reference.example");
        return {address, 1, QVariantMap{{QStringLiteral("new"), address}}};
    }
}

template <class Set>
Set Without(Set set, const Set& others)
{
    for (const auto& other : others)
        set.erase(other);
    return set;
}

std::set<QString> Differences(const QMap<QString, QVariant>& one, const QMap<QString, QVariant>& other)
{
    std::set<QString> ids;
    for (const auto* values : {&one, &other})
        for (const QString& id : values->keys())
            if (one.value(id) != other.value(id))
                ids.insert(id);
    return ids;
}

} // namespace

Exploration::Exploration()
{
    m_sessions.processUser = {1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0xE9, 3, 0, 0};
    m_clock.Set(kNow);
    LogCapture::SetThreshold(0); // what a page must not do is tried, too
}

Findings Exploration::Explore()
{
    ElevatedSettings tree(nullptr, kUser, kSettingsClientId, true); // keeps the store open between two lives
    tree.WritableSettings().MarkChanged();
    EXPECT_TRUE(tree.Save());
    const Entries defaults = m_found.defaults = Contents(kUser);
    tree.Settings().ForEachProperty([](StrataSettings::PropertyBase& property) { ChangeToAnotherValue(property); });
    EXPECT_TRUE(tree.Save());
    const Entries others = Contents(kUser);
    TakeWrites();

    Entries moved = defaults; // every switch, and an allowance of an hour
    for (auto& [key, entry] : moved)
    {
        entry = entry.type == ORB_STRATA_TYPE_BOOL ? others.at(key) : entry;
        entry.number = entry.number == kDay ? 3'600 : entry.number;
    }
    const auto isUsers = [](const Setting& setting) { return setting.first == kUser; };
    const auto toOther = [&](const Setting& setting, Stored& entry) {
        entry = others.at(setting.second);
        return isUsers(setting);
    };

    TrySettings(defaults, [&](const Setting& setting, Stored& entry) {
        toOther(setting, entry);
        entry.constraints = ORB_STRATA_CONSTRAINT_ENFORCED;
        return true;
    });
    TrySettings(moved, [&](const Setting& setting, Stored& entry) {
        entry = entry.type == ORB_STRATA_TYPE_BOOL ? defaults.at(setting.second) : others.at(setting.second);
        entry.number = entry.type == ORB_STRATA_TYPE_INT64 ? 5'430 : entry.number;
        return isUsers(setting);
    });
    const auto now = static_cast<int>(FakeClock::Seconds(kNow));
    for (const int number : {1, 5, -1, -now, -now - kDay}) // a countdown, or the end of a lock
    {
        TrySettings(
            defaults,
            [&](const Setting& setting, Stored& entry) {
                entry.number = number;
                return isUsers(setting) && entry.type == ORB_STRATA_TYPE_INT32;
            });
    }
    for (const std::wstring mode : {L"device_mode", L"browser_mode"})
    {
        const std::wstring data = L"windows.browsing_protection.internal.time_limit_data." + mode;
        Entries used = moved; // some of the allowance, today
        used[data + L".duration"].number = 600;
        used[data + L".last_update"].number = std::int64_t{now} * 10'000'000;
        TrySettings(used, [&](const Setting& setting, Stored& entry) {
            return toOther(setting, entry) && setting.second.compare(0, data.size(), data) == 0;
        });
    }
    for (int day = 1; day < 7; ++day)
    {
        m_clock.Advance(kDay);
        TrySettings(moved, [&](const Setting& setting, Stored& entry) {
            return entry.number == 3'600 && toOther(setting, entry);
        });
    }
    TrySelectors(defaults, others);
    TryVariables(defaults);
    TryVariables(moved);
    return m_found;
}

void Exploration::TrySelectors(const Entries& defaults, const Entries& others)
{
    std::set<Setting> shown;
    for (const auto& [id, variable] : m_found.variables)
        shown.insert(variable.shows.begin(), variable.shows.end());
    for (std::size_t bit = 1; bit < defaults.size(); bit <<= 1)
    {
        Entries some = defaults;
        std::size_t number = 0;
        for (auto& [key, entry] : some)
            if ((number++ & bit) != 0 && entry.type == ORB_STRATA_TYPE_BOOL)
                entry = others.at(key);
        TrySettings(some, [&](const Setting& setting, Stored& entry) {
            entry.number = entry.number == 0 ? 1 : 0;
            return entry.type == ORB_STRATA_TYPE_BOOL && shown.count(setting) == 0;
        });
    }
}

Exploration::Life Exploration::Live(const Play& play)
{
    Life life;
    RecordingHost host;
    for (const QString& id : m_texts)
        host.PageSets(id.toUtf8(), id + QLatin1String(" %1"));
    {
        ContentControl plugIn;
        EXPECT_TRUE(plugIn.Initialize(&host));
        plugIn.OnEventLoopReady();
        play(host);
    }
    life.values = host.Values();
    for (const auto& [handler, variables] : host.UsesByHandler())
    {
        for (const auto& [id, uses] : variables)
        {
            m_found.handlers[handler][id].insert(uses.begin(), uses.end());
            if (uses.count("trigger") != 0)
                life.fired.insert(id);
        }
    }
    for (const WrittenKey& write : TakeWrites())
    {
        life.written.emplace(write.sid, write.key);
        m_found.saved.emplace(write.sid, write.key);
        Put(write.sid.c_str(), write.key, m_present.at(write.key));
    }
    return life;
}

void Exploration::TrySettings(const Entries& present, const Change& change)
{
    Fill(present);
    const auto look = [](RecordingHost& host) {
        host.PageFires("@Veridan\\Settings\\Triggers:load_data");
        host.PageFires("@ContentControl\\Triggers:show_website_list");
    };
    for (const auto& [handler, variables] : m_found.handlers)
        for (const auto& [id, uses] : variables)
            if (uses.count("get") != 0 && id.contains(QLatin1String("Strings:")))
                m_texts.insert(id);
    Live(look); // does what is done once in a process
    const Life before = Live(look);
    for (auto value = before.values.begin(); value != before.values.end(); ++value)
        if (value->isValid())
            m_found.variables[value.key()].types.insert(value->typeName());

    for (const char* sid : kScopes)
    {
        for (const auto& [key, entry] : present)
        {
            Stored changed = entry;
            if (!change({sid, key}, changed))
                continue;
            Put(sid, key, changed);
            const Life after = Live(look);
            Put(sid, key, entry);

            std::set<QString> ids = Differences(before.values, after.values);
            ids.merge(Without(before.fired, after.fired));
            ids.merge(Without(after.fired, before.fired));
            for (const QString& id : ids)
                m_found.variables[id].shows.emplace(sid, key);
        }
    }
}

void Exploration::TryVariables(const Entries& present)
{
    Fill(present);
    const auto open = [](RecordingHost& host) {
        host.PageFires("@Veridan\\Settings\\Triggers:request_show_settings_ui");
        host.PageFires("@ContentControl\\Triggers:request_show_website_list");
    };
    const auto save = [](RecordingHost& host) {
        host.PageFires("@Veridan\\Settings\\Triggers:save");
        host.PageFires("@Veridan\\TimeLock\\Triggers:extend_time");
    };
    Live(open); // constrains the statistics
    const Life before = Live([&](RecordingHost& host) {
        open(host);
        save(host);
    });
    std::set<QString> ids;
    for (const auto& [handler, variables] : m_found.handlers)
        for (const auto& [id, uses] : variables)
            if (uses.count("subscribe") != 0 || uses.count("get") != 0)
                ids.insert(id);
    for (const QString& id : ids)
    {
        const Life after = Live([&](RecordingHost& host) {
            open(host);
            for (const QVariant& value : Instead(host.Value(id.toUtf8())))
            {
                host.PageSets(id.toUtf8(), value);
                save(host);
            }
        });
        m_found.variables[id].saves.merge(Without(after.written, before.written));
    }
}

void Exploration::Fill(const Entries& present)
{
    m_present = present;
    for (const char* sid : kScopes)
        for (const auto& [key, entry] : present)
            Put(sid, key, entry);
}
