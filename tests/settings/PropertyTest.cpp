#include "settings/binding/Property.h"
#include "settings/binding/PropertySet.h"
#include "settings/binding/StoreHandle.h"
#include "settings/model/Site.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

using namespace StrataSettings;
using testing::ElementsAre;

namespace
{

constexpr const wchar_t* kKey = L"windows.browsing_protection.internal.test";
constexpr const char* kNotFound = "StrataSettings::Property<int>::Load: "
                                  "'windows.browsing_protection.internal.test' not found, ok if not yet created.";

class PropertyTest : public StoreTest
{
protected:
    PropertyTest()
    {
        OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
        m_handle = StoreHandle(OrbStrata_OpenHandle(L"safe", L"S-1-5-21-1-2-3-1001", L"property_test", &result));
        m_property.SetHandle(m_handle.Get());
        LogCapture::Take();
    }

    StoreHandle m_handle;
    Property<int> m_property{nullptr, kKey, 42};
};

} // namespace

TEST_F(PropertyTest, AnAbsentKeyKeepsTheDefaultAndSaysSoQuietly)
{
    m_property.Load();
    EXPECT_EQ(42, m_property.Get());
    EXPECT_EQ(ModificationState::Default, m_property.State());
    EXPECT_THAT(LogCapture::Take(), ElementsAre(LogLine{5, kNotFound}));
}

TEST_F(PropertyTest, AFailedReadKeepsWhatTheValueWas)
{
    Put(kUser, kKey, 7);
    m_property.Load();
    Put(kUser, kKey, 8);
    Fail("OrbStrata_GetInt32", kKey, ORB_STRATA_STORE_FAILED, 1);
    m_property.Load();
    EXPECT_EQ(7, m_property.Get());
    m_property.Save();
    EXPECT_TRUE(TakeWrites().empty());
    EXPECT_THAT(LogCapture::Take(1), ElementsAre(LogLine{1, "StrataSettings::Property<int>::Load: "
                                                            "'windows.browsing_protection.internal.test' reading "
                                                            "failed, error 112"}));
    EXPECT_EQ(SetResult::Stored, m_property.Set(7)); // the store does not hold it any more
    EXPECT_TRUE(m_property.Save());
    EXPECT_EQ(7, Find(kUser, kKey).number);
}

TEST_F(PropertyTest, UnreadableConstraintsLeaveTheValue)
{
    Put(kUser, kKey, 7);
    Fail("OrbStrata_GetConstraints", kKey, 31, 1);
    m_property.Load();
    EXPECT_EQ(7, m_property.Get());
    EXPECT_THAT(LogCapture::Take(), ElementsAre(LogLine{5, "StrataSettings::Property<int>::Load: Getting constraints "
                                                           "for 'windows.browsing_protection.internal.test' failed, "
                                                           "error 31"}));

    Constrain(kUser, kKey, 2);
    m_property.Load();
    Fail("OrbStrata_GetConstraints", kKey, ORB_STRATA_NOT_FOUND, 1); // which is an answer: there are none
    m_property.Load();
    EXPECT_EQ(0u, m_property.Constraints());
}

TEST_F(PropertyTest, ARefusedOrFailedSaveIsLoggedAndTriedAgain)
{
    m_property.Set(1);
    Fail("OrbStrata_SetInt32", kKey, ORB_STRATA_ACCESS_DENIED, 1);
    EXPECT_FALSE(m_property.Save());
    Fail("OrbStrata_SetInt32", kKey, 31, 1);
    EXPECT_FALSE(m_property.Save());
    EXPECT_THAT(LogCapture::Take(),
                ElementsAre(LogLine{5, "StrataSettings::Property<int>::Save: "
                                       "'windows.browsing_protection.internal.test' saving failed, access denied"},
                            LogLine{1, "StrataSettings::Property<int>::Save: "
                                       "'windows.browsing_protection.internal.test' saving failed, result 31"}));
    EXPECT_TRUE(m_property.Save());
    EXPECT_EQ(1, Find(kUser, kKey).number);
    EXPECT_EQ(ModificationState::InStep, m_property.State());
}

TEST_F(PropertyTest, SettingAnEqualValueIsAChangeOnlyWhileTheStoreHoldsNone)
{
    EXPECT_EQ(SetResult::Stored, m_property.Set(42));
    EXPECT_TRUE(m_property.Save());
    EXPECT_EQ(SetResult::Unchanged, m_property.Set(42));
    EXPECT_EQ(ModificationState::InStep, m_property.State());
    EXPECT_EQ(SetResult::Stored, m_property.Set(43));
}

