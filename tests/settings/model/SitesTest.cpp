#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

using Settings::Site;
using testing::ElementsAre;

namespace
{

class SitesTest : public testing::Test
{
protected:
    VdnSettings m_tree;
    Settings::Sites& m_sites = m_tree.sites;
};

} // namespace

TEST_F(SitesTest, AddReplacesTheSiteWithTheSameAddress)
{
    m_sites.Add(Site("a.example", true, "first"));
    m_sites.Add(Site("a.example", false, "second"));
    m_sites.Add(Site("a.example.org", true, ""));
    EXPECT_THAT(m_sites.list.Get(), ElementsAre(Site("a.example", false, "second"), Site("a.example.org", true, "")));
    EXPECT_TRUE(LogCapture::Take(4).empty());
}

TEST_F(SitesTest, SitesAreOrderedByTheBytesOfTheirAddress)
{
    m_sites.Add(Site("\xC3\xA4.example", true, ""));
    m_sites.Add(Site("z.example", true, ""));
    m_sites.Add(Site("Z.example", true, ""));
    std::vector<std::string> order;
    for (const Site& site : m_sites.list.Get())
        order.push_back(site.Url);
    EXPECT_THAT(order, ElementsAre("Z.example", "z.example", "\xC3\xA4.example"));
}

TEST_F(SitesTest, RemoveTriesTheAddressWithoutSchemeAndSlashesThenAsItIs)
{
    m_sites.Add(Site("a.example/path", true, ""));
    m_sites.Add(Site("http://b.example/", true, ""));
    m_sites.Remove("x://https://a.example"); // of which only the first scheme is taken off
    EXPECT_EQ(2u, LogCapture::Take(4).size());
    m_sites.Remove("https://a.example/path//");
    EXPECT_TRUE(LogCapture::Take(4).empty());
    m_sites.Remove("http://b.example/");
    EXPECT_TRUE(m_sites.list.Get().empty());
    m_sites.Remove("c.example");
    EXPECT_THAT(
        LogCapture::Take(4),
        ElementsAre(LogLine{3, "Settings::Sites::Remove: Failed to erase 'b.example', trying without schema stripping"},
                    LogLine{3, "Settings::Sites::Remove: Failed to erase 'c.example', trying without schema stripping"},
                    LogLine{3, "Settings::Sites::Remove: Failed to erase 'c.example'"}));
}

TEST_F(SitesTest, AnEnforcedListNeverChanges)
{
    m_sites.Add(Site("a.example", true, ""));
    const std::uint32_t enforced = ORB_STRATA_CONSTRAINT_ENFORCED;
    m_sites.list.UpdateConstraints(&enforced);
    m_sites.Add(Site("b.example", true, ""));
    m_sites.Add(Site("a.example", false, ""));
    m_sites.Remove("a.example");
    EXPECT_THAT(m_sites.list.Get(), ElementsAre(Site("a.example", true, "")));
    EXPECT_THAT(
        LogCapture::Take(4),
        ElementsAre(LogLine{3, "Settings::Sites::Add: Failed to erase 'b.example'"},
                    LogLine{3, "Settings::Sites::Add: Failed to erase 'a.example'"},
                    LogLine{3, "Settings::Sites::Remove: Failed to erase 'a.example', trying without schema stripping"},
                    LogLine{3, "Settings::Sites::Remove: Failed to erase 'a.example'"}));
}

TEST_F(SitesTest, AnEmptyAddressIsReportedAndKept)
{
    LogCapture::Expect(1, "Settings::Site::Site, assertion failed: !Url.empty()");
    m_sites.Add(Site("", true, ""));
    EXPECT_EQ(1u, m_sites.list.Get().size());
    m_sites.Remove("");
    EXPECT_TRUE(m_sites.list.Get().empty());
}
