#include "platform/Text.h"
#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

#include <algorithm>
#include <random>

using Settings::Site;

namespace
{

/// A plain list that follows the rules of Settings::Sites, and what these have to log.
class PlainSites
{
public:
    bool enforced = false;
    std::vector<Site> sites;
    std::vector<LogLine> lines;

    void Add(const Site& site)
    {
        if (enforced)
            lines.push_back({3, "Settings::Sites::Add: Failed to erase '" + Logged(site.Url) + "'"});
        else if (const auto at = Find(site.Url); at != sites.end())
            *at = site;
        else
            sites.push_back(site);
        std::sort(sites.begin(), sites.end(), ComesFirst);
    }

    void Remove(const std::string& stripped, const std::string& address)
    {
        if (Erase(stripped))
            return;
        lines.push_back({3, "Settings::Sites::Remove: Failed to erase '" + Logged(stripped) +
                                "', trying without schema stripping"});
        if (!Erase(address))
            lines.push_back({3, "Settings::Sites::Remove: Failed to erase '" + Logged(address) + "'"});
    }

private:
    /// The log takes narrow text for text of the system's code page.
    static std::string Logged(const std::string& url) { return Platform::ToUtf8(Platform::FromAnsi(url)); }

    static bool ComesFirst(const Site& left, const Site& right)
    {
        const auto byte = [](char character) { return static_cast<unsigned char>(character); };
        for (std::size_t i = 0; i < left.Url.size() && i < right.Url.size(); ++i)
            if (left.Url[i] != right.Url[i])
                return byte(left.Url[i]) < byte(right.Url[i]);
        return left.Url.size() < right.Url.size();
    }

    std::vector<Site>::iterator Find(const std::string& url)
    {
        return std::find_if(
            sites.begin(), sites.end(), [&url](const Site& site) { return site.Url == url; });
    }

    bool Erase(const std::string& url)
    {
        const auto at = Find(url);
        if (enforced || at == sites.end())
            return false;
        sites.erase(at);
        return true;
    }
};

class RandomSitesTest : public StoreTest
{
protected:
    using Scope = StrataSettings::ScopedSettings<VdnSettings>;

    template <std::size_t N>
    const char* OneOf(const char* const (&choices)[N])
    {
        return choices[m_random() % N];
    }

    std::mt19937 m_random{1'948};
};

} // namespace

TEST_F(RandomSitesTest, AnySequenceOfCallsGivesTheListOfASimpleModel)
{
    static constexpr const char* kSchemes[] = {"", "", "http://", "x://http://"};
    static constexpr const char* kCores[] = {"a", "a.example", "a.example/b", "B.example", "b\xC3\xA9", "b~", "z?q=/x"};
    static constexpr const char* kEnds[] = {"", "", "/", "//"};
    for (int sequence = 0; sequence < 40; ++sequence)
    {
        VdnSettings tree;
        Settings::Sites& sites = tree.sites;
        PlainSites model;
        for (int step = 0; step < 200; ++step)
        {
            const std::string scheme = OneOf(kSchemes);
            const std::string core = OneOf(kCores);
            const std::string address = scheme + core + OneOf(kEnds);
            const auto choice = m_random() % 20;
            if (choice == 0)
            {
                model.enforced = !model.enforced;
                const std::uint32_t constraints = model.enforced ? ORB_STRATA_CONSTRAINT_ENFORCED | 4 : 4;
                sites.list.UpdateConstraints(&constraints);
            }
            else if (choice < 12)
            {
                const Site site(address, m_random() % 2 == 0, std::to_string(step));
                sites.Add(site);
                model.Add(site);
            }
            else
            {
                sites.Remove(address);
                model.Remove(scheme == "x://http://" ? "http://" + core : core, address);
            }
        }
        const std::set<Site> list = sites.list.Get();
        ASSERT_TRUE(std::equal(list.begin(), list.end(), model.sites.begin(), model.sites.end())) << sequence;
        ASSERT_EQ(model.lines, LogCapture::Take(4)) << sequence;
    }
}

TEST_F(RandomSitesTest, AnyListComesBackFromTheStoreAsItWas)
{
    LogCapture::SetThreshold(4);
    for (int round = 0; round < 50; ++round)
    {
        Scope saved(kUser, L"safe", L"random_sites", true);
        for (auto count = m_random() % 30; count > 0; --count)
        {
            std::string texts[2] = {"u", ""};
            for (std::string& text : texts)
                for (auto length = m_random() % 12; length > 0; --length)
                    text += OneOf({"a", "/", ":", "\\", "\"", "\t", "\x01", "\xC3\xA4", "\xF0\x9F\x98\x80"});
            saved.Settings().sites.Add(Site(texts[0], m_random() % 2 == 0, texts[1]));
        }
        saved.Settings().sites.list.MarkChanged();
        ASSERT_TRUE(saved.Save());

        Scope loaded(kUser, L"safe", L"random_sites", false);
        ASSERT_TRUE(loaded.Load());
        ASSERT_EQ(saved.Settings().sites.list.Get(), loaded.Settings().sites.list.Get());
    }
}
