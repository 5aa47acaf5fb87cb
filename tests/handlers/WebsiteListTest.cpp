#include "handlers/WebFilteringHandler.h"
#include "handlers/WebsiteListHandler.h"
#include "tests/handlers/HandlerTest.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kList = L"windows.browsing_protection.internal.sites.list";
constexpr const char* kAllowed = "@ContentControl\\WebsiteRestrictions:allowed_websites";
constexpr const char* kDenied = "@ContentControl\\WebsiteRestrictions:denied_websites";
constexpr const char* kAllowedItem = "@ContentControl\\WebsiteRestrictions:allowed_action_item";
constexpr const char* kDeniedItem = "@ContentControl\\WebsiteRestrictions:denied_action_item";
constexpr const char* kTabs = "@ContentControl\\WebsiteRestrictions:enable_tab_list";

std::string SiteJson(const std::string& url, bool allowed)
{
    return R"({"allowed":)" + std::string(allowed ? "true" : "false") + R"(,"label":"","url":")" + url + "\"}";
}

class WebsiteListTest : public HandlerTest
{
protected:
    void Start()
    {
        Seed();
        StartMainGui();
        m_handler = std::make_unique<WebsiteListHandler>(m_system, m_user, m_mainGui);
        ASSERT_TRUE(m_handler->Initialize(&m_host));
    }

    void OpenPage()
    {
        m_host.PageFires("@ContentControl\\Triggers:request_show_website_list");
        m_mainGui->AdminHandle()->Save();
        TakeWrites();
        m_host.Forget();
        LogCapture::Take(4);
    }

    void PutSites(const char* sid, const std::string& json)
    {
        Put(sid, kList, Stored{ORB_STRATA_TYPE_OBJECT, 0, json, 0});
        Settle();
    }

    /// The table's URLs, an administrator's in brackets.
    std::vector<std::string> Table(const char* id) const
    {
        std::vector<std::string> rows;
        for (const QVariant& row : m_host.Value(id).toList())
        {
            const std::string url = row.toMap().value("0").toString().toStdString();
            rows.push_back(row.toMap().value("readonly").toBool() ? "[" + url + "]" : url);
        }
        return rows;
    }

    std::string StoredSites() { return Find(kUser, kList).text; }

    std::unique_ptr<WebFilteringHandler> m_webFiltering;
    std::unique_ptr<WebsiteListHandler> m_handler;
};

} // namespace

TEST_F(WebsiteListTest, EnablesTheDeniedTabAndMayBeReadOnly)
{
    Start();
    EXPECT_EQ((QStringList{"true", "true"}), m_host.Value(kTabs).toStringList());
    EXPECT_EQ(QVariant(false), m_host.Value("@ContentControl\\WebsiteRestrictions:readonly_table"));
    m_handler->setReadOnly(true);
    EXPECT_EQ(QVariant(true), m_host.Value("@ContentControl\\WebsiteRestrictions:readonly_table"));
}

TEST_F(WebsiteListTest, ADisabledDeniedTabIsNotListenedTo)
{
    Put(kUser, L"windows.browsing_protection.internal.sites.enabled", false);
    StartMainGui();
    m_handler = std::make_unique<WebsiteListHandler>(m_system, m_user, m_mainGui);
    ASSERT_TRUE(m_handler->Initialize(&m_host));
    EXPECT_EQ((QStringList{"true", "false"}), m_host.Value(kTabs).toStringList());
    OpenPage();
    m_host.PageSets(kDeniedItem, QVariantMap{{"new", "a.example"}});
    m_host.PageFires("@ContentControl\\Triggers:clear_denied_list");
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}

TEST_F(WebsiteListTest, TablesShowTheOwnSitesThenTheAdministratorsOthers)
{
    Start();
    m_host.PageSets("@Veridan\\Websites\\Strings:admin_entry", "set by admin");
    PutSites(kUser, "[" + SiteJson("a.example", true) + "," + SiteJson("b.example", false) + "]");
    PutSites(kSystem, "[" + SiteJson("0.example", true) + "," + SiteJson("a.example", true) + "," +
                          SiteJson("b.example", true) + "]");
    m_host.PageFires("@ContentControl\\Triggers:show_website_list");
    EXPECT_THAT(Table(kAllowed), ElementsAre("a.example", "[0.example]", "[b.example]"));
    EXPECT_THAT(Table(kDenied), ElementsAre("b.example"));
    EXPECT_EQ((QVariantMap{{"0", "0.example"}, {"readonly", true}, {"tooltip", "0.example (set by admin)"}}),
              m_host.Value(kAllowed).toList()[1].toMap());
    EXPECT_EQ((QVariantMap{{"0", "a.example"}, {"readonly", false}}), m_host.Value(kAllowed).toList()[0].toMap());
}

