#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

#include <algorithm>

using namespace Settings;
using StrataSettings::ModificationState;
using StrataSettings::PropertySet;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const char* kGood = R"({"allowed":true,"label":"G","url":"good.example"})";

std::string Unread(const std::string& type, const std::string& field, OrbStrataResult result)
{
    return "StrataSettings::StrataObject::Get: Failed to get " + type + " for key " + field +
           ", error: " + std::to_string(result) + "u";
}

Curfew Range(std::int64_t from, std::int64_t until)
{
    Curfew range(0, 1);
    range.From = Seconds(from);
    range.Until = Seconds(until);
    return range;
}

DailyCounter Day(std::int64_t julianDate, std::int64_t websitesChecked)
{
    DailyCounter day(julianDate);
    day.websitesChecked = websitesChecked;
    return day;
}

class DamagedObjectsTest : public StoreTest
{
protected:
    using Scope = StrataSettings::ScopedSettings<VdnSettings>;

    template <class Item>
    struct Case
    {
        const char* stored;
        std::vector<Item> read; ///< In the set's order.
        std::vector<LogLine> lines;
        bool whole = false; ///< Every record is complete, and there is one of each.
    };

    void Store(const StrataSettings::PropertyBase& property, const std::string& text)
    {
        Put(kUser, property.GetKey().String(), Stored{ORB_STRATA_TYPE_OBJECT, 0, text, 0});
    }

    std::string StoredString(const StrataSettings::PropertyBase& property)
    {
        return Find(kUser, property.GetKey().c_str()).text;
    }

    /// Loads each stored text into the property, and saves the tree again.
    template <class Item>
    void ExpectRead(PropertySet<Item>& property, const std::vector<Case<Item>>& cases)
    {
        for (const Case<Item>& one : cases)
        {
            Store(property, one.stored);
            const std::string stored = StoredString(property);
            LogCapture::Take();
            property.Load();
            EXPECT_EQ(one.lines, LogCapture::Take()) << one.stored;
            EXPECT_EQ(one.whole, property.WasReadWhole()) << one.stored;
            const std::set<Item> read = property.Get();
            EXPECT_TRUE(std::equal(read.begin(), read.end(), one.read.begin(), one.read.end())) << one.stored;

            EXPECT_TRUE(m_scope.Save());
            EXPECT_THAT(TakeWrites(), IsEmpty()) << one.stored;
            EXPECT_EQ(stored, StoredString(property));
        }
    }

    Scope m_scope{kUser, L"safe", L"damaged_objects", true};
    VdnSettings& m_tree = m_scope.Settings();
    PropertySet<Site>& m_sites = m_tree.sites.list;
};

} // namespace

TEST_F(DamagedObjectsTest, SitesKeepWhatCanBeRead)
{
    const LogLine noUrl{1, "Settings::Site::Site, assertion failed: !Url.empty()"};
    const Site good("good.example", true, "G");
    LogCapture::Expect(1, noUrl.text);
    const Site nameless("", true, "L");
    LogCapture::Expect(1, noUrl.text);
    const Site nothing("", false, "");
    const auto with = [](const std::string& record) { return "[" + record + "," + kGood + "]"; };
    const std::string missing = with(R"({"allowed":true,"label":"L"})");
    const std::string wrongUrl = with(R"({"allowed":true,"label":"L","url":7})");
    const std::string wrongOthers = with(R"({"allowed":"yes","label":false,"url":"a"})");
    const std::string extra = with(R"({"allowed":false,"comment":"x","label":"A","rank":3,"url":"a"})");
    const std::string empty = with("{}");
    const std::string twice = with(R"({"allowed":false,"label":"first","url":"good.example"})");
    const std::string unordered = with(R"({"allowed":false,"label":"","url":"zzz"})");
    ExpectRead<Site>(
        m_sites, {{missing.c_str(), {nameless, good}, {{5, Unread("string", "url", ORB_STRATA_NOT_FOUND)}, noUrl}},
                  {wrongUrl.c_str(), {nameless, good}, {{5, Unread("string", "url", ORB_STRATA_WRONG_TYPE)}, noUrl}},
                  {wrongOthers.c_str(),
                   {Site("a", false, ""), good},
                   {{5, Unread("string", "label", ORB_STRATA_WRONG_TYPE)},
                    {5, Unread("boolean", "allowed", ORB_STRATA_WRONG_TYPE)}}},
                  {extra.c_str(), {Site("a", false, "A"), good}, {}, true},
                  {empty.c_str(),
                   {nothing, good},
                   {{5, Unread("string", "url", ORB_STRATA_NOT_FOUND)},
                    {5, Unread("string", "label", ORB_STRATA_NOT_FOUND)},
                    {5, Unread("boolean", "allowed", ORB_STRATA_NOT_FOUND)},
                    noUrl}},
                  {twice.c_str(), {Site("good.example", false, "first")}, {}},
                  {unordered.c_str(), {good, Site("zzz", false, "")}, {}, true},
                  {kGood, {}, {}},
                  {"[]", {}, {}, true}});
}

