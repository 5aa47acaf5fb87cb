#include "settings/binding/ScopedSettings.h"
#include "settings/model/VdnSettings.h"
#include "tests/settings/OtherValue.h"
#include "tests/support/LogCapture.h"
#include "tests/support/StoreTest.h"

#include <set>

using StrataSettings::ModificationState;
using StrataSettings::PropertyBase;
using UserScope = StrataSettings::ScopedSettings<VdnSettings>;

namespace
{

std::vector<PropertyBase*> Properties(const VdnSettings& tree)
{
    std::vector<PropertyBase*> properties;
    tree.ForEachProperty([&](PropertyBase& property) { properties.push_back(&property); });
    return properties;
}

class TreeTest : public StoreTest
{
protected:
    /// Every key may be written, as on a settings page.
    static constexpr bool kElevated = true;

    UserScope m_scope{kUser, L"safe", L"tree_test", kElevated};
    VdnSettings& m_tree = m_scope.Settings();

    /// As a page does it: what the constraint step marked is written before anything else.
    void LoadAndSettle()
    {
        ASSERT_TRUE(m_scope.LoadOnce(nullptr));
        ASSERT_TRUE(m_scope.Save());
        TakeWrites();
    }
};

} // namespace

TEST_F(TreeTest, EveryKeyIsUnique)
{
    std::set<std::wstring> keys;
    for (const PropertyBase* property : Properties(m_tree))
        EXPECT_TRUE(keys.insert(property->GetKey().String()).second)
            << QString::fromStdWString(property->GetKey().String()).toStdString();
}

TEST_F(TreeTest, EveryPropertyComesBackFromTheStoreAsItWasSaved)
{
    for (PropertyBase* property : Properties(m_tree))
        ChangeToAnotherValue(*property);
    ASSERT_TRUE(m_scope.Save());

    UserScope other(kUser, L"safe", L"tree_test", false);
    ASSERT_TRUE(other.Load());
    const std::vector<PropertyBase*> saved = Properties(m_tree);
    const std::vector<PropertyBase*> loaded = Properties(other.Settings());
    const VdnSettings defaults;
    const std::vector<PropertyBase*> untouched = Properties(defaults);
    for (std::size_t i = 0; i < saved.size(); ++i)
    {
        const std::string key = QString::fromStdWString(saved[i]->GetKey().String()).toStdString();
        EXPECT_TRUE(HoldSameValue(*saved[i], *loaded[i])) << key;
        EXPECT_FALSE(HoldSameValue(*untouched[i], *loaded[i])) << key;
        EXPECT_EQ(ModificationState::InStep, loaded[i]->State()) << key;
    }
}

TEST_F(TreeTest, OneChangedPropertyWritesOneKey)
{
    LoadAndSettle();
    for (PropertyBase* property : Properties(m_tree))
    {
        ChangeToAnotherValue(*property);
        ASSERT_TRUE(m_scope.Save());
        const std::vector<WrittenKey> writes = TakeWrites();
        ASSERT_EQ(1u, writes.size());
        EXPECT_EQ(property->GetKey().String(), writes[0].key);
        EXPECT_EQ(kUser, writes[0].sid);
    }
    EXPECT_TRUE(m_scope.Save());
    EXPECT_TRUE(TakeWrites().empty());
}

TEST_F(TreeTest, AnEnforcedPropertyIsNeverWritten)
{
    m_tree.MarkChanged();
    ASSERT_TRUE(m_scope.Save());
    for (const PropertyBase* property : Properties(m_tree))
        Constrain(kUser, property->GetKey().c_str(), ORB_STRATA_CONSTRAINT_ENFORCED);
    const Entries before = Contents(kUser);
    ASSERT_TRUE(m_scope.Load());
    TakeWrites();

    for (PropertyBase* property : Properties(m_tree))
    {
        EXPECT_TRUE(property->IsEnforced());
        EXPECT_FALSE(ChangeToAnotherValue(*property));
        property->MarkChanged();
    }
    EXPECT_TRUE(m_scope.Save());
    EXPECT_TRUE(TakeWrites().empty());
    EXPECT_EQ(before, Contents(kUser));
}

