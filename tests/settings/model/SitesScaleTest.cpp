#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

#include <algorithm>
#include <chrono>
#include <limits>

using Settings::Site;
using Scope = StrataSettings::ScopedSettings<VdnSettings>;

namespace
{

constexpr int kMany = 100'000;

class SitesScaleTest : public StoreTest
{
protected:
    SitesScaleTest() { LogCapture::SetThreshold(4); }

    static std::string Address(int number) { return "site-" + std::to_string(10'000'000 + number) + ".example/path"; }

    static std::set<Site> Many(int count)
    {
        std::set<Site> sites;
        for (int i = 0; i < count; ++i)
            sites.emplace_hint(sites.end(), Address(2 * i), i % 2 == 0, "label");
        return sites;
    }

    /// The shortest of several runs, in seconds: what others do on the machine can only make a run longer.
    template <class Run>
    static double Fastest(int runs, Run&& run)
    {
        double fastest = std::numeric_limits<double>::max();
        for (; runs > 0; --runs)
        {
            const auto start = std::chrono::steady_clock::now();
            run();
            fastest =
                std::min(fastest, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
        return fastest;
    }

    /// Adds, finds and removes 500 sites that lie anywhere in a list of `count`.
    static double TimeOfSingleSites(int count)
    {
        VdnSettings tree;
        tree.sites.list.Set(Many(count));
        const int step = 2 * count / 500;
        return Fastest(7, [&] {
            for (int i = 0; i < 500; ++i)
                tree.sites.Add(Site(Address(i * step + 1), true, ""));
            for (int i = 0; i < 500; ++i)
            {
                const Site key = Site::Key(Address(i * step + 1));
                ASSERT_TRUE(tree.sites.list.Inspect([&key](const auto& sites) { return sites.count(key) == 1; }));
            }
            for (int i = 0; i < 500; ++i)
                tree.sites.Remove(Address(i * step + 1));
        });
    }

    struct Times
    {
        double save;
        double load;
    };

    Times TimeOfWholeLists(int count)
    {
        Scope scope(kUser, L"safe", L"sites_scale", true);
        scope.Settings().sites.list.Set(Many(count));
        Times times{};
        times.save = Fastest(2, [&] {
            scope.Settings().sites.list.MarkChanged();
            ASSERT_TRUE(scope.Save());
            const std::vector<WrittenKey> writes = TakeWrites();
            ASSERT_EQ(1u, writes.size());
            EXPECT_EQ(L"common.sites.list", writes[0].key);
        });
        Scope other(kUser, L"safe", L"sites_scale", false);
        times.load = Fastest(2, [&] { ASSERT_TRUE(other.Load()); });
        EXPECT_EQ(Many(count), other.Settings().sites.list.Get());
        return times;
    }
};

} // namespace

// The bounds lie far above what a tree or a single pass needs, and far below one pass for each site.

TEST_F(SitesScaleTest, OneSiteCostsLittleMoreInALongList)
{
    const double few = TimeOfSingleSites(kMany / 100);
    const double many = TimeOfSingleSites(kMany);
    EXPECT_LT(many, 25 * few);
}

TEST_F(SitesScaleTest, AWholeListIsOneWriteAndCostsInProportionToItsLength)
{
    const Times few = TimeOfWholeLists(kMany / 20);
    const Times many = TimeOfWholeLists(kMany);
    EXPECT_LT(many.save, 100 * few.save);
    EXPECT_LT(many.load, 100 * few.load);
}
