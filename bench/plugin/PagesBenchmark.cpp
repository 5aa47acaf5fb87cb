#include "bench/plugin/LoadedPlugIn.h"
#include "bench/support/InTurns.h"
#include "bench/support/OwnStore.h"

#include <map>
#include <utility>

namespace
{

constexpr const char* kLoadData = "@Veridan\\Settings\\Triggers:load_data";
constexpr const char* kSave = "@Veridan\\Settings\\Triggers:save";

/// Every page anew, the way that opening the settings does it.
void PublishAllPages(benchmark::State& state)
{
    const OwnStore store;
    store.Seed();
    LoadedPlugIn plugIn;
    std::vector<std::pair<VariableIdentifier, QVariant>> writes;
    plugIn.host.Observe(
        [&writes](const QString& id, const QVariant& value) { writes.emplace_back(VariableIdentifier(id), value); });
    plugIn.host.Fire(kLoadData);
    plugIn.host.Observe(nullptr);

    state.counters["variables"] = static_cast<double>(writes.size());
    PageHost other;
    InTurns turns(state, "the same values written to a host", {0, 1e-3});
    for (auto _ : state)
    {
        turns.Both([&] { plugIn.host.Fire(kLoadData); },
                   [&] {
                       for (const auto& [id, value] : writes)
                           other.Write(id, value);
                   });
    }
}

/// A key's value, ready to be written again.
struct Value
{
    OrbStrataType type = ORB_STRATA_TYPE_NONE;
    std::int64_t number = 0;
    std::string text;

    bool operator==(const Value& other) const
    {
        return type == other.type && number == other.number && text == other.text;
    }
};
using Values = std::map<std::wstring, Value>;

Values Contents(const StoreLibrary& library, OrbStrataHandle handle)
{
    Values values;
    const auto keep = [](void* context, const OrbStrataEntry* entry) {
        (*static_cast<Values*>(context))[entry->key] = {entry->type, entry->number, entry->text ? entry->text : ""};
    };
    library.control.OrbStrataControl_List(handle, L"", keep, &values);
    return values;
}

Values Changed(const Values& before, const Values& after)
{
    Values changed;
    for (const auto& [key, value] : after)
    {
        const auto at = before.find(key);
        if (at == before.end() || !(at->second == value))
            changed[key] = value;
    }
    return changed;
}

void Write(OrbStrataHandle handle, const std::wstring& key, const Value& value)
{
    if (value.type == ORB_STRATA_TYPE_INT64)
    {
        OrbStrata_SetInt64(handle, key.c_str(), value.number);
        return;
    }
    OrbStrataObject* const object = OrbStrata_CreateObjectFromString(value.text.c_str());
    OrbStrata_SetObject(handle, key.c_str(), object);
    OrbStrata_DeleteObject(object);
}

/// Another week and another number of hours each time: durations and ranges of seven days.
class TimeLimitPage
{
public:
    explicit TimeLimitPage(PageHost& host) : m_host(host)
    {
        m_host.Fire("@Veridan\\Settings\\Triggers:request_show_settings_ui");
        m_host.Fire(kLoadData);
    }

    void Edit()
    {
        m_odd = !m_odd;
        const QString day =
            m_odd ? QStringLiteral("000000001111111111111100") : QStringLiteral("000000111111111111111111");
        m_host.Put("@TimeLimit\\Data:time_slots", day.repeated(7));
        m_host.Put("@TimeLimit\\Data:weekday_hours_value", m_odd ? 3 : 4);
    }
    void Save() { m_host.Fire(kSave); }
    bool IsOdd() const { return m_odd; }

private:
    PageHost& m_host;
    bool m_odd = false;
};

void SavePage(benchmark::State& state)
{
    const OwnStore store;
    store.Seed();
    store.Seed("S-1-5-21-1");
    const StoreLibrary library;
    LoadedPlugIn plugIn;
    TimeLimitPage page(plugIn.host);

    // What the page writes, to be written likewise into a scope that nobody follows.
    const BareScope user("", true);
    const BareScope bare("S-1-5-21-1", true);
    page.Edit();
    page.Save();
    const Values odd = Contents(library, user.Handle());
    page.Edit();
    page.Save();
    const Values even = Contents(library, user.Handle());
    const Values toOdd = Changed(even, odd);
    const Values toEven = Changed(odd, even);

    InTurns turns(state, "the same keys written through the store's interface", {1.5});
    for (auto _ : state)
    {
        page.Edit();
        turns.Both([&] { page.Save(); },
                   [&] {
                       for (const auto& [key, value] : page.IsOdd() ? toOdd : toEven)
                           Write(bare.Handle(), key, value);
                   });
        library.control.OrbStrataControl_WaitForDelivery(1000);
        QCoreApplication::processEvents();
    }
    state.counters["keys"] = static_cast<double>(toOdd.size());
}

BENCHMARK(PublishAllPages)->Name("publish all pages")->Iterations(500)->UseManualTime();
BENCHMARK(SavePage)->Name("save the time limit page")->Iterations(100)->UseManualTime();

} // namespace
