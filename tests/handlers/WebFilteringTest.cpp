#include "handlers/WebFilteringHandler.h"
#include "tests/handlers/HandlerTest.h"
#include "tests/support/UrlCatcher.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const char* kCategories = "@ContentControl\\Data:current_user_categories";
constexpr const char* kConfigured = "@ContentControl\\Data:current_user_categories_configured";
constexpr const char* kCategoriesFilter = "@ContentControl\\Data:categories_filter";
constexpr const char* kWizardPage = "@ContentControl\\WebPageFilterWizard:wpf_wizard_content_index";
constexpr const char* kAllowFragfinn = "@ContentControl\\Data:allow_fragfinn_website_state";
constexpr const wchar_t* kChildModeKey = L"windows.browsing_protection.web_content_control.child_mode";
constexpr const wchar_t* kFragfinnKey = L"windows.browsing_protection.fragfinn.enabled";

std::wstring CategoryKey(const wchar_t* category)
{
    return std::wstring(L"common.content.allowed_categories.") + category;
}

class WebFilteringTest : public HandlerTest
{
protected:
    void Start()
    {
        Seed();
        StartMainGui();
        m_handler = std::make_unique<WebFilteringHandler>(m_system, m_user);
        ASSERT_TRUE(m_handler->Initialize(&m_host, m_mainGui));
        m_host.Forget();
    }

    void OpenPage()
    {
        OpenSettings();
        m_host.PageFires(kLoadData);
    }

    QVariantMap Categories() const { return m_host.Value(kCategories).toMap().value("Categories").toMap(); }

    void PageSetsCategories(const QVariantMap& categories)
    {
        m_host.PageSets(kCategories, QVariantMap{{"Categories", categories}});
    }

    std::unique_ptr<WebFilteringHandler> m_handler;
};

} // namespace

TEST_F(WebFilteringTest, PublishesEveryCategoryByItsKey)
{
    Start();
    m_host.PageFires(kLoadData);
    EXPECT_EQ(52, Categories().size());
    EXPECT_EQ(QVariant(true), Categories().value("alcohol_and_tobacco"));
    EXPECT_EQ(QVariant(false), m_host.Value(kConfigured));
    Put(kUser, CategoryKey(L"games").c_str(), false);
    Settle();
    m_host.PageFires(kLoadData);
    EXPECT_EQ(QVariant(false), Categories().value("games"));
    EXPECT_EQ(QVariant(true), m_host.Value(kConfigured));
    EXPECT_THAT(LogCapture::Take(5), Contains(LogLine{5, "WebFilteringHandler::LoadCategoriesFromStrata: games = 0"}));
}

TEST_F(WebFilteringTest, ModeFragfinnAndAllowedSitesAreTheUsers)
{
    Start();
    Put(kUser, L"windows.browsing_protection.fragfinn.activated", true);
    Put(kUser, kChildModeKey, false);
    Put(kUser, L"windows.browsing_protection.internal.sites.list",
        Stored{ORB_STRATA_TYPE_OBJECT, 0,
               R"([{"url":"a.example","label":"","allowed":true},{"url":"b.example","label":"","allowed":false}])", 0});
    Settle();
    m_handler->Load();
    EXPECT_EQ(QVariant(true), m_host.Value("@ContentControl\\Data:enable_checkbox_fragfinn_element"));
    EXPECT_EQ(QVariant(true), m_host.Value("@ContentControl\\Data:enable_label_fragfinn_element"));
    EXPECT_EQ(QVariant(false), m_host.Value(kAllowFragfinn));
    EXPECT_EQ(QVariant(0), m_host.Value(kWizardPage));
    EXPECT_EQ(QVariant(true), m_host.Value(kCategoriesFilter));
    EXPECT_EQ((QVariantList{QVariantMap{{"0", "a.example"}}}),
              m_host.Value("@ContentControl\\WebsiteRestrictions:allowed_websites").toList());
}

TEST_F(WebFilteringTest, SavingAnUntouchedPageWritesNothing)
{
    Start();
    Put(kUser, CategoryKey(L"cults").c_str(), false);
    Put(kUser, CategoryKey(L"disturbing").c_str(), true);
    Put(kUser, kChildModeKey, false);
    Settle();
    OpenPage();
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}

TEST_F(WebFilteringTest, ChildModeSavesTheModeAndFragfinn)
{
    Start();
    Put(kUser, kChildModeKey, false);
    Settle();
    OpenPage();
    m_host.PageSets(kCategoriesFilter, false);
    m_host.PageSets(kAllowFragfinn, true);
    PageSetsCategories({{"games", false}});
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kFragfinnKey, kChildModeKey));
    EXPECT_EQ(1, Find(kUser, kChildModeKey).number);
}

