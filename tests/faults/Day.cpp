#include "tests/faults/Day.h"

#include "tests/settings/OtherValue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iterator>

namespace
{

constexpr const char* kLoadData = "@Veridan\\Settings\\Triggers:load_data";
constexpr const char* kSave = "@Veridan\\Settings\\Triggers:save";
constexpr const char* kWeekdayHours = "@TimeLimit\\Data:weekday_hours_value";
constexpr const char* kSettingsClosed = "@Veridan\\Settings\\Triggers:settings_ui_closed";
constexpr const char* kAllowedItem = "@ContentControl\\WebsiteRestrictions:allowed_action_item";
constexpr const char* kCategories = "@ContentControl\\Data:current_user_categories";
constexpr const char* kTimeSlots = "@TimeLimit\\Data:time_slots";
constexpr const char* kVisible = "@Veridan\\MainGUI:visible";

struct Switch
{
    const char* variable;
    const wchar_t* key;
    const char* move;
};
constexpr Switch kSwitches[] = {
    {"@ContentControl\\Data:current_user_web_page_filter_switch_state", L"common.content.enabled", "MoveOn"},
    {"@TimeLimit\\Data:time_limit_state", L"common.time.enabled", "MoveOff"},
    {"@SafeSearch\\Data:safe_search_state", L"windows.browsing_protection.search_result_filter.enabled", "MoveOn"},
};

StoreTest::Stored Number(OrbStrataType type, std::int64_t number)
{
    return {type, number, {}, 0};
}

StoreTest::Stored Object(const char* json)
{
    return {ORB_STRATA_TYPE_OBJECT, 0, json, 0};
}

/// What the day begins with, where another value than the default is not enough.
StoreTest::Entries BeginOf(const char* sid)
{
    const bool user = sid == StoreTest::kUser;
    StoreTest::Entries entries = {
        {L"common.digiparenting.activated", Number(ORB_STRATA_TYPE_BOOL, 0)},
        {L"common.content.enabled", Number(ORB_STRATA_TYPE_BOOL, 0)},
        {L"common.content.allowed_categories.gambling", Number(ORB_STRATA_TYPE_BOOL, 1)},
        {L"common.time.curfew.monday.ranges", Object(R"([{"from":72000,"until":79200}])")},
        {L"windows.browsing_protection.search_result_filter.enabled", Number(ORB_STRATA_TYPE_BOOL, 0)},
        {L"windows.browsing_protection.internal.sites.enabled", Number(ORB_STRATA_TYPE_BOOL, 1)},
        {kSites, user ? Object(R"([{"allowed":true,"label":"","url":"gone.example"},)"
                               R"({"allowed":true,"label":"Kept","url":"kept.example"},)"
                               R"({"allowed":false,"label":"","url":"old.example"}])")
                      : Object(R"([{"allowed":true,"label":"","url":"system.example"}])")},
        {kTrigger, Number(ORB_STRATA_TYPE_INT32, 0)},
        {kBankingSession, Number(ORB_STRATA_TYPE_BOOL, 0)},
        {L"windows.browsing_protection.internal.banking_close_event", {ORB_STRATA_TYPE_STRING, 0, {}, 0}},
        {L"windows.browsing_protection.internal.open_banking_flyer_expanded", Number(ORB_STRATA_TYPE_BOOL, 1)},
        {L"windows.browsing_protection.internal.reinstall_extensions", Number(ORB_STRATA_TYPE_INT32, 7)},
    };
    for (const wchar_t* day : {L"sunday", L"monday", L"tuesday", L"wednesday", L"thursday", L"friday", L"saturday"})
        entries[std::wstring(L"common.time.quota.") + day + L".duration"] = Number(ORB_STRATA_TYPE_INT64, 10800);
    return entries;
}

/// S-1-5-21-1-2-3-1001, as the system holds it.
std::vector<std::uint8_t> UserSid()
{
    return {1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0xE9, 3, 0, 0};
}

std::map<std::string, std::string> StringsOf(const RecordingHost& host)
{
    const QMap<QString, QVariant> values = host.Values();
    std::map<std::string, std::string> texts;
    for (auto value = values.begin(); value != values.end(); ++value)
        texts[value.key().toStdString()] = QJsonDocument(QJsonArray{QJsonValue::fromVariant(value.value())})
                                               .toJson(QJsonDocument::Compact)
                                               .toStdString();
    return texts;
}

/// Everything that has the plug-in publish.
void Refresh(RecordingHost& host)
{
    host.PageFires(kLoadData);
    host.PageFires("@ContentControl\\Triggers:show_website_list");
    host.PageFires("@Localization\\MetaData\\Localization:updated");
}

} // namespace

