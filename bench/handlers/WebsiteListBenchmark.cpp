#include "bench/handlers/PageHost.h"
#include "handlers/MainGuiHandler.h"
#include "handlers/WebsiteListHandler.h"
#include "util/ModuleHandler.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace
{

constexpr const char* kUser = "S-1-5-21-1-2-3-1001";

void PutSites(const char* sid, const char* prefix, std::int64_t count)
{
    ElevatedSettings settings(nullptr, sid, kSettingsClientId, true);
    std::set<Settings::Site> sites;
    for (std::int64_t i = 0; i < count; ++i)
        sites.emplace(prefix + std::to_string(i) + ".example.com", i % 2 == 0, std::string());
    settings.WritableSettings().internal.sites.list.Set(sites);
    settings.Save();
}

/// The page over as many own entries, and as many of an administrator's, as the run asks for.
class WebsiteListPage
{
public:
    explicit WebsiteListPage(const benchmark::State& state)
    {
        PutSites(kUser, "own", state.range(0));
        PutSites("S-1-5-18", "administrator", state.range(0));
        m_system->Load();
        m_mainGui->Initialize(&m_host);
        m_handler.Initialize(&m_host);
        m_mainGui->OnNotifyRequestShow("@ContentControl\\Triggers:request_show_website_list");
    }

    WebsiteListHandler& Handler() { return m_handler; }

private:
    PageHost m_host;
    std::shared_ptr<SystemSettings> m_system = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    std::shared_ptr<UserSettings> m_user = std::make_shared<UserSettings>(kUser, m_system, false);
    std::shared_ptr<MainGuiHandler> m_mainGui = std::make_shared<MainGuiHandler>(m_system, m_user);
    WebsiteListHandler m_handler{m_system, m_user, m_mainGui};
};

void LoadTables(benchmark::State& state)
{
    WebsiteListPage page(state);
    for (auto _ : state)
        page.Handler().Load({});
    state.SetComplexityN(state.range(0));
}

void AddAndRemoveEntry(benchmark::State& state)
{
    WebsiteListPage page(state);
    for (auto _ : state)
    {
        page.Handler().AddNewItem(QStringLiteral("new.example.com"), true);
        page.Handler().RemoveItem(QStringLiteral("new.example.com"));
    }
    state.SetComplexityN(state.range(0));
}

void EditEntry(benchmark::State& state)
{
    WebsiteListPage page(state);
    page.Handler().AddNewItem(QStringLiteral("a.example.com"), true);
    bool back = false;
    for (auto _ : state)
    {
        page.Handler().EditOldItem(QVariantMap{{"old", back ? "b.example.com" : "a.example.com"},
                                               {"new", back ? "a.example.com" : "b.example.com"}},
                                   true);
        back = !back;
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(LoadTables)->RangeMultiplier(10)->Range(200, 20'000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(AddAndRemoveEntry)->RangeMultiplier(10)->Range(200, 20'000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(EditEntry)->RangeMultiplier(10)->Range(200, 20'000)->Unit(benchmark::kMillisecond)->Complexity();

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    qputenv("ORB_STRATA_STORE", folder.filePath(QStringLiteral("store.db")).toUtf8());
    ModuleHandler modules;
    if (!modules.LoadDll())
    {
        std::fputs("The suite's libraries are not beside the program.\n", stderr);
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
