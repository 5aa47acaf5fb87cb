#include "bench/settings/SomeSites.h"
#include "bench/support/InTurns.h"
#include "bench/support/Memory.h"
#include "bench/support/OwnStore.h"
#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"

#include <vector>

// What a website costs in a list of its own kind. "Flat" compares a long list with one of a thousand sites.

namespace
{

using Settings::Site;
using Scope = StrataSettings::ScopedSettings<VdnSettings>;
using Sites = std::set<Site>;

constexpr std::int64_t kFew = 1'000;
constexpr const char* kFewSites = "the same in a list of 1,000";
constexpr const wchar_t* kListKey = L"common.sites.list";
constexpr Wanted kFlat{2};

/// A user's list in the store, and the tree over it.
class StoredSites
{
public:
    StoredSites(const char* sid, std::int64_t count) : m_scope(sid, L"safe", L"bench", true)
    {
        List().Set(SomeSites(count));
        m_scope.Save();
    }

    StrataSettings::PropertySet<Site>& List() { return m_scope.Settings().sites.list; }
    void Load() { List().Load(); }
    void Save() { m_scope.Save(); }

    void ChangeAndSave()
    {
        Change();
        Save();
    }

    /// Makes the list another one, so that saving it is a change.
    void Change()
    {
        if (m_more)
            List().Erase(m_another);
        else
            List().Insert(m_another);
        m_more = !m_more;
    }

private:
    Scope m_scope;
    bool m_more = false;
    const Site m_another{SiteAddress(1), true, "label"};
};

void ReadBare(OrbStrataHandle handle)
{
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    OrbStrataObject* const array = OrbStrata_GetObject(handle, kListKey, &result);
    const OrbStrataIterator end = OrbStrata_ArrayEnd(array);
    for (OrbStrataIterator at = OrbStrata_ArrayBegin(array); at != end; ++at)
    {
        const OrbStrataObject* const record = OrbStrata_IteratorGetAssociatedObject(at);
        OrbStrata_FreeString(OrbStrata_ObjectGetStringUtf8(record, L"url", "", &result));
        OrbStrata_FreeString(OrbStrata_ObjectGetStringUtf8(record, L"label", "", &result));
        OrbStrata_ObjectGetBool(record, L"allowed", false, &result);
    }
    OrbStrata_DeleteObject(array);
}

void WriteBare(OrbStrataHandle handle, const Sites& sites)
{
    OrbStrataObject* const array = OrbStrata_CreateArray();
    for (const Site& site : sites)
    {
        OrbStrataObject* const record = OrbStrata_CreateObject();
        OrbStrata_ObjectSetStringUtf8(record, L"url", site.Url.c_str());
        OrbStrata_ObjectSetStringUtf8(record, L"label", site.label.c_str());
        OrbStrata_ObjectSetBool(record, L"allowed", site.allowed);
        OrbStrata_ArrayPushBack(array, record);
        OrbStrata_DeleteObject(record);
    }
    OrbStrata_SetObject(handle, kListKey, array);
    OrbStrata_DeleteObject(array);
}

void LoadSites(benchmark::State& state)
{
    const OwnStore store;
    StoredSites sites("S-1-5-21-1", state.range(0));
    const BareScope bare("S-1-5-21-1");
    InTurns turns(state, "every field read through the store's interface", {1.5});
    for (auto _ : state)
        turns.Both([&] { sites.Load(); }, [&] { ReadBare(bare.Handle()); });
}

void SaveSites(benchmark::State& state)
{
    const OwnStore store;
    StoredSites sites("S-1-5-21-1", state.range(0));
    const BareScope bare("S-1-5-21-2", true);
    const Sites one = SomeSites(state.range(0));
    const Sites other = SomeSites(state.range(0) + 1);
    bool odd = false;
    InTurns turns(state, "the same list made and written through the store's interface", {1.5});
    for (auto _ : state)
    {
        odd = !odd;
        sites.Change();
        turns.Both([&] { sites.Save(); }, [&] { WriteBare(bare.Handle(), odd ? one : other); });
    }
}

void LoadFlat(benchmark::State& state)
{
    const OwnStore store;
    StoredSites few("S-1-5-21-1", kFew);
    StoredSites many("S-1-5-21-2", state.range(0));
    InTurns turns(state, kFewSites, kFlat);
    turns.SetUnits(state.range(0), kFew);
    turns.RunTwice();
    for (auto _ : state)
        turns.Both([&] { many.Load(); }, [&] { few.Load(); });
}

void SaveFlat(benchmark::State& state)
{
    const OwnStore store;
    StoredSites few("S-1-5-21-1", kFew);
    StoredSites many("S-1-5-21-2", state.range(0));
    InTurns turns(state, kFewSites, kFlat);
    turns.SetUnits(state.range(0), kFew);
    turns.RunTwice();
    for (auto _ : state)
        turns.Both([&] { many.ChangeAndSave(); }, [&] { few.ChangeAndSave(); });
}

/// A list, and some sites that are not in it and would lie all over it.
class EditedSites
{
public:
    static constexpr std::int64_t kEdits = 200;