const Day::Step Day::kSteps[] = {
    {"start", &Day::Start},
    {"open the settings", &Day::OpenSettings},
    {"move the switches", &Day::MoveSwitches},
    {"choose another limit", &Day::ChooseAnotherLimit},
    {"save the settings", &Day::SaveSettings},
    {"close the settings", &Day::CloseSettings},
    {"edit websites", &Day::EditWebsites},
    {"allow an address", &Day::AllowAddress},
    {"reinstall the extensions", &Day::ReinstallExtensions},
    {"have a banking session", &Day::HaveBankingSession},
    {"warn of the time", &Day::WarnOfTheTime},
    {"lock and extend", &Day::LockAndExtend},
    {"change settings", &Day::ChangeSettings},
};

Day::Day()
{
    m_sessions.processUser = UserSid();
    Seed();
}

Day::~Day()
{
    End();
}

void Day::Seed()
{
    static std::map<std::string, Entries> s_begin;
    for (const char* sid : {kSystem, kUser})
    {
        Entries& begin = s_begin[sid];
        if (begin.empty())
        {
            ElevatedSettings seed(nullptr, sid, kSettingsClientId, true);
            seed.WritableSettings().ForEachProperty(
                [](StrataSettings::PropertyBase& property) { EXPECT_TRUE(ChangeToAnotherValue(property)); });
            EXPECT_TRUE(seed.Save());
            begin = BeginOf(sid);
            begin.merge(Contents(sid));
        }
        PutAll(sid, begin);
    }
}

void Day::Live()
{
    for (std::size_t step = 0; step < std::size(kSteps); ++step)
    {
        Go(step);
        Settle();
        AfterStep(kSteps[step].name);
    }
}

void Day::Go(std::size_t index)
{
    const Step& step = kSteps[index];
    (this->*step.go)();
}

std::vector<const char*> Day::StepNames()
{
    std::vector<const char*> names;
    for (const Step& step : kSteps)
        names.push_back(step.name);
    return names;
}

void Day::Start()
{
    m_host = std::make_unique<RecordingHost>();
    m_plugIn = std::make_unique<ContentControl>();
    EXPECT_TRUE(m_plugIn->Initialize(m_host.get()));
    m_plugIn->OnEventLoopReady();
    m_host->PageFires("@SafeBanking\\Triggers:closeBankingSession"); // the page's echo of the initial state
    m_host->PageSets(kVisible, true);
}

void Day::End()
{
    m_plugIn.reset();
    m_host.reset();
}

void Day::OpenSettings()
{
    m_host->PageFires("@Veridan\\Settings\\Triggers:request_show_settings_ui");
}

void Day::MoveSwitches()
{
    for (const Switch& moved : kSwitches)
        m_host->PageSets(moved.variable, moved.move);
}

/// Which is not the last word. Only a limit that is chosen is saved, and all days have it then.
void Day::ChooseAnotherLimit()
{
    m_host->PageSets(kWeekdayHours, 5);
    m_host->PageFires(kSave);
}

/// What people do not touch is saved as the page shows it.
void Day::SaveSettings()
{
    QVariantMap categories = m_host->Value(kCategories).toMap();
    QVariantMap allowed = categories["Categories"].toMap();
    allowed["gambling"] = false;
    categories["Categories"] = allowed;
    m_host->PageSets(kCategories, categories);
    m_host->PageSets("@ContentControl\\Data:categories_filter", true);
    QString week = m_host->Value(kTimeSlots).toString();
    week.replace(0, 24, "111111111111111111110000");
    m_host->PageSets(kTimeSlots, week);
    m_host->PageSets(kWeekdayHours, 2);
    m_host->PageFires(kSave);
    m_host->PageFires("@VDNSettings:save");
}

