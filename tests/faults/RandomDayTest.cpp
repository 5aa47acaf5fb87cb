// Days on which parts of the store fail for a while, in any order between what people and the product do. When nothing
// fails any more, nothing of it is left.

#include "tests/faults/FaultyDay.h"
#include "tests/support/RetryTimers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iterator>
#include <random>
#include <sstream>

using testing::IsEmpty;

namespace
{

constexpr StoreFunction kFailing[] = {
    StoreFunction::kOrbStrata_OpenHandle,
    StoreFunction::kOrbStrata_OpenElevatedHandle,
    StoreFunction::kOrbStrata_Subscribe,
    StoreFunction::kOrbStrata_GetBool,
    StoreFunction::kOrbStrata_GetInt32,
    StoreFunction::kOrbStrata_GetInt64,
    StoreFunction::kOrbStrata_GetString,
    StoreFunction::kOrbStrata_GetStringUtf8,
    StoreFunction::kOrbStrata_GetConstraints,
    StoreFunction::kOrbStrata_GetObject,
    StoreFunction::kOrbStrata_ArrayBegin,
    StoreFunction::kOrbStrata_IteratorGetAssociatedObject,
    StoreFunction::kOrbStrata_ObjectGetBool,
    StoreFunction::kOrbStrata_ObjectGetInt64,
    StoreFunction::kOrbStrata_ObjectGetStringUtf8,
};

constexpr const wchar_t* kCounters = L"windows.browsing_protection.internal.statistics.daily_counters";

constexpr const wchar_t* kSwitchKeys[] = {
    L"windows.browsing_protection.enabled",
    L"windows.browsing_protection.banking_protection.enabled",
    L"windows.browsing_protection.search_result_filter.enabled",
    L"windows.browsing_protection.internal.default_browser_extension_disabled",
    L"common.content.enabled",
    L"common.content.allowed_categories.gambling",
    L"common.time.enabled",
    L"common.time.curfew.enabled",
};

/// What the page shows before it is opened anew.
constexpr const char* kFollowed[] = {
    "@ContentControl\\Status:status_level", "@ContentControl\\Status:main_status",
    "@ContentControl\\Status:sub_status",   "@ContentControl\\Data:current_user_web_page_filter_switch_state",
    "@TimeLimit\\Data:time_limit_state",    "@SafeSearch\\Data:safe_search_state",
};

class RandomDayTest : public FaultyDay, public testing::WithParamInterface<unsigned>
{
protected:
    int Random(std::size_t count) { return static_cast<int>(m_random() % count); }
    bool Coin() { return Random(2) != 0; }
    const char* AnyScope() { return Coin() ? kSystem : kUser; }

    template <class Element, std::size_t Count>
    Element& Any(Element (&elements)[Count])
    {
        return elements[Random(Count)];
    }

    const wchar_t* AnyKey()
    {
        static constexpr const wchar_t* kOthers[] = {kTrigger, kBankingSession, kSites, kCounters};
        return Coin() ? Any(kSwitchKeys) : Any(kOthers);
    }

    /// Lets a function of the store fail from one of its next calls on.
    void BeginFault()
    {
        const StoreFunction function = Any(kFailing);
        m_store.Fail(function, {ORB_STRATA_STORE_FAILED, false, 1 + Random(20), 0});
        m_story << "fail " << FaultyStore::TraitOf(function).name << '\n';
    }

    void EndFault()
    {
        const StoreFunction function = Any(kFailing);
        m_store.Work(function);
        m_story << "mend " << FaultyStore::TraitOf(function).name << '\n';
    }

    void ProductWrites()
    {
        const char* sid = AnyScope();
        switch (Random(6))
        {
        case 0:
            m_story << "lock\n";
            return Put(kUser, kTrigger, -Random(2));
        case 1:
            m_story << "bank\n";
            return Put(kSystem, kBankingSession, Coin());
        case 2:
            m_story << "list " << sid << '\n';
            return Put(sid, kSites, LongList());
        case 3:
            m_story << "count\n";
            return Put(kUser, kCounters,
                       Stored{ORB_STRATA_TYPE_OBJECT, 0,
                              R"([{"bankingSessions":1,"harmfulBlocks":2,"julianDate":2460000,"websitesChecked":3,)"
                              R"("wtsBlocks":4,"wtsScans":5}])",
                              0});
        default:
            m_story << "switch " << sid << '\n';
            return Put(sid, Any(kSwitchKeys), Coin());
        }
    }

    /// Longer than what a notification carries.
    Stored LongList()
    {
        QJsonArray sites;
        for (int i = Random(100); i >= 0; --i)
            sites.append(QJsonObject{
                {"allowed", Coin()}, {"label", ""}, {"url", QString("site-%1.example/%1").arg(Random(1000))}});
        return {ORB_STRATA_TYPE_OBJECT, 0, QJsonDocument(sites).toJson(QJsonDocument::Compact).toStdString(), 0};
    }

    void ProductConstrainsOrRemoves()
    {
        const char* sid = AnyScope();
        const wchar_t* key = AnyKey();
        if (Contents(sid).count(key) == 0)
            return;
        if (Coin())
            Erase(sid, key);
        else
            Constrain(sid, key, Coin() ? ORB_STRATA_CONSTRAINT_ENFORCED : 0);
        m_story << "constrain or remove " << sid << ' ' << QString::fromWCharArray(key).toStdString() << '\n';
    }

    void UsePage()
    {
        const std::size_t step = 1 + static_cast<std::size_t>(Random(StepNames().size() - 1));
        m_story << StepNames()[step] << '\n';
        Go(step);
    }

    void DoAnything()
    {
        switch (Random(8))
        {
        case 0:
        case 1:
            BeginFault();
            break;
        case 2:
            EndFault();
            break;
        case 3:
        case 4:
            ProductWrites();
            break;
        case 5:
            ProductConstrainsOrRemoves();
            break;
        case 6:
            UsePage();
            break;
        default:
            m_story << "three seconds\n";
            m_retries.Elapse();
        }
        if (Coin())
            Settle();
        FollowLock();
    }

    /// The lock is on screen from the dialog's show to its close.
    void FollowLock()
    {
        for (const std::string& trigger : Host().Take("trigger"))
            if (trigger == "show_block_dialog" || trigger == "close_block_dialog")
                m_locked = trigger == "show_block_dialog";
    }

    std::mt19937 m_random{GetParam()};
    RetryTimers m_retries;
    bool m_locked = false;
    std::ostringstream m_story;
};

} // namespace

TEST_P(RandomDayTest, LeavesNothingStaleOnceNothingFailsAnyMore)
{
    for (int faults = Random(4); faults > 0; --faults)
        BeginFault();
    Go(0);
    for (int i = 0; i < 30; ++i)
        DoAnything();

    m_store.Work();
    Settle();
    m_retries.Elapse();
    Settle();
    EXPECT_FALSE(m_retries.Elapse());
    FollowLock();

    const StoreTest::Stored trigger = Find(kUser, kTrigger);
    EXPECT_EQ(trigger.number < 0, m_locked);
    const Strings stale = StaleOnThePages();
    for (const char* id : kFollowed)
        if (Host().String(id).rfind("Move", 0) != 0) // a move that nobody may answer
            EXPECT_EQ(0u, stale.count(id)) << id << ": " << stale.at(id);
    EXPECT_THAT(WrongOnThePages(), IsEmpty());
    if (HasFailure())
        ADD_FAILURE() << m_story.str();
}

INSTANTIATE_TEST_SUITE_P(Days, RandomDayTest, testing::Range(1u, 25u));