TEST_F(WebFilteringTest, CategoryModeSavesExactlyTheChangedCategories)
{
    Start();
    OpenPage();
    m_host.PageSets(kCategoriesFilter, true);
    m_host.PageSets(kAllowFragfinn, true);
    QVariantMap categories = Categories();
    categories["games"] = false;
    categories["disturbing"] = false; // its members have entries of their own
    PageSetsCategories(categories);
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), ElementsAre(CategoryKey(L"disturbing"), CategoryKey(L"games"), kChildModeKey));
}

TEST_F(WebFilteringTest, AGroupsEntryStandsForMembersWithoutTheirOwn)
{
    Start();
    OpenPage();
    m_host.PageSets(kCategoriesFilter, true);
    PageSetsCategories({{"disturbing", false}, {"cults", true}, {"no such category", false}});
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), ElementsAre(CategoryKey(L"abortion"), CategoryKey(L"disturbing"),
                                           CategoryKey(L"occults"), CategoryKey(L"selfharm"), kChildModeKey));
}

TEST_F(WebFilteringTest, AMapWithoutCategoriesStillSavesTheMode)
{
    Start();
    OpenPage();
    for (const QVariant& broken : {QVariant(QVariantMap{{"Other", 1}}), QVariant("text"), QVariant()})
    {
        m_host.PageSets(kCategoriesFilter, true);
        m_host.PageSets(kCategories, broken);
        LogCapture::Take();
        m_host.PageFires(kSave);
        EXPECT_THAT(LogCapture::Take(4),
                    ElementsAre(LogLine{3, "WebFilteringHandler::SetCategoriesToStrata: categories "
                                           "key not found"}));
        EXPECT_THAT(WrittenKeys(), ElementsAre(kChildModeKey));
        m_host.PageSets(kCategoriesFilter, false);
        m_host.PageFires(kSave);
        WrittenKeys();
    }
    m_host.PageSets(kCategories, QVariantMap{{"Categories", QVariantList{1, 2}}}); // a list where a map belongs
    m_host.PageSets(kCategoriesFilter, true);
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), ElementsAre(kChildModeKey));
    PageSetsCategories({{"games", QVariantList{1}}, {"chat", QVariant()}}); // where a boolean belongs
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}

TEST_F(WebFilteringTest, APageThatWasNotLoadedSavesNothing)
{
    Start();
    Put(kUser, kChildModeKey, false);
    Settle();
    m_host.PageFires("@ContentControl\\Triggers:request_show_website_list");
    LogCapture::Take();
    m_host.PageFires(kSave);
    EXPECT_THAT(LogCapture::Take(4),
                ElementsAre(LogLine{3, "WebFilteringHandler::Save: categories_filter is not set"}));
    EXPECT_EQ(0, Find(kUser, kChildModeKey).number);
}

TEST_F(WebFilteringTest, TheWizardsChoiceOnlyTurnsItsPage)
{
    Start();
    OpenPage();
    m_host.PageFires("@ContentControl\\Triggers:web_page_filter_teenmode");
    EXPECT_EQ(QVariant(0), m_host.Value(kWizardPage));
    m_host.PageFires("@ContentControl\\Triggers:web_page_filter_childmode");
    EXPECT_EQ(QVariant(1), m_host.Value(kWizardPage));
    m_host.PageFires("@ContentControl\\Triggers:clear_allowed_list");
    EXPECT_THAT(WrittenKeys(), IsEmpty());
}

TEST_F(WebFilteringTest, AnotherProgramsChangeIsNotOverwritten)
{
    Start();
    Put(kUser, kChildModeKey, false);
    Settle();
    OpenPage();
    Put(kUser, kFragfinnKey, true);
    QVariantMap categories = Categories();
    categories["games"] = false;
    PageSetsCategories(categories);
    Settle();
    m_host.PageFires(kSave);
    EXPECT_THAT(WrittenKeys(), ElementsAre(CategoryKey(L"games")));
    EXPECT_EQ(1, Find(kUser, kFragfinnKey).number);
}

TEST_F(WebFilteringTest, OpensTheFragfinnSite)
{
    UrlCatcher urls;
    Start();
    Put(kUser, L"windows.browsing_protection.fragfinn.url", Stored{ORB_STRATA_TYPE_UTF8, 0, "children.example.com", 0});
    Settle();
    m_host.PageFires("@ContentControl\\Triggers:show_fragfinn_sites");
    EXPECT_THAT(urls.Opened(), ElementsAre("http://children.example.com"));
}

TEST_F(WebFilteringTest, OpensNothingButAWebPageForFragfinn)
{
    UrlCatcher urls;
    Start();
    for (const char* address : {"file:///usr/bin/env", "/usr/bin/env", "mailto:somebody@example.com", ""})
    {
        Put(kUser, L"windows.browsing_protection.fragfinn.url", Stored{ORB_STRATA_TYPE_UTF8, 0, address, 0});
        Settle();
        LogCapture::Expect(2, std::string("WebFilteringHandler::OnShowFragfinn: Not a web page: ") + address);
        m_host.PageFires("@ContentControl\\Triggers:show_fragfinn_sites");
    }
    EXPECT_THAT(urls.Opened(), IsEmpty());
}