void Day::CloseSettings()
{
    m_host->PageFires(kSettingsClosed);
}

void Day::EditWebsites()
{
    m_host->PageFires("@ContentControl\\Triggers:request_show_website_list");
    m_host->PageSets(kAllowedItem, QVariantMap{{"new", "new.example"}});
    m_host->PageSets("@ContentControl\\WebsiteRestrictions:denied_action_item",
                     QVariantMap{{"edit", QVariantMap{{"old", "old.example"}, {"new", "older.example"}}}});
    m_host->PageSets(kAllowedItem, QVariantMap{{"remove", "gone.example"}});
    m_host->PageFires("@ContentControl\\Triggers:close_website_list");
}

void Day::AllowAddress()
{
    m_host->PageSets("@ContentControl\\Triggers:save_allowed_url", "link.example");
}

void Day::ReinstallExtensions()
{
    m_host->PageFires("@BrowserExtensions\\Triggers:reinstall");
}

void Day::HaveBankingSession()
{
    Put(kUser, L"windows.browsing_protection.internal.open_banking_flyer_expanded", true);
    Put(kSystem, kBankingSession, true);
    Settle();
    m_host->PageFires("@SafeBanking\\Triggers:closeBankingSession");
    Put(kSystem, kBankingSession, false);
}

void Day::WarnOfTheTime()
{
    Put(kUser, kTrigger, 5);
}

void Day::LockAndExtend()
{
    Put(kUser, kTrigger, -1);
    Settle();
    m_host->PageFires("@Veridan\\TimeLock\\Triggers:request_extend_time_dialog");
    m_host->PageSets("@Veridan\\TimeLock\\Data:time_extended_by_index", 2);
    m_host->PageFires("@Veridan\\TimeLock\\Triggers:extend_time");
    Put(kUser, kTrigger, 0);
}

/// The service's part: a value, a list and a removal; and the main window is closed.
void Day::ChangeSettings()
{
    Put(kSystem, L"windows.browsing_protection.enabled", true);
    QJsonArray sites = QJsonDocument::fromJson(QByteArray::fromStdString(Find(kUser, kSites).text)).array();
    const QJsonObject site{{"allowed", true}, {"label", ""}, {"url", "service.example"}};
    if (!sites.contains(site))
        sites.append(site);
    Put(kUser, kSites, Object(QJsonDocument(sites).toJson(QJsonDocument::Compact).constData()));
    if (Contents(kUser).count(L"windows.browsing_protection.internal.default_browser_type") != 0)
        Erase(kUser, L"windows.browsing_protection.internal.default_browser_type");
    m_host->PageSets(kVisible, false);
}

Day::Strings Day::WrongOnThePages()
{
    OpenSettings();
    Refresh(*m_host);
    CloseSettings();
    return StaleOnThePages();
}

Day::Strings Day::StaleOnThePages()
{
    RecordingHost freshHost;
    ContentControl fresh;
    EXPECT_TRUE(fresh.Initialize(&freshHost));
    Refresh(freshHost);

    Strings shown = StringsOf(*m_host);
    Strings wrong;
    for (const auto& [variable, text] : StringsOf(freshHost))
        if (shown[variable] != text)
            wrong[variable] = shown[variable] + " instead of " + text;
    wrong.erase("@Veridan\\TimeLock\\Data:block_description"); // tells of the last lock
    return wrong;
}

Day::Strings Day::ShownSwitches() const
{
    Strings shown;
    for (const Switch& each : kSwitches)
        shown[each.variable] = m_host->String(each.variable);
    return shown;
}

Day::Strings Day::StoredSwitches()
{
    Entries stored = Contents(kUser);
    Strings expected;
    for (const Switch& each : kSwitches)
        expected[each.variable] = stored[each.key].number ? "On" : "Off";
    return expected;
}