TEST_F(WebsiteListTest, AnOpenPageFollowsBothLists)
{
    Start();
    PutSites(kUser, "[" + SiteJson("a.example", true) + "]");
    EXPECT_THAT(Table(kAllowed), ElementsAre("a.example"));
    PutSites(kSystem, "[" + SiteJson("b.example", false) + "]");
    EXPECT_THAT(Table(kDenied), ElementsAre("[b.example]"));
    PutSites(kSystem, "[" + SiteJson("b.example", true) + "]");
    EXPECT_THAT(Table(kDenied), IsEmpty());
}

TEST_F(WebsiteListTest, AddsInAsciiFormEditsAndRemoves)
{
    Start();
    OpenPage();
    m_host.PageSets(kAllowedItem, QVariantMap{{"new", QString::fromUtf8("http://B\xC3\xBC"
                                                                        "cher.example/p")}});
    EXPECT_EQ("[" + SiteJson("http://xn--bcher-kva.example/p", true) + "]", StoredSites());
    EXPECT_THAT(WrittenKeys(), ElementsAre(kList));
    m_host.PageSets(kDeniedItem, QVariantMap{{"new", " b.example\n"}});
    m_host.PageSets(kDeniedItem, QVariantMap{{"edit", QVariantMap{{"old", "b.example"}, {"new", "c.example"}}}});
    EXPECT_EQ("[" + SiteJson("c.example", false) + "," + SiteJson("http://xn--bcher-kva.example/p", true) + "]",
              StoredSites());
    m_host.PageSets(kAllowedItem, QVariantMap{{"remove", "http://xn--bcher-kva.example/p"}});
    EXPECT_EQ("[" + SiteJson("c.example", false) + "]", StoredSites());
    Settle();
    EXPECT_THAT(Table(kDenied), ElementsAre("c.example"));
    EXPECT_THAT(Table(kAllowed), IsEmpty());
}

TEST_F(WebsiteListTest, TheSameEditCanBeSentAgain)
{
    Start();
    OpenPage();
    for (int i = 0; i < 2; ++i)
    {
        m_host.PageSets(kAllowedItem, QVariantMap{{"new", "a.example"}});
        EXPECT_FALSE(m_host.Value(kAllowedItem).isValid());
    }
    EXPECT_THAT(LogCapture::Take(5),
                Contains(LogLine{5, "WebsiteListHandler::HandleAllowedActionItem: Action item empty"}));
}

TEST_F(WebsiteListTest, BadEditsAreReportedClearedAndLoseNothing)
{
    struct Row
    {
        QVariantMap item;
        const char* message;
    };
    Start();
    OpenPage();
    m_host.PageSets(kAllowedItem, QVariantMap{{"new", "a.example"}});
    TakeWrites();
    const QString cutByTheStore = QStringLiteral("b.exa") + QChar(0) + "mple";
    for (const Row& row :
         {Row{{{"paint", "a.example"}}, "WebsiteListHandler::HandleAllowedActionItem: Unsupported allowed action"},
          Row{{{"new", ""}}, "WebsiteListHandler::AddNewItem: New item empty"},
          Row{{{"remove", ""}}, "WebsiteListHandler::RemoveItem: New item empty"},
          Row{{{"edit", QVariantMap{{"old", ""}, {"new", "b.example"}}}},
              "WebsiteListHandler::EditOldItem: Edited item's original is empty"},
          Row{{{"edit", "text"}}, "WebsiteListHandler::EditOldItem: Edited item's original is empty"},
          Row{{{"edit", QVariantMap{{"old", "a.example"}, {"new", ""}}}},
              "WebsiteListHandler::AddNewItem: New item empty"},
          Row{{{"edit", QVariantMap{{"old", "a.example"}, {"new", " \t"}}}},
              "WebsiteListHandler::AddNewItem: New item empty"},
          Row{{{"new", cutByTheStore}}, "WebsiteListHandler::AddNewItem: New item is no address"},
          Row{{{"edit", QVariantMap{{"old", "a.example"}, {"new", cutByTheStore}}}},
              "WebsiteListHandler::AddNewItem: New item is no address"}})
    {
        LogCapture::Expect(2, row.message);
        m_host.PageSets(kAllowedItem, row.item);
        EXPECT_FALSE(m_host.Value(kAllowedItem).isValid());
    }
    LogCapture::Expect(2, "WebsiteListHandler::HandleDeniedActionItem: Unsupported denied action");
    m_host.PageSets(kDeniedItem, QVariantMap{{"paint", 1}});
    EXPECT_THAT(WrittenKeys(), IsEmpty());
    m_host.PageSets(kAllowedItem, QVariantMap{{"new", "b.example"}});
    EXPECT_EQ("[" + SiteJson("a.example", true) + "," + SiteJson("b.example", true) + "]", StoredSites());
}