TEST_F(PropertyTest, AnEnforcedValueRefusesTheSetterUntilItIsReleased)
{
    std::uint32_t constraints = ORB_STRATA_CONSTRAINT_ENFORCED | 2;
    m_property.UpdateConstraints(&constraints);
    m_property.UpdateConstraints(nullptr);
    EXPECT_EQ(SetResult::Enforced, m_property.Set(1));
    EXPECT_EQ(42, m_property.Get());
    constraints = 2;
    m_property.UpdateConstraints(&constraints);
    EXPECT_EQ(SetResult::Stored, m_property.Set(1));
}

TEST_F(PropertyTest, AValueFromTheStoreReplacesAChangeAndIsNotSaved)
{
    m_property.Set(1);
    const int value = 5;
    m_property.Update(&value);
    m_property.Update(nullptr);
    EXPECT_EQ(5, m_property.Get());
    EXPECT_TRUE(m_property.Save());
    EXPECT_TRUE(TakeWrites().empty());
}

TEST_F(PropertyTest, WithoutAHandleNothingIsReadOrWritten)
{
    m_property.SetHandle(nullptr);
    m_property.Set(1);
    m_property.Load();
    EXPECT_TRUE(m_property.Save());
    EXPECT_EQ(1, m_property.Get());
    EXPECT_EQ(ModificationState::Changed, m_property.State());
    EXPECT_TRUE(LogCapture::Take().empty());
}

TEST_F(PropertyTest, ALateNotificationDoesNotBringBackWhatASaveReplaced)
{
    Put(kUser, kKey, 1);
    m_property.Set(2);
    ASSERT_TRUE(m_property.Save());
    m_property.Refresh(m_handle.Get(), nullptr); // of the 1 that was written before
    EXPECT_EQ(2, m_property.Get());
}

TEST_F(PropertyTest, AnUnsavedChangeIsKeptUnlessItsKeyBecomesEnforced)
{
    Put(kUser, kKey, 7);
    m_property.Set(1);
    Constrain(kUser, kKey, 2);
    m_property.Load();
    EXPECT_EQ(1, m_property.Get());
    EXPECT_EQ(2u, m_property.Constraints());
    Put(kUser, kKey, 8);
    m_property.Refresh(m_handle.Get(), nullptr);
    EXPECT_EQ(1, m_property.Get());
    EXPECT_TRUE(m_property.TakeNews()); // the constraint word

    Constrain(kUser, kKey, ORB_STRATA_CONSTRAINT_ENFORCED);
    m_property.Refresh(m_handle.Get(), nullptr);
    EXPECT_EQ(8, m_property.Get());
    EXPECT_EQ(ModificationState::InStep, m_property.State());

    Constrain(kUser, kKey, 0);
    m_property.Refresh(m_handle.Get(), nullptr);
    m_property.Set(1);
    EXPECT_TRUE(m_property.Save());
    EXPECT_EQ(1, Find(kUser, kKey).number);
}

TEST_F(PropertyTest, AValueOfAnotherTypeIsNoneAndTheNextChangeOverwritesIt)
{
    const char* stored = R"([{"allowed":true,"label":"","url":"b.example"}])";
    Put(kUser, kKey, 7);
    PropertySet<Settings::Site> sites(nullptr, kKey);
    sites.SetHandle(m_handle.Get());
    const std::set<Settings::Site> held{{"a.example", true, ""}};
    sites.Update(&held);
    sites.Load();
    EXPECT_TRUE(sites.Get().empty());
    EXPECT_FALSE(sites.IsMissing());
    EXPECT_EQ(SetResult::Stored, sites.Insert(Settings::Site("b.example", true, "")));
    EXPECT_TRUE(sites.Save());
    EXPECT_EQ(stored, Find(kUser, kKey).text);

    m_property.Load(); // the number is a list now
    EXPECT_EQ(SetResult::Stored, m_property.ChangeStored([](int& counter) { return ++counter != 0; }));
    EXPECT_TRUE(m_property.Save());
    EXPECT_EQ(43, Find(kUser, kKey).number);
    EXPECT_EQ((LogLine{1, "StrataSettings::Property<std::set<Settings::Site>>::Load: "
                          "'windows.browsing_protection.internal.test' reading failed, error 110"}),
              LogCapture::Take(2).front());
}

