#include "settings/binding/ScopedSettings.h"
#include "platform/Format.h"
#include "settings/binding/Observer.h"
#include "settings/model/VdnSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"
#include "text/Utf.h"

#include <algorithm>
#include <thread>

using StrataSettings::ScopedSettings;
using StrataSettings::StoreHandle;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr const wchar_t* kSessionOpen = L"windows.browsing_protection.internal.banking_session_open";
const std::string kScopedName = "StrataSettings::ScopedSettings<class VdnSettings>::";

class ScopedSettingsTest : public StoreTest
{
protected:
    using Scope = ScopedSettings<VdnSettings>;
};

class Recorder final : public StrataSettings::Observer
{
public:
    void OnPropertyChanged(const StrataSettings::PropertyBase& property) override
    {
        m_changed.push_back(property.GetKey().String());
    }
    void OnMissing() override { ++m_missing; }

    std::vector<std::wstring> m_changed;
    int m_missing = 0;
};

} // namespace

TEST_F(ScopedSettingsTest, WithoutAHandleTheDefaultsStayAndNothingIsDone)
{
    Fail("OrbStrata_OpenHandle", nullptr, 31, 2);
    Scope scope(kUser, L"safe", L"test", false);
    EXPECT_EQ(31u, scope.OpenResult());
    EXPECT_FALSE(scope.Load());
    EXPECT_FALSE(scope.Save());
    EXPECT_FALSE(scope.ResetHandle());
    EXPECT_TRUE(scope.Settings().time.enabled.ReadFailed()); // nothing is built on what nobody read
    EXPECT_THAT(
        LogCapture::Take(2),
        ElementsAre(LogLine{2, kScopedName + "ScopedSettings: Failed with error 31, strata handle not available"},
                    LogLine{2, kScopedName + "Load: Cannot load null handle. SID='" + kUser + "'"},
                    LogLine{2, kScopedName + "Save: Cannot save null handle. SID='" + kUser + "'"},
                    LogLine{2, kScopedName + "ResetHandle: Failed with error 31, strata handle not available"}));
    EXPECT_TRUE(scope.ResetHandle());
    EXPECT_TRUE(scope.Load());
}

TEST_F(ScopedSettingsTest, AHandleIsNotReset)
{
    Scope scope(kUser, L"safe", L"test", false);
    EXPECT_FALSE(scope.ResetHandle());
    const std::string handle = Text::ToUtf8(Platform::FormatString(L"%p", scope.EffectiveHandle()));
    EXPECT_THAT(LogCapture::Take(),
                ElementsAre(LogLine{5, kScopedName + "ScopedSettings: " + kUser + "/" + handle},
                            LogLine{2, kScopedName + "ResetHandle: Reseting non-null handle not allowed!"}));
    EXPECT_EQ(1u, OpenHandles());
}

TEST_F(ScopedSettingsTest, ADeclinedElevationGivesNoHandle)
{
    AnswerElevation(false);
    LogCapture::Expect(2, kScopedName + "ScopedSettings: Failed with error 5, strata handle not available");
    const Scope scope(kUser, L"safe", L"test", true);
    EXPECT_EQ(nullptr, scope.EffectiveHandle());
    EXPECT_EQ(0u, OpenHandles());
}

TEST_F(ScopedSettingsTest, TheSecondHandleSaves)
{
    Scope scope(kUser, L"safe", L"test", false);
    ASSERT_TRUE(scope.Load());
    scope.Settings().time.enabled.Set(true);
    EXPECT_FALSE(scope.Save()); // a normal handle may not

    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    scope.UseForSaving(StoreHandle(OrbStrata_OpenElevatedHandle(L"safe", L"S-1-5-21-1-2-3-1001", L"test", &result)));
    EXPECT_TRUE(scope.Save());
    EXPECT_EQ(1, Find(kUser, L"common.time.enabled").number);
    ASSERT_TRUE(scope.Load()); // and constrains, as an elevated one
    EXPECT_EQ(2u, Find(kUser, scope.Settings().internal.statistics.dailyCounters.GetKey().c_str()).constraints);
    scope.Settings().time.enabled.Set(false);
    EXPECT_TRUE(scope.Settings().time.enabled.Save()); // a property finds it through the tree
    EXPECT_EQ(0, Find(kUser, L"common.time.enabled").number);
}