TEST_F(WebsiteListTest, ClearingEmptiesTheTableAtOnceAndKeepsTheOtherList)
{
    Start();
    PutSites(kUser, "[" + SiteJson("a.example", true) + "," + SiteJson("b.example", false) + "]");
    OpenPage();
    m_host.PageFires("@ContentControl\\Triggers:clear_allowed_list");
    EXPECT_THAT(Table(kAllowed), IsEmpty());
    EXPECT_EQ("[" + SiteJson("b.example", false) + "]", StoredSites());
    m_host.PageFires("@ContentControl\\Triggers:clear_denied_list");
    EXPECT_EQ("[]", StoredSites());

    PutSites(kSystem, "[" + SiteJson("c.example", true) + "]");
    m_host.Forget();
    m_host.PageFires("@ContentControl\\Triggers:clear_allowed_list"); // of which the user has none
    EXPECT_EQ("allowed_websites", m_host.Take("set").front());
    EXPECT_THAT(Table(kAllowed), ElementsAre("[c.example]"));
}

TEST_F(WebsiteListTest, AnOpenPageKeepsItsRowsWhenTheSettingsPagesLoad)
{
    m_webFiltering = std::make_unique<WebFilteringHandler>(m_system, m_user);
    ASSERT_TRUE(m_webFiltering->Initialize(&m_host, nullptr));
    Start();
    PutSites(kSystem, "[" + SiteJson("a.example", true) + "]");
    OpenPage();
    m_host.PageFires(kLoadData);
    EXPECT_THAT(Table(kAllowed), ElementsAre("[a.example]"));
    m_host.PageFires("@ContentControl\\Triggers:close_website_list");
    m_host.PageFires(kLoadData); // the table is the web filtering page's again
    EXPECT_THAT(Table(kAllowed), IsEmpty());
}

TEST_F(WebsiteListTest, AnEnforcedListKeepsWhatItShows)
{
    Start();
    PutSites(kUser, "[" + SiteJson("a.example", true) + "]");
    Constrain(kUser, kList, ORB_STRATA_CONSTRAINT_ENFORCED);
    Settle();
    OpenPage();
    m_host.PageFires("@ContentControl\\Triggers:clear_allowed_list");
    EXPECT_THAT(Table(kAllowed), ElementsAre("a.example"));
    m_host.PageSets(kAllowedItem, QVariantMap{{"remove", "a.example"}});
    EXPECT_EQ("[" + SiteJson("a.example", true) + "]", StoredSites());
}

TEST_F(WebsiteListTest, WithoutElevatedSettingsAnEditIsClearedAndNothingSaved)
{
    Start();
    PutSites(kUser, "[" + SiteJson("a.example", true) + "]");
    const std::string message = "WebsiteListHandler::GetSaveController: saveController is not initialized";
    for (int i = 0; i < 4; ++i)
        LogCapture::Expect(1, message);
    m_host.PageSets(kAllowedItem, QVariantMap{{"new", "b.example"}});
    m_host.PageSets(kAllowedItem, QVariantMap{{"remove", "a.example"}});
    m_host.PageSets(kAllowedItem, QVariantMap{{"edit", QVariantMap{{"old", "a.example"}, {"new", "b.example"}}}});
    EXPECT_FALSE(m_host.Value(kAllowedItem).isValid());
    m_host.PageFires("@ContentControl\\Triggers:clear_allowed_list");
    EXPECT_THAT(Table(kAllowed), ElementsAre("a.example"));
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}
