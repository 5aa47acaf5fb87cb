#include "bench/support/InTurns.h"
#include "bench/support/Memory.h"
#include "bench/support/OwnStore.h"
#include "bench/support/PageHost.h"
#include "handlers/MainGuiHandler.h"
#include "handlers/WebsiteListHandler.h"

#include <string>

namespace
{

using Sites = std::set<Settings::Site>;

constexpr std::int64_t kFew = 1'000;
constexpr const char* kFewSites = "the same in a list of 1,000";
constexpr const char* kSystem = "S-1-5-18";
constexpr Wanted kFlat{2};

const VariableIdentifier kAllowedWebsites("@ContentControl\\WebsiteRestrictions:allowed_websites");
const VariableIdentifier kDeniedWebsites("@ContentControl\\WebsiteRestrictions:denied_websites");

void PutSites(const char* sid, const char* prefix, std::int64_t count)
{
    ElevatedSettings settings(nullptr, sid, kSettingsClientId, true);
    Sites sites;
    for (std::int64_t i = 0; i < count; ++i)
        sites.emplace(prefix + std::to_string(i) + ".example.com", i % 2 == 0, std::string());
    settings.WritableSettings().internal.sites.list.Set(sites);
    settings.Save();
}

/// The page over as many own entries as wanted, and over the administrator's.
class WebsiteListPage
{
public:
    WebsiteListPage(const char* sid, std::int64_t own, std::int64_t administrator)
    {
        PutSites(sid, "own", own);
        PutSites(kSystem, "administrator", administrator);
        m_system->Load();
        m_user = std::make_shared<UserSettings>(sid, m_system, false);
        m_mainGui = std::make_shared<MainGuiHandler>(m_system, m_user);
        m_mainGui->Initialize(&m_host);
        m_handler = std::make_unique<WebsiteListHandler>(m_system, m_user, m_mainGui);
        m_handler->Initialize(&m_host);
        m_mainGui->OnNotifyRequestShow("@ContentControl\\Triggers:request_show_website_list");
    }

    WebsiteListHandler& Handler() { return *m_handler; }
    void Publish() { m_handler->Load({}); }
    void Forget()
    {
        m_host.Put(kAllowedWebsites, {});
        m_host.Put(kDeniedWebsites, {});
    }

private:
    PageHost m_host;
    std::shared_ptr<SystemSettings> m_system = std::make_shared<SystemSettings>(nullptr, kSettingsClientId);
    std::shared_ptr<UserSettings> m_user;
    std::shared_ptr<MainGuiHandler> m_mainGui;
    std::unique_ptr<WebsiteListHandler> m_handler;
};

/// The rows of both tables and nothing else.
void MakeRows(PageHost& host, const Sites& sites)
{
    const QString column = QStringLiteral("0");
    const QString readOnly = QStringLiteral("readonly");
    QVariantList allowed;
    QVariantList denied;
    for (const Settings::Site& site : sites)
        (site.allowed ? allowed : denied)
            .append(QVariantMap{{column, QString::fromStdString(site.Url)}, {readOnly, false}});
    host.Write(kAllowedWebsites, allowed);
    host.Write(kDeniedWebsites, denied);
}

void PublishTables(benchmark::State& state)
{
    const OwnStore store;
    WebsiteListPage page("S-1-5-21-1", state.range(0), 0);
    PageHost host;
    Sites sites;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        sites.emplace("own" + std::to_string(i) + ".example.com", i % 2 == 0, std::string());
    InTurns turns(state, "the rows made of a list at hand", {1.5});
    for (auto _ : state)
        turns.Both([&] { page.Publish(); }, [&] { MakeRows(host, sites); });
}

void PublishFlat(benchmark::State& state)
{
    const OwnStore store;
    WebsiteListPage few("S-1-5-21-1", kFew, 0);
    WebsiteListPage many("S-1-5-21-2", state.range(0), 0);
    InTurns turns(state, kFewSites, kFlat);
    turns.SetUnits(state.range(0), kFew);
    turns.RunTwice();
    for (auto _ : state)
        turns.Both([&] { many.Publish(); }, [&] { few.Publish(); });
}

/// What the host keeps of each row.
double MemoryOfRow(WebsiteListPage& page, std::int64_t count)
{
    page.Forget();
    const double before = AllocatedBytes();
    page.Publish();
    return (AllocatedBytes() - before) / static_cast<double>(count);
}

void PublishedMemoryFlat(benchmark::State& state)
{
    const OwnStore store;
    WebsiteListPage few("S-1-5-21-1", kFew, 0);
    WebsiteListPage many("S-1-5-21-2", state.range(0), 0);
    InTurns turns(state, kFewSites, kFlat);
    turns.CountBytes();
    for (auto _ : state)
    {
        turns.AddBaseline(MemoryOfRow(few, kFew));
        turns.AddSubject(MemoryOfRow(many, state.range(0)));
    }
}

/// Adding an entry on the page saves its list; what is added is removed again.
void AddEntry(benchmark::State& state)
{
    const OwnStore store;
    WebsiteListPage page("S-1-5-21-1", state.range(0), 0);
    ElevatedSettings bare(nullptr, "S-1-5-21-2", kSettingsClientId, true);
    PutSites("S-1-5-21-2", "own", state.range(0));
    bare.Load();
    auto& list = bare.WritableSettings().internal.sites.list;
    const Settings::Site another("new.example.com", true, "");
    InTurns turns(state, "the list with the entry saved", {1.5});
    for (auto _ : state)
    {
        turns.Both([&] { page.Handler().AddNewItem(QStringLiteral("new.example.com"), true); },
                   [&] {
                       list.Insert(another);
                       list.Save();
                   });
        list.Erase(another);
        list.Save();
        page.Handler().RemoveItem(QStringLiteral("new.example.com"));
    }
}

BENCHMARK(PublishTables)->Name("publish website tables")->Arg(20'000)->Iterations(15)->UseManualTime();
BENCHMARK(AddEntry)->Name("add a website on the page, to a list of")->Arg(10'000)->Iterations(15)->UseManualTime();
BENCHMARK(PublishFlat)->Name("flat: publish, a row of")->Arg(10'000)->Arg(100'000)->Iterations(9)->UseManualTime();
BENCHMARK(PublishedMemoryFlat)
    ->Name("flat: memory, a published row of")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(3)
    ->UseManualTime();

} // namespace