    explicit EditedSites(std::int64_t count)
    {
        m_tree.sites.list.Set(SomeSites(count));
        for (std::int64_t i = 0; i < kEdits; ++i)
            m_edits.emplace_back(SiteAddress(2 * (i * count / kEdits) + 1), true, "label");
    }

    void Add()
    {
        for (const Site& site : m_edits)
            m_tree.sites.Add(site);
    }

    void Remove()
    {
        for (const Site& site : m_edits)
            m_tree.sites.Remove(site.Url);
    }

private:
    VdnSettings m_tree;
    std::vector<Site> m_edits;
};

void AddFlat(benchmark::State& state)
{
    EditedSites few(kFew);
    EditedSites many(state.range(0));
    InTurns turns(state, kFewSites, kFlat);
    turns.SetUnits(EditedSites::kEdits, EditedSites::kEdits);
    for (auto _ : state)
    {
        turns.Both([&] { many.Add(); }, [&] { few.Add(); });
        few.Remove();
        many.Remove();
    }
}

void RemoveFlat(benchmark::State& state)
{
    EditedSites few(kFew);
    EditedSites many(state.range(0));
    InTurns turns(state, kFewSites, kFlat);
    turns.SetUnits(EditedSites::kEdits, EditedSites::kEdits);
    for (auto _ : state)
    {
        few.Add();
        many.Add();
        turns.Both([&] { many.Remove(); }, [&] { few.Remove(); });
    }
}

/// What a tree keeps of each site that it has loaded.
double MemoryOfSite(StoredSites& sites, std::int64_t count)
{
    sites.List().Set({});
    const double before = AllocatedBytes();
    sites.Load();
    return (AllocatedBytes() - before) / static_cast<double>(count);
}

void MemoryFlat(benchmark::State& state)
{
    const OwnStore store;
    StoredSites few("S-1-5-21-1", kFew);
    StoredSites many("S-1-5-21-2", state.range(0));
    InTurns turns(state, kFewSites, kFlat);
    turns.CountBytes();
    for (auto _ : state)
    {
        turns.AddBaseline(MemoryOfSite(few, kFew));
        turns.AddSubject(MemoryOfSite(many, state.range(0)));
    }
}

BENCHMARK(LoadSites)->Name("load sites")->Arg(10'000)->Iterations(15)->UseManualTime();
BENCHMARK(SaveSites)->Name("save sites")->Arg(10'000)->Iterations(15)->UseManualTime();
BENCHMARK(LoadFlat)->Name("flat: load, a site of")->Arg(10'000)->Arg(100'000)->Iterations(9)->UseManualTime();
BENCHMARK(SaveFlat)->Name("flat: save, a site of")->Arg(10'000)->Arg(100'000)->Iterations(9)->UseManualTime();
BENCHMARK(AddFlat)->Name("flat: add one to")->Arg(10'000)->Arg(100'000)->Iterations(100)->UseManualTime();
BENCHMARK(RemoveFlat)->Name("flat: remove one from")->Arg(10'000)->Arg(100'000)->Iterations(100)->UseManualTime();
BENCHMARK(MemoryFlat)->Name("flat: memory, a site of")->Arg(10'000)->Arg(100'000)->Iterations(3)->UseManualTime();

} // namespace