TEST_F(ScopedSettingsTest, FollowsValuesConstraintsAndRemovals)
{
    Recorder recorder;
    Scope scope(kUser, L"safe", L"test", false);
    ASSERT_TRUE(scope.LoadOnce(&recorder));
    const auto& property = scope.Settings().internal.bankingSessionOpen;

    Put(kUser, kSessionOpen, true);
    Settle();
    EXPECT_TRUE(property.Get());
    Constrain(kUser, kSessionOpen, ORB_STRATA_CONSTRAINT_ENFORCED);
    Settle();
    EXPECT_TRUE(property.IsEnforced());
    Erase(kUser, kSessionOpen);
    Settle();
    EXPECT_FALSE(property.Get());
    EXPECT_FALSE(property.IsEnforced());
    EXPECT_THAT(recorder.m_changed, ElementsAre(kSessionOpen, kSessionOpen, kSessionOpen));

    Put(kSystem, kSessionOpen, true); // another scope's
    Settle();
    EXPECT_FALSE(property.Get());
    EXPECT_EQ(3u, recorder.m_changed.size());
}

TEST_F(ScopedSettingsTest, FollowsBeforeItLoadsSoThatNoChangeFallsBetweenAndNoLongerThanItsHandle)
{
    static std::vector<std::string> s_calls;
    static std::ptrdiff_t s_ended;
    static OrbStrataHandle s_followed;
    s_calls.clear();
    s_ended = 0;
    SuiteTableGuard guard(g_orbStrata);
    static auto* const s_subscribe = g_orbStrata.OrbStrata_Subscribe;
    static auto* const s_getBool = g_orbStrata.OrbStrata_GetBool;
    guard->OrbStrata_Subscribe = [](OrbStrataHandle handle, const wchar_t* key, std::int32_t type,
                                    OrbStrataCallback callback, void* context, OrbStrataResult* result) {
        s_calls.emplace_back("subscribe");
        s_followed = handle;
        return s_subscribe(handle, key, type, callback, context, result);
    };
    guard->OrbStrata_GetBool = [](OrbStrataHandle handle, const wchar_t* key, bool value, OrbStrataResult* result) {
        s_calls.emplace_back("read");
        return s_getBool(handle, key, value, result);
    };
    static auto* const s_unsubscribe = g_orbStrata.OrbStrata_Unsubscribe;
    guard->OrbStrata_Unsubscribe = [](OrbStrataHandle handle, OrbStrataSubscription subscription) {
        s_ended += handle == s_followed;
        s_unsubscribe(handle, subscription);
    };
    static auto* const s_close = g_orbStrata.OrbStrata_CloseHandle;
    guard->OrbStrata_CloseHandle = [](OrbStrataHandle handle) {
        EXPECT_EQ(std::count(s_calls.begin(), s_calls.end(), "subscribe"), s_ended);
        s_close(handle);
    };
    {
        Scope scope(kUser, L"safe", L"test", false);
        ASSERT_TRUE(scope.LoadOnce(nullptr));
        OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
        scope.UseForSaving(StoreHandle(OrbStrata_OpenHandle(L"safe", L"S-1-5-21-1-2-3-1001", L"test", &result)));
        ASSERT_TRUE(scope.LoadOnce(nullptr));
    }
    EXPECT_THAT(s_calls, Contains("subscribe"));
    EXPECT_THAT(s_calls, Contains("read"));
    EXPECT_TRUE(std::is_sorted(s_calls.rbegin(), s_calls.rend()));
}

TEST_F(ScopedSettingsTest, ItsOwnWritesAreNoNews)
{
    Recorder recorder;
    Scope scope(kUser, L"safe", L"test", false);
    ASSERT_TRUE(scope.LoadOnce(&recorder));
    scope.Settings().internal.mainGuiOpen.Set(true);
    ASSERT_TRUE(scope.Save());
    Settle();
    StrataSettings::Listener<Scope>(scope).OnSettingChanged(kSessionOpen, ORB_STRATA_CHANGED, nullptr); // late
    EXPECT_THAT(recorder.m_changed, IsEmpty());
}

TEST_F(ScopedSettingsTest, ARefusedSubscriptionLeavesTheOthers)
{
    Fail("OrbStrata_Subscribe", kSessionOpen, 31, 1);
    LogCapture::Expect(2, "StrataSettings::Listener<class StrataSettings::ScopedSettings<class VdnSettings> >::"
                          "Subscribe: Failed to add listener "
                          "'windows.browsing_protection.internal.banking_session_open', Type: 1, error 31u");
    Scope scope(kUser, L"safe", L"test", false);
    ASSERT_TRUE(scope.LoadOnce(nullptr));
    Put(kUser, kSessionOpen, true);
    Put(kUser, L"common.time.enabled", true);
    Settle();
    EXPECT_FALSE(scope.Settings().internal.bankingSessionOpen.Get());
    EXPECT_TRUE(scope.Settings().time.enabled.Get());
}

