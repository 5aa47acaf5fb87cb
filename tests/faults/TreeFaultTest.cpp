// Every setting of a tree is changed and saved while one function of the store fails.

#include "handlers/SettingsControllers.h"
#include "logging/Log.h"
#include "tests/faults/FaultyStore.h"
#include "tests/settings/OtherValue.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

#include <tuple>

namespace
{

constexpr StoreFunction kWritingFunctions[] = {
    StoreFunction::kOrbStrata_SetBool,        StoreFunction::kOrbStrata_SetInt32,
    StoreFunction::kOrbStrata_SetInt64,       StoreFunction::kOrbStrata_SetString,
    StoreFunction::kOrbStrata_SetStringUtf8,  StoreFunction::kOrbStrata_SetObject,
    StoreFunction::kOrbStrata_CreateObject,   StoreFunction::kOrbStrata_CreateArray,
    StoreFunction::kOrbStrata_ArrayPushBack,  StoreFunction::kOrbStrata_ObjectSetBool,
    StoreFunction::kOrbStrata_ObjectSetInt64, StoreFunction::kOrbStrata_ObjectSetStringUtf8,
};

enum class Calls
{
    TheFirst,
    All
};

class TreeFaultTest : public StoreTest, public testing::WithParamInterface<std::tuple<StoreFunction, Calls>>
{
protected:
    TreeFaultTest() { LogCapture::SetThreshold(NlOrbLogging::Error); }
    ~TreeFaultTest() override { LogCapture::Take(); }

    void Fail()
    {
        const auto [function, calls] = GetParam();
        m_store.Fail(function, {31, false, 1, calls == Calls::All ? 0 : 1});
    }

    FaultyStore m_store{m_strata};
};

std::string NameOfWrite(const testing::TestParamInfo<TreeFaultTest::ParamType>& info)
{
    static constexpr const char* kCalls[] = {"TheFirst", "All"};
    const std::string name(FaultyStore::TraitOf(std::get<0>(info.param)).name);
    return name.substr(name.find('_') + 1) + kCalls[static_cast<int>(std::get<1>(info.param))];
}

} // namespace

TEST_P(TreeFaultTest, EachKeyHoldsTheOldOrTheNewValueAndTheNextSaveWritesTheRest)
{
    ElevatedSettings settings(nullptr, kUser, kSettingsClientId, true);
    settings.WritableSettings().MarkChanged();
    ASSERT_TRUE(settings.Save());
    Entries before = Contents(kUser);
    settings.WritableSettings().ForEachProperty(
        [](StrataSettings::PropertyBase& property) { EXPECT_TRUE(ChangeToAnotherValue(property)); });

    Fail();
    EXPECT_FALSE(settings.Save());
    EXPECT_TRUE(m_store.HasFailed(std::get<0>(GetParam())));
    const Entries between = Contents(kUser);
    m_store.Work();
    EXPECT_TRUE(settings.Save());

    Entries after = Contents(kUser);
    EXPECT_EQ(before.size(), after.size());
    int old = 0;
    for (const auto& [key, value] : between)
    {
        EXPECT_FALSE(before[key] == after[key]) << QString::fromStdWString(key).toStdString();
        EXPECT_TRUE(value == before[key] || value == after[key]) << QString::fromStdWString(key).toStdString();
        old += value == before[key] ? 1 : 0;
    }
    EXPECT_LT(0, old);
}

INSTANTIATE_TEST_SUITE_P(EachFunction, TreeFaultTest,
                         testing::Combine(testing::ValuesIn(kWritingFunctions),
                                          testing::Values(Calls::TheFirst, Calls::All)),
                         NameOfWrite);