TEST_F(PropertyTest, MinutesBeyondTheirTypeAreNoValue)
{
    Property<Minutes> minutes(nullptr, kKey, Minutes(3));
    for (const std::int64_t count : {5'000'000'000, -5'000'000'000})
    {
        Put(kUser, kKey, Stored{ORB_STRATA_TYPE_INT64, count, {}, 0});
        LogCapture::Expect(1, "StrataSettings::Property<std::chrono::duration<int,std::ratio<60>>>::Load: "
                              "'windows.browsing_protection.internal.test' reading failed, error 110");
        minutes.Load(m_handle.Get());
        EXPECT_EQ(Minutes(3), minutes.Get());
    }
}

TEST_F(PropertyTest, ASetReadsAsEmptyWhereTheStoreHasNone)
{
    PropertySet<Settings::Site> sites(nullptr, kKey);
    const std::set<Settings::Site> held{{"a.example", true, ""}};
    sites.Update(&held);
    sites.Load(m_handle.Get());
    EXPECT_TRUE(sites.Get().empty());
}

TEST_F(PropertyTest, AnElementIsNotAddedToASetThatCouldNotBeRead)
{
    const char* stored = R"([{"allowed":true,"label":"","url":"a.example"}])";
    Put(kUser, kKey, Stored{ORB_STRATA_TYPE_OBJECT, 0, stored, 0});
    PropertySet<Settings::Site> sites(nullptr, kKey);
    sites.SetHandle(m_handle.Get());
    Fail("OrbStrata_GetObject", kKey, ORB_STRATA_STORE_FAILED, 2);
    sites.Load();
    EXPECT_EQ(SetResult::Unreadable, sites.Insert(Settings::Site("b.example", true, "")));
    EXPECT_TRUE(sites.Save());
    EXPECT_EQ(stored, Find(kUser, kKey).text);

    EXPECT_EQ(SetResult::Stored, sites.Insert(Settings::Site("b.example", true, ""))); // the store is back
    EXPECT_EQ(2u, sites.Get().size());
    EXPECT_TRUE(sites.Save());
    EXPECT_THAT(LogCapture::Take(2), testing::SizeIs(2));
}

TEST_F(PropertyTest, ASetThatReadsAsEmptyIsReadAgainBeforeItIsChanged)
{
    Put(kUser, kKey, Stored{ORB_STRATA_TYPE_OBJECT, 0, R"([{"allowed":true,"label":"","url":"a.example"}])", 0});
    PropertySet<Settings::Site> sites(nullptr, kKey);
    sites.SetHandle(m_handle.Get());
    Fail("OrbStrata_ObjectIsArray", nullptr, ORB_STRATA_STORE_FAILED, 1);
    sites.Load();
    EXPECT_TRUE(sites.Get().empty());
    EXPECT_EQ(SetResult::Stored, sites.Insert(Settings::Site("b.example", true, "")));
    EXPECT_EQ(2u, sites.Get().size());
}

TEST_F(PropertyTest, ATextThatIsReadAndNotGivenIsNoText)
{
    SuiteTableGuard guard(g_orbStrata);
    guard->OrbStrata_GetStringUtf8 = [](OrbStrataHandle, const wchar_t*, const char*,
                                        OrbStrataResult* result) -> char* {
        *result = ORB_STRATA_SUCCESS;
        return nullptr;
    };
    Property<std::string> text(nullptr, kKey, "held");
    LogCapture::Expect(1, "StrataSettings::Property<std::string>::Load: 'windows.browsing_protection.internal.test' "
                          "reading failed, error 112");
    text.Load(m_handle.Get());
    EXPECT_EQ("held", text.Get());
    EXPECT_TRUE(text.ReadFailed());
}

TEST_F(PropertyTest, AnUnreadableSetIsTakenFromTheNotification)
{
    PropertySet<Settings::Site> sites(nullptr, kKey);
    const std::set<Settings::Site> held{{"a.example", true, ""}};
    sites.Update(&held);
    Fail("OrbStrata_GetObject", kKey, ORB_STRATA_STORE_FAILED, 2);
    const std::string failure = "StrataSettings::Property<std::set<Settings::Site>>::Load: "
                                "'windows.browsing_protection.internal.test' reading failed, error 112";
    LogCapture::Expect(1, failure);
    LogCapture::Expect(1, failure);
    sites.Refresh(m_handle.Get(), "no array");
    EXPECT_EQ(1u, sites.Get().count(Settings::Site("a.example", true, "")));
    sites.Refresh(m_handle.Get(), R"([{"url":"b.example","label":"","allowed":false}])");
    EXPECT_EQ((std::set<Settings::Site>{{"b.example", false, ""}}), sites.Get());
    EXPECT_TRUE(sites.IsMissing()); // the text does not tell the constraints
}