TEST_F(ScopedSettingsTest, WhatComesWithAFailureIsNotUsed)
{
    SuiteTableGuard guard(g_orbStrata);
    static auto* const s_open = g_orbStrata.OrbStrata_OpenHandle;
    static auto* const s_subscribe = g_orbStrata.OrbStrata_Subscribe;
    guard->OrbStrata_Subscribe = [](OrbStrataHandle handle, const wchar_t* key, std::int32_t type,
                                    OrbStrataCallback callback, void* context, OrbStrataResult* result) {
        const OrbStrataSubscription subscription = s_subscribe(handle, key, type, callback, context, result);
        *result = 31;
        return subscription;
    };
    {
        Recorder recorder;
        Scope scope(kUser, L"safe", L"test", false);
        ASSERT_TRUE(scope.LoadOnce(&recorder));
        Put(kUser, kSessionOpen, true);
        Settle();
        EXPECT_THAT(recorder.m_changed, IsEmpty());
    }
    guard->OrbStrata_OpenHandle = [](const wchar_t* store, const wchar_t* sid, const wchar_t* client,
                                     OrbStrataResult* result) {
        const OrbStrataHandle handle = s_open(store, sid, client, result);
        *result = 31;
        return handle;
    };
    const Scope scope(kUser, L"safe", L"test", false);
    EXPECT_EQ(nullptr, scope.EffectiveHandle());
    EXPECT_EQ(0u, OpenHandles());
    LogCapture::Take();
}

TEST_F(ScopedSettingsTest, AListThatCannotBeReadIsTakenFromItsTextHoweverLongElseReadLater)
{
    constexpr const wchar_t* kList = L"windows.browsing_protection.internal.sites.list";
    Recorder recorder;
    Scope scope(kUser, L"safe", L"test", false);
    const auto& list = scope.Settings().internal.sites.list;
    ASSERT_TRUE(scope.LoadOnce(&recorder));
    Fail("OrbStrata_GetObject", kList, ORB_STRATA_STORE_FAILED, 1);
    const std::string url(10'000, 'x');
    Put(kUser, kList, Stored{ORB_STRATA_TYPE_OBJECT, 0, R"([{"allowed":true,"label":"","url":")" + url + R"("}])", 0});
    Settle();
    EXPECT_EQ(1u, list.Get().count(Settings::Site(url, true, "")));
    EXPECT_TRUE(scope.LoadOnce(&recorder)); // its constraints
    Put(kUser, kList, Stored{ORB_STRATA_TYPE_OBJECT, 0, R"([{"allowed":false,"label":"","url":")" + url + R"("}])", 0});
    Settle();
    EXPECT_FALSE(list.Get().begin()->allowed);

    recorder.m_missing = 0;
    Fail("OrbStrata_GetObject", kList, ORB_STRATA_STORE_FAILED, 1);
    StrataSettings::Listener<Scope>(scope).OnSettingChanged(kList, ORB_STRATA_CHANGED, nullptr);
    EXPECT_TRUE(list.ReadFailed());
    EXPECT_EQ(1, recorder.m_missing);
    EXPECT_TRUE(scope.LoadOnce(&recorder));
    EXPECT_FALSE(list.ReadFailed());
    EXPECT_EQ(1, recorder.m_missing);
    LogCapture::Take();
}

TEST_F(ScopedSettingsTest, IsSavedOnOneThreadWhileItIsOpenedOnAnother)
{
    Fail("OrbStrata_OpenHandle", nullptr, 31, 1);
    Scope scope(kUser, L"safe", L"test", false);
    scope.Settings().internal.mainGuiOpen.Set(true);
    std::thread saving([&] {
        while (!scope.Save())
            std::this_thread::yield();
    });
    EXPECT_TRUE(scope.ResetHandle());
    EXPECT_TRUE(scope.LoadOnce(nullptr));
    saving.join();
    EXPECT_TRUE(scope.Settings().internal.mainGuiOpen.Get());
    EXPECT_EQ(1, Find(kUser, L"windows.browsing_protection.internal.main_gui_open").number);
    LogCapture::Take();
}

TEST_F(ScopedSettingsTest, AnUnknownKeyIsReported)
{
    Scope scope(kUser, L"safe", L"test", false);
    StrataSettings::Listener<Scope> listener(scope);
    const std::string name = "StrataSettings::Listener<class StrataSettings::ScopedSettings<class VdnSettings> >::";
    LogCapture::Expect(2, name + "OnSettingChanged: Could not find 'no.such.key', type 1");
    LogCapture::Expect(2, name + "OnSettingRemoved: Could not erase no.such.key");
    listener.OnSettingChanged(L"no.such.key", ORB_STRATA_CHANGED, nullptr);
    listener.OnSettingRemoved(L"no.such.key");
}