TEST_F(TreeTest, WhatComesFromTheStoreIsNotWrittenBack)
{
    LoadAndSettle();
    VdnSettings product;
    for (PropertyBase* property : Properties(product))
        ChangeToAnotherValue(*property);
    {
        UserScope other(kUser, L"safe", L"product", kElevated);
        other.Settings().CopyFrom(product);
        ASSERT_TRUE(other.Save());
    }
    Settle();
    TakeWrites();

    const std::vector<PropertyBase*> expected = Properties(product);
    const std::vector<PropertyBase*> followed = Properties(m_tree);
    for (std::size_t i = 0; i < followed.size(); ++i)
        EXPECT_TRUE(HoldSameValue(*expected[i], *followed[i]))
            << QString::fromStdWString(followed[i]->GetKey().String()).toStdString();
    EXPECT_TRUE(m_scope.Save());
    EXPECT_TRUE(TakeWrites().empty());
}

TEST_F(TreeTest, RemovalInTheStoreBringsTheDefaultBack)
{
    const VdnSettings defaults;
    LoadAndSettle();
    for (PropertyBase* property : Properties(m_tree))
        ChangeToAnotherValue(*property);
    ASSERT_TRUE(m_scope.Save());
    for (const PropertyBase* property : Properties(m_tree))
        Erase(kUser, property->GetKey().c_str());
    Settle();

    const std::vector<PropertyBase*> expected = Properties(defaults);
    const std::vector<PropertyBase*> followed = Properties(m_tree);
    for (std::size_t i = 0; i < followed.size(); ++i)
    {
        EXPECT_TRUE(HoldSameValue(*expected[i], *followed[i]));
        EXPECT_NE(ModificationState::Changed, followed[i]->State());
    }
}

TEST_F(TreeTest, ACopyHasItsOwnValues)
{
    for (PropertyBase* property : Properties(m_tree))
        ChangeToAnotherValue(*property);
    const std::uint32_t constraints = 2;
    m_tree.time.enabled.UpdateConstraints(&constraints);
    VdnSettings copy(m_tree);
    const std::vector<PropertyBase*> original = Properties(m_tree);
    const std::vector<PropertyBase*> copied = Properties(copy);
    ASSERT_EQ(original.size(), copied.size());
    for (std::size_t i = 0; i < original.size(); ++i)
    {
        EXPECT_TRUE(HoldSameValue(*original[i], *copied[i]));
        EXPECT_EQ(ModificationState::Changed, copied[i]->State());
        EXPECT_EQ(original[i]->Constraints(), copied[i]->Constraints());
    }
    copy.time.enabled.Set(!copy.time.enabled.Get());
    EXPECT_NE(copy.time.enabled.Get(), m_tree.time.enabled.Get());
}

TEST_F(TreeTest, GroupsAreFoundByTheirType)
{
    EXPECT_EQ(&m_tree.time, m_tree.FindChild(typeid(Settings::Time)));
    EXPECT_EQ(&m_tree.sites, m_tree.FindChild(typeid(Settings::Sites)));
    EXPECT_EQ(nullptr, m_tree.FindChild(typeid(Settings::Curfews)));
}

TEST_F(TreeTest, TheElevatedScopeConstrainsTheStatistics)
{
    ASSERT_TRUE(m_scope.Load());
    m_tree.internal.statistics.ForEachProperty(
        [](const PropertyBase& property) { EXPECT_EQ(ModificationState::Changed, property.State()); });
    EXPECT_EQ(ModificationState::Default, m_tree.internal.mainGuiOpen.State());
    ASSERT_TRUE(m_scope.Save());
    m_tree.internal.statistics.ForEachProperty(
        [this](const PropertyBase& property) { EXPECT_EQ(2u, Find(kUser, property.GetKey().c_str()).constraints); });
    EXPECT_EQ(4u, Contents(kUser).size());
}
