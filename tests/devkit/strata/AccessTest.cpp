#include "tests/devkit/strata/StoreFixture.h"

#include <thread>

using Kind = Opened::Kind;

namespace
{

using Access = StoreFixture;
constexpr OrbStrataResult kDenied = ORB_STRATA_ACCESS_DENIED;
constexpr const wchar_t* kInternal = L"windows.browsing_protection.internal.key";

TEST_F(Access, NormalHandleWritesBelowTheInternalKeysOnly)
{
    const Opened normal(Kind::Normal);
    const Opened elevated(Kind::Elevated);
    EXPECT_EQ(OrbStrata_SetBool(normal, kInternal, true), 0U);
    EXPECT_EQ(OrbStrata_SetConstraints(normal, kInternal, 2), 0U);
    for (const wchar_t* key : {L"common.key", L"windows.browsing_protection.internal", L"windows", L"a"})
    {
        EXPECT_EQ(OrbStrata_SetBool(normal, key, true), kDenied) << key;
        EXPECT_EQ(OrbStrata_SetConstraints(normal, key, 2), kDenied) << key;
        EXPECT_EQ(Stored(normal, key), "") << key;
        EXPECT_EQ(OrbStrata_SetBool(elevated, key, true), 0U) << key;
    }
    const OrbStrataEntry both[] = {{L"windows.browsing_protection.internal.b", ORB_STRATA_TYPE_BOOL, 1, nullptr, 0},
                                   {L"common.b", ORB_STRATA_TYPE_BOOL, 1, nullptr, 0}};
    EXPECT_EQ(OrbStrataControl_WriteAll(normal, both, 2), kDenied);
    EXPECT_EQ(Stored(normal, both[0].key), "");
}

TEST_F(Access, EnforcedKeyRefusesEveryWriteOfThePlugIn)
{
    const Opened product(Kind::Product);
    const Opened normal(Kind::Normal);
    const Opened elevated(Kind::Elevated);
    OrbStrata_SetInt32(product, kInternal, 1);
    OrbStrata_SetConstraints(product, kInternal, ORB_STRATA_CONSTRAINT_ENFORCED | 4);
    for (const OrbStrataHandle handle : {OrbStrataHandle(normal), OrbStrataHandle(elevated)})
    {
        EXPECT_EQ(OrbStrata_SetInt32(handle, kInternal, 2), kDenied);
        EXPECT_EQ(OrbStrata_SetInt32(handle, kInternal, 1), kDenied);
        EXPECT_EQ(OrbStrata_SetConstraints(handle, kInternal, 0), kDenied);
        EXPECT_EQ(OrbStrataControl_Remove(handle, kInternal), kDenied);
        EXPECT_EQ(Stored(handle, kInternal), "2 1  5");
    }
    const OrbStrataEntry both[] = {{L"free", ORB_STRATA_TYPE_BOOL, 1, nullptr, 0},
                                   {kInternal, ORB_STRATA_TYPE_BOOL, 1, nullptr, 0}};
    EXPECT_EQ(OrbStrataControl_WriteAll(elevated, both, 2), kDenied);
    EXPECT_EQ(OrbStrata_SetInt32(product, kInternal, 3), 0U);
    EXPECT_EQ(Stored(elevated, L"free"), "");
    OrbStrata_SetConstraints(product, kInternal, 4);
    EXPECT_EQ(OrbStrata_SetInt32(normal, kInternal, 4), 0U);
}

TEST_F(Access, DeclinedElevationGivesNoHandle)
{
    OrbStrataControl_SetElevationAnswer(false);
    const Opened declined(Kind::Elevated);
    EXPECT_EQ(declined.Result(), kDenied);
    EXPECT_EQ(OrbStrataHandle(declined), nullptr);
    EXPECT_EQ(Opened(Kind::Normal).Result(), 0U);
    OrbStrataControl_SetElevationAnswer(true);
    EXPECT_EQ(Opened(Kind::Elevated).Result(), 0U);
}

TEST_F(Access, FaultAnswersMatchingCallsOfThePlugInInPlaceOfTheirWrites)
{
    const Opened normal(Kind::Normal);
    const Opened product(Kind::Product);
    std::vector<std::wstring> writes;
    OrbStrataControl_SetWriteObserver(
        [](void* context, const OrbStrataWrite* write) {
            static_cast<std::vector<std::wstring>*>(context)->push_back(write->entry->key);
        },
        &writes);
    EXPECT_FALSE(OrbStrataControl_SetFault("OrbStrata_Nothing", nullptr, 1, 1));
    EXPECT_TRUE(OrbStrataControl_SetFault("OrbStrata_SetBool", kInternal, 31, 2));
    EXPECT_TRUE(OrbStrataControl_SetFault("OrbStrata_SetBool", kInternal, 32, 0));
    EXPECT_EQ(OrbStrata_SetBool(product, kInternal, false), 0U);
    EXPECT_EQ(OrbStrata_SetBool(normal, L"windows.browsing_protection.internal.other", true), 0U);
    EXPECT_EQ(OrbStrata_SetBool(normal, kInternal, true), 31U);
    EXPECT_EQ(OrbStrata_SetBool(normal, kInternal, true), 31U);
    EXPECT_EQ(OrbStrata_SetBool(normal, kInternal, true), 32U);
    EXPECT_EQ(OrbStrata_SetBool(normal, kInternal, true), 32U);
    EXPECT_EQ(Stored(normal, kInternal), "1 0  0");
    EXPECT_EQ(OrbStrata_SetInt32(normal, kInternal, 4), 0U);
    OrbStrataControl_ClearFaults();
    EXPECT_EQ(OrbStrata_SetBool(normal, kInternal, true), 0U);
    OrbStrataControl_SetWriteObserver(nullptr, nullptr);
    EXPECT_EQ(writes, (std::vector<std::wstring>{kInternal, L"windows.browsing_protection.internal.other", kInternal,
                                                 kInternal}));
}

TEST_F(Access, WriteObserverHearsWhatWasWrittenAndWhoseItWas)
{
    const Opened normal(Kind::Normal);
    const Opened product(Kind::Product);
    std::vector<std::wstring> writes;
    OrbStrataControl_SetWriteObserver(
        [](void* context, const OrbStrataWrite* write) {
            static constexpr const wchar_t* kNames[] = {L"plug-in", L"background", L"product", L"others"};
            const OrbStrataEntry& entry = *write->entry;
            const std::wstring held = write->ofValue ? std::to_wstring(entry.number) : L"word";
            static_cast<std::vector<std::wstring>*>(context)->push_back(
                entry.key + (L" " + held + L" " + std::to_wstring(entry.constraints) + L" " + kNames[write->by]));
        },
        &writes);
    OrbStrata_SetBool(normal, kInternal, true);
    OrbStrata_SetBool(normal, kInternal, true);
    OrbStrata_SetConstraints(normal, kInternal, 2);
    OrbStrata_SetBool(normal, L"refused", true);
    std::thread([&normal] { OrbStrata_SetInt32(normal, kInternal, 7); }).join();
    OrbStrata_SetBool(product, L"p", true);
    OrbStrataControl_Remove(product, L"p");
    OrbStrataControl_SetWriteObserver(nullptr, nullptr);
    const std::wstring own = kInternal;
    EXPECT_EQ(writes, (std::vector<std::wstring>{own + L" 1 0 plug-in", own + L" 1 0 plug-in", own + L" word 2 plug-in",
                                                 own + L" 7 2 background", L"p 1 0 product", L"p 0 0 product"}));
}

} // namespace