TEST_F(DamagedObjectsTest, OtherElementsKeepWhatCanBeRead)
{
    LogCapture::Expect(1, "Settings::PrivacyProtectedSite::PrivacyProtectedSite, assertion failed: !Address.empty()");
    const PrivacyProtectedSite nameless("", true);
    ExpectRead<PrivacyProtectedSite>(
        m_tree.bankingProtection.privacyProtectedSites,
        {{R"([{"enabled":true},{"address":"bank","enabled":1}])",
          {nameless, PrivacyProtectedSite("bank", false)},
          {{5, Unread("string", "address", ORB_STRATA_NOT_FOUND)},
           {1, "Settings::PrivacyProtectedSite::PrivacyProtectedSite, assertion failed: !Address.empty()"},
           {5, Unread("boolean", "enabled", ORB_STRATA_WRONG_TYPE)}}}});

    ExpectRead<Curfew>(m_tree.time.curfews.days[3],
                       {{R"([{"from":3600,"until":7200},{"from":true},{"from":-1,"until":90000}])",
                         {Range(-1, 90'000), Range(0, 0), Range(3600, 7200)},
                         {{5, Unread("int64", "from", ORB_STRATA_WRONG_TYPE)},
                          {5, Unread("int64", "until", ORB_STRATA_NOT_FOUND)},
                          {1, "Settings::Curfew::Curfew, assertion failed: Until > std::chrono::hours(0)"},
                          {1, "Settings::Curfew::Curfew, assertion failed: From >= std::chrono::hours(0)"},
                          {1, "Settings::Curfew::Curfew, assertion failed: Until <= std::chrono::hours(24)"}}}});

    DailyCounter early = Day(-1, 6);
    early.bankingSessions = 1;
    early.harmfulBlocks = 2;
    early.wtsBlocks = 3;
    early.wtsScans = 4;
    ExpectRead<DailyCounter>(
        m_tree.internal.statistics.dailyCounters,
        {{R"([{"bankingSessions":0,"harmfulBlocks":0,"julianDate":0,"websitesChecked":5,"wtsBlocks":"0"},)"
          R"({"bankingSessions":1,"harmfulBlocks":2,"julianDate":-1,"websitesChecked":6,"wtsBlocks":3,"wtsScans":4}])",
          {early, Day(0, 5)},
          {{5, Unread("int64", "wtsScans", ORB_STRATA_NOT_FOUND)},
           {5, Unread("int64", "wtsBlocks", ORB_STRATA_WRONG_TYPE)},
           {1, "Settings::DailyCounter::DailyCounter, assertion failed: JulianDate >= 0"}}}});
}

TEST_F(DamagedObjectsTest, ANotificationWithADamagedTextChangesNothing)
{
    m_sites.Load();
    m_tree.sites.Add(Site("a.example", true, ""));
    ASSERT_TRUE(m_scope.Save());
    for (const char* text : {"[[{}]]", R"([{"url":{"x":1}}])", R"([{"url":"b"})", R"({"url":"b"})", "[7]", "null", ""})
    {
        Fail("OrbStrata_GetObject", nullptr, ORB_STRATA_STORE_FAILED, 1);
        LogCapture::Expect(1, "StrataSettings::Property<std::set<Settings::Site>>::Load: 'common.sites.list' reading "
                              "failed, error 112");
        m_sites.Refresh(m_scope.EffectiveHandle(), text);
        EXPECT_THAT(m_sites.Get(), ElementsAre(Site("a.example", true, ""))) << text;
    }
}

TEST_F(DamagedObjectsTest, AChangeOfADamagedListSavesEveryElementAsItIsHeld)
{
    Store(m_sites, std::string(R"([{"label":"L"},{"extra":1,"label":"A","url":"a"},)") + kGood + "]");
    LogCapture::Expect(1, "Settings::Site::Site, assertion failed: !Url.empty()");
    m_sites.Load();
    EXPECT_FALSE(m_sites.WasReadWhole());
    m_tree.sites.Add(Site("new.example", true, "N"));
    ASSERT_TRUE(m_scope.Save());
    EXPECT_EQ(std::string(R"([{"allowed":false,"label":"L","url":""},{"allowed":false,"label":"A","url":"a"},)") +
                  kGood + R"(,{"allowed":true,"label":"N","url":"new.example"}])",
              StoredString(m_sites));
    EXPECT_TRUE(m_sites.WasReadWhole());
    m_tree.sites.Remove("");
    ASSERT_TRUE(m_scope.Save());
    EXPECT_EQ(std::string::npos, StoredString(m_sites).find(R"("url":"")"));
}

TEST_F(DamagedObjectsTest, ConstrainingTheStatisticsWritesNothingOverWhatCannotBeRead)
{
    CommonStatistics& statistics = m_tree.internal.statistics;
    const wchar_t* const flag = statistics.webContentControlEnabled.GetKey().c_str();
    Put(kUser, flag, Stored{ORB_STRATA_TYPE_UTF8, 0, "yes", 0});
    const std::string complete =
        R"({"bankingSessions":0,"harmfulBlocks":0,"julianDate":2460000,"websitesChecked":5,"wtsBlocks":0,"wtsScans":0})";
    for (const std::string& stored : {std::string(R"([{"julianDate":2460000,"websitesChecked":"5"}])"), complete,
                                      "[" + complete + "," + complete + "]"})
    {
        Store(statistics.dailyCounters, stored);
        LogCapture::Expect(1, "StrataSettings::Property<bool>::Load: 'windows.browsing_protection.internal.statistics."
                              "web_content_control.enabled' reading failed, error 110");
        ASSERT_TRUE(m_scope.Load());
        ASSERT_TRUE(m_scope.Save());
        EXPECT_EQ(stored, StoredString(statistics.dailyCounters));
        EXPECT_EQ("yes", Find(kUser, flag).text);
    }

    Store(statistics.dailyCounters, "[" + complete + "]");
    Fail("OrbStrata_GetObject", statistics.dailyCounters.GetKey().c_str(), ORB_STRATA_STORE_FAILED, 1);
    ASSERT_TRUE(m_scope.Load());
    LogCapture::Take();
    ASSERT_TRUE(m_scope.Save());
    EXPECT_EQ("[" + complete + "]", StoredString(statistics.dailyCounters));
}

TEST_F(DamagedObjectsTest, AWeekReplacesTheRangesOfADayThatCouldNotBeReadAtFirst)
{
    auto& monday = m_tree.time.curfews.days[1];
    const std::string allowed(168, '1');
    const std::string forbiddenAtFive = std::string(5, '1') + '0' + std::string(162, '1');
    for (const auto& [week, ranges] :
         {std::pair(allowed, "[]"), std::pair(forbiddenAtFive, R"([{"from":18000,"until":21600}])")})
    {
        Store(monday, R"([{"from":0,"until":3600}])");
        Fail("OrbStrata_GetObject", monday.GetKey().c_str(), ORB_STRATA_STORE_FAILED, 1);
        LogCapture::Expect(1, "StrataSettings::Property<std::set<Settings::Curfew>>::Load: "
                              "'common.time.curfew.monday.ranges' reading failed, error 112");
        monday.Load();
        ASSERT_TRUE(m_tree.time.curfews.FromLegacyUiString(week));
        ASSERT_TRUE(m_scope.Save());
        EXPECT_EQ(ranges, StoredString(monday));
    }
}
