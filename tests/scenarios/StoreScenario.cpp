#include "tests/scenarios/HostProcess.h"

#include <gtest/gtest.h>

#include <QFile>

#include <limits>

namespace
{

QVariantMap Entry(const char* type, const QVariant& value, int constraints = 0)
{
    return {{"found", true}, {"type", type}, {"value", value}, {"constraints", constraints}};
}

TEST(StoreScenario, EveryTypeComesBackAsItWasSet)
{
    const QString text = QStringLiteral("\u00e4\u20ac\"\\\n") + QString::fromUcs4(U"\U0001F600");
    const QVariantMap record{{"b", true}, {"n", std::numeric_limits<qlonglong>::min()}, {"t", text}};
    struct Case
    {
        const char* type;
        QVariant value;
    };
    const Case cases[] = {{"bool", true},
                          {"bool", false},
                          {"int32", std::numeric_limits<int>::min()},
                          {"int32", std::numeric_limits<int>::max()},
                          {"int64", std::numeric_limits<qlonglong>::min()},
                          {"int64", std::numeric_limits<qlonglong>::max()},
                          {"string", text},
                          {"string", ""},
                          {"utf8", text},
                          {"object", record},
                          {"object", QVariantList{record, QVariantMap{{"n", 5}}}},
                          {"object", QVariantList{}},
                          {"object", QVariantMap{}}};
    HostProcess host;
    for (const char* scope : {"system", "user", "S-1-5-21-1-2-3-1001"})
    {
        for (const Case& one : cases)
        {
            host.StoreSet(scope, "a.key", one.type, one.value);
            EXPECT_TRUE(host.StoreGet(scope, "a.key") == Entry(one.type, one.value)) << one.type;
        }
    }
}

TEST(StoreScenario, LargeValuesComeBackWhole)
{
    const QString text(5 << 20, u'\u20ac');
    QVariantList records;
    for (int i = 0; i < 10000; ++i)
        records.append(QVariantMap{{"n", i}, {"t", QString::number(i)}});
    HostProcess host;
    for (const QVariant& value : {QVariant(text), QVariant(records)})
    {
        host.Set("@A:b", value);
        EXPECT_TRUE(host.Get("@A:b") == value);
        const char* const type = value.userType() == QMetaType::QString ? "string" : "object";
        host.StoreSet("user", "a.key", type, value);
        EXPECT_TRUE(host.StoreGet("user", "a.key") == Entry(type, value));
    }
}

TEST(StoreScenario, ValueThatDoesNotFitItsTypeIsRefusedAndChangesNothing)
{
    HostProcess host;
    host.StoreSet("user", "a.key", "int32", 7);
    const QVariantMap unfit[] = {
        {{"type", "bool"}, {"value", 1}},
        {{"type", "bool"}, {"value", "true"}},
        {{"type", "int32"}, {"value", 2147483648LL}},
        {{"type", "int32"}, {"value", 1.0}},
        {{"type", "int32"}, {"value", true}},
        {{"type", "int64"}, {"value", std::numeric_limits<qulonglong>::max()}},
        {{"type", "int64"}, {"value", QVariant()}},
        {{"type", "string"}, {"value", 5}},
        {{"type", "utf8"}, {"value", QString("a") + QChar(0) + "b"}},
        {{"type", "object"}, {"value", "{}"}},
        {{"type", "object"}, {"value", QVariantList{1}}},
        {{"type", "object"}, {"value", QVariantMap{{"nested", QVariantMap{}}}}},
        {{"type", "object"}, {"value", QVariantMap{{"fraction", 0.5}}}},
    };
    for (QVariantMap arguments : unfit)
    {
        arguments.insert({{"scope", "user"}, {"key", "a.key"}});
        EXPECT_TRUE(host.Fails("store.set", arguments).contains(arguments.value("type").toString()));
    }
    EXPECT_EQ(host.StoreGet("user", "a.key"), Entry("int32", 7));
    EXPECT_EQ(host.Do("store.writes").toList().size(), 1);
}

TEST(StoreScenario, WhatIsNotThereIsNotFoundAndScopesAreChecked)
{
    HostProcess host;
    const QVariantMap nothing{{"found", false}, {"type", QVariant()}, {"value", QVariant()}, {"constraints", 0}};
    EXPECT_EQ(host.StoreGet("user", "no.such"), nothing);
    host.Fails("store.remove", {{"scope", "user"}, {"key", "no.such"}});
    host.Fails("store.get", {{"scope", "everybody"}, {"key", "a"}});
    host.Fails("store.get", {{"scope", "S-1-"}, {"key", "a"}});
    host.Fails("store.get", {{"scope", "user"}, {"key", QString("a") + QChar(0)}});
    host.Fails("store.fault", {{"function", "OrbStrata_Nothing"}, {"code", 5}});
}

TEST(StoreScenario, ListRemoveAndConstrainReachTheKeysThatTheyName)
{
    HostProcess host;
    host.StoreSet("user", "a.one", "bool", true);
    host.StoreSet("user", "a.two", "int64", 2);
    host.StoreSet("user", "b.one", "string", "x");
    host.StoreSet("system", "a.three", "bool", true);
    host.Do("store.constrain", {{"scope", "user"}, {"key", "a.two"}, {"constraints", 1}});
    host.StoreSet("user", "a.two", "int64", 3); // the product writes enforced keys, and they stay enforced
    EXPECT_EQ(host.Do("store.list", {{"scope", "user"}, {"prefix", "a."}}),
              (QVariantMap{{"a.one", Entry("bool", true)}, {"a.two", Entry("int64", 3, 1)}}));
    host.Do("store.remove", {{"scope", "user"}, {"key", "a.one"}});
    EXPECT_EQ(host.Do("store.list", {{"scope", "user"}}).toMap().keys(), (QStringList{"a.two", "b.one"}));

    const QString userSid = host.Do("info").toMap().value("userSid").toString();
    EXPECT_EQ(host.StoreGet(userSid, "b.one"), Entry("string", "x"));
    QStringList writes;
    for (const QVariant& row : host.Do("store.writes", {{"since", 2}}).toList())
    {
        const QVariantMap write = row.toMap();
        writes.append(QStringLiteral("%1 %2 %3 %4")
                          .arg(write.value("seq").toString(), write.value("scope").toString(),
                               write.value("key").toString(), write.value("by").toString()));
    }
    EXPECT_EQ(writes, (QStringList{"3 user b.one product", "4 system a.three product", "5 user a.two product",
                                   "6 user a.one product"}));
}

TEST(StoreScenario, AnotherHostSeesWhatWasLeftBehind)
{
    QTemporaryDir folder;
    HostProcess({folder.path(), {}}).StoreSet("system", "kept.key", "utf8", "kept");
    HostProcess second({folder.path(), {}});
    EXPECT_EQ(second.StoreGet("system", "kept.key"), Entry("utf8", "kept"));
    EXPECT_TRUE(second.Do("store.writes").toList().isEmpty());
}

TEST(StoreScenario, DamagedStoreIsAnErrorAndStaysAsItIs)
{
    QTemporaryDir folder;
    const QByteArray garbage(20000, 'g');
    QFile file(folder.filePath("store.db"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(garbage);
    file.close();

    HostProcess host({folder.path(), {}});
    EXPECT_TRUE(host.Fails("store.get", {{"scope", "user"}, {"key", "a"}}).contains("store.db"));
    host.Fails("store.set", {{"scope", "user"}, {"key", "a"}, {"type", "bool"}, {"value", true}});
    host.Do("load"); // without its settings, but without a crash
    host.Do("settle");
    EXPECT_EQ(host.Finish(), 0);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage);
}

TEST(StoreScenario, DataFolderThatCannotBeMadeIsAnErrorForEveryWrite)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    HostProcess host({folder.filePath("file/below"), {}});
    EXPECT_FALSE(
        host.Fails("store.set", {{"scope", "user"}, {"key", "a"}, {"type", "bool"}, {"value", true}}).isEmpty());
    if (host.Hello().value("platform") != "win32") // where the registry is the system's
        host.Fails("registry.set", {{"root", "user"}, {"key", "K"}, {"value", "v"}, {"dword", 1}});
    host.Set("@A:b", 1);
    host.Do("load");
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_TRUE(host.Errors().contains("data folder"));
}

} // namespace
