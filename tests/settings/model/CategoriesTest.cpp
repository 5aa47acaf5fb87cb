#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

#include <set>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace
{

class CategoriesTest : public testing::Test
{
protected:
    std::set<std::string> Blocked() const
    {
        std::set<std::string> names;
        for (const Settings::Category& category : m_categories.categories)
            if (!category.allowed.Get())
                names.insert(category.name.legacyName);
        return names;
    }

    VdnSettings m_tree;
    Settings::Categories& m_categories = m_tree.categories;
};

} // namespace

TEST_F(CategoriesTest, ASingleCategoryIsSetAlone)
{
    for (const Settings::Category& category : m_categories.categories)
    {
        const std::string name = category.name.legacyName;
        if (name == "disturbing" || name == "shopping")
            continue;
        m_categories.SetCategory(name, false);
        EXPECT_FALSE(m_categories.IsAllowed(name)) << name;
        EXPECT_THAT(Blocked(), ElementsAre(name));
        m_categories.SetCategory(name, true);
        EXPECT_TRUE(m_categories.IsAllowed(name)) << name;
    }
    EXPECT_THAT(LogCapture::Take(), IsEmpty());
}

TEST_F(CategoriesTest, AGroupIsSetAsOne)
{
    m_categories.SetCategory("disturbing", false);
    EXPECT_THAT(Blocked(), UnorderedElementsAre("abortion", "cults", "disturbing", "occults", "selfharm"));
    m_categories.SetCategory("shopping", false);
    m_categories.SetCategory("disturbing", true);
    EXPECT_THAT(Blocked(), UnorderedElementsAre("auctions", "shopping"));
    EXPECT_FALSE(m_categories.IsAllowed("shopping"));
    EXPECT_TRUE(m_categories.IsAllowed("disturbing"));
}

TEST_F(CategoriesTest, AGroupIsBlockedByAnyOfItsMembers)
{
    for (const char* member : {"abortion", "cults", "occults", "selfharm"})
    {
        m_categories.SetCategory(member, false);
        EXPECT_FALSE(m_categories.IsAllowed("disturbing")) << member;
        EXPECT_TRUE(m_categories.IsAllowed("shopping")) << member;
        m_categories.SetCategory(member, true);
    }
    m_categories.SetCategory("auctions", false);
    EXPECT_THAT(Blocked(), ElementsAre("auctions"));
    EXPECT_FALSE(m_categories.IsAllowed("shopping"));
    EXPECT_TRUE(m_categories.IsAllowed("disturbing"));
}

TEST_F(CategoriesTest, AnUnknownNameAnswersAsTheFallbackCategoryDoes)
{
    const std::string asked = "Settings::Categories::IsAllowed: An unknown category '";
    for (const bool allowed : {true, false})
    {
        m_categories.SetCategory("nocat", allowed);
        EXPECT_EQ(allowed, m_categories.IsAllowed("nocat"));
        EXPECT_EQ(allowed, m_categories.IsAllowed("unknown"));
        EXPECT_EQ(allowed, m_categories.IsAllowed("alcohol_and_tobacco"));
        EXPECT_EQ(allowed, m_categories.IsAllowed("Disturbing"));
        EXPECT_EQ(allowed, m_categories.IsAllowed(""));
        EXPECT_THAT(LogCapture::Take(),
                    ElementsAre(LogLine{2, asked + "unknown' requested"},
                                LogLine{2, asked + "alcohol_and_tobacco' requested"},
                                LogLine{2, asked + "Disturbing' requested"}, LogLine{2, asked + "' requested"}));
    }
}

TEST_F(CategoriesTest, SettingAnUnknownNameChangesNothingAndIsLoggedOnce)
{
    for (const char* name : {"unknown", "file_sharing", "Shopping", ""})
    {
        LogCapture::Expect(2, std::string("Settings::Categories::SetCategory: An unknown category '") + name +
                                  "' requested");
        m_categories.SetCategory(name, false);
    }
    EXPECT_THAT(Blocked(), IsEmpty());
    m_tree.ForEachProperty([](const StrataSettings::PropertyBase& property) {
        EXPECT_EQ(StrataSettings::ModificationState::Default, property.State());
    });
}

TEST_F(CategoriesTest, AnEnforcedMemberKeepsTheGroupBlocked)
{
    m_categories.SetCategory("auctions", false);
    const std::uint32_t enforced = ORB_STRATA_CONSTRAINT_ENFORCED;
    m_categories.categories[5].allowed.UpdateConstraints(&enforced);
    m_categories.SetCategory("shopping", true);
    EXPECT_THAT(Blocked(), ElementsAre("auctions"));
    EXPECT_FALSE(m_categories.IsAllowed("shopping"));
}

TEST_F(CategoriesTest, TheGroupsOfACopyReferToItsOwnCategories)
{
    VdnSettings copy(m_tree);
    copy.categories.SetCategory("disturbing", false);
    EXPECT_TRUE(m_categories.IsAllowed("disturbing"));
    EXPECT_TRUE(m_categories.IsAllowed("cults"));
    EXPECT_FALSE(copy.categories.IsAllowed("cults"));
}
