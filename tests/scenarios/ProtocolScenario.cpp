#include "tests/scenarios/HostProcess.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

namespace
{

TEST(ProtocolScenario, HostGreetsWithWhatItIs)
{
    const HostProcess host;
    EXPECT_EQ(host.Hello().value("protocol"), 1);
    EXPECT_TRUE(QStringList({"posix", "win32"}).contains(host.Hello().value("platform").toString()));
    EXPECT_FALSE(host.Hello().value("version").toString().isEmpty());
}

TEST(ProtocolScenario, LineThatIsNoRequestIsRefusedAndTheHostGoesOn)
{
    HostProcess host;
    for (const char* line : {"nonsense", "[1]", "7", "{\"id\":1,", "{\"op\":\"info\"}}", "\"\xff\"", "null"})
    {
        host.Send(QByteArray(line) + '\n');
        const QVariantMap answer = host.Receive();
        EXPECT_EQ(answer.value("ok"), false) << line;
        EXPECT_TRUE(answer.contains("id") && !answer.value("id").isValid()) << line;
        EXPECT_FALSE(answer.value("error").toString().isEmpty()) << line;
    }
    host.Send(QByteArray("\0{}\n", 4));
    EXPECT_EQ(host.Receive().value("ok"), false);
    host.Do("info");
}

TEST(ProtocolScenario, AnswersCarryTheIdOfTheRequestAndComeInOrder)
{
    HostProcess host;
    host.Send("{\"id\":\"a\",\"op\":\"advance\",\"ms\":30}\n\n   \r\n{\"id\":[1],\"op\":\"get\",\"name\":\"@A:b\"}\r\n"
              "{\"op\":\"info\"}\n{\"id\":9223372036854775807,\"op\":\"nope\"}\n");
    EXPECT_EQ(host.Receive().value("id"), "a");
    EXPECT_EQ(host.Receive().value("id"), QVariantList{1});
    EXPECT_FALSE(host.Receive().value("id").isValid());
    const QVariantMap unknown = host.Receive();
    EXPECT_EQ(unknown.value("id").toLongLong(), 9223372036854775807LL);
    EXPECT_TRUE(unknown.value("error").toString().contains("nope"));
}

TEST(ProtocolScenario, ArgumentsThatAreMissingOrOfAnotherTypeAreNamed)
{
    HostProcess host;
    const auto names = [&host](const char* argument, const char* op, const QVariantMap& arguments) {
        const QString error = host.Fails(op, arguments);
        EXPECT_TRUE(error.contains(QStringLiteral("\"%1\"").arg(argument))) << op << ": " << qUtf8Printable(error);
    };
    names("name", "get", {});
    names("name", "get", {{"name", 5}});
    names("name", "get", {{"name", "no id"}});
    names("value", "set", {{"name", "@A:b"}});
    names("ms", "advance", {{"ms", -1}});
    names("ms", "advance", {{"ms", 0.5}});
    names("ms", "advance", {{"ms", 4294967296LL}});
    names("timeoutMs", "settle", {{"timeoutMs", "5"}});
    names("missing", "load", {{"missing", "flyer"}});
    names("missing", "load", {{"missing", QVariantList{"printer"}}});
    names("on", "watch", {{"prefix", ""}, {"on", 1}});
    names("topic", "watch", {{"topic", "weather"}});
    names("key", "store.get", {{"scope", "user"}});
    names("type", "store.set", {{"scope", "user"}, {"key", "a"}, {"type", "float"}, {"value", 1}});
    names("constraints", "store.constrain", {{"scope", "user"}, {"key", "a"}, {"constraints", -1}});
    names("code", "store.fault", {{"function", "OrbStrata_SetBool"}});
    names("code", "flyer.fault", {{"function", "NlFlyer_ShowFlyer"}});
    names("answer", "elevation", {{"answer", "maybe"}});
    names("root", "registry.set", {{"root", "local"}, {"key", "k"}, {"value", "v"}, {"dword", 1}});
    names("dword", "registry.set", {{"root", "user"}, {"key", "k"}, {"value", "v"}});
    names("dword", "registry.set", {{"root", "user"}, {"key", "k"}, {"value", "v"}, {"dword", 4294967296LL}});
    host.Send("{\"id\":1}\n{\"id\":2,\"op\":5}\n");
    EXPECT_TRUE(host.Receive().value("error").toString().contains("\"op\""));
    EXPECT_TRUE(host.Receive().value("error").toString().contains("\"op\""));
    names("values", "strings", {{"language", "en"}, {"values", QVariantMap{{"@A:b", 5}}}});
}

TEST(ProtocolScenario, LineLongerThanTheLimitIsSkippedToItsEnd)
{
    constexpr int kLimit = 16 * 1024 * 1024;
    const QByteArray head("{\"id\":5,\"op\":\"set\",\"name\":\"@A:b\",\"value\":\"");
    const QByteArray tail("\"}");
    HostProcess host;
    host.Send(head + QByteArray(kLimit - head.size() - tail.size(), 'x') + tail + "\n");
    EXPECT_EQ(host.Receive().value("ok"), true);
    host.Send(head + QByteArray(kLimit - head.size() - tail.size() + 1, 'y') + tail + "\n");
    EXPECT_EQ(host.Receive().value("ok"), false);
    const QString value = host.Get("@A:b").toString();
    EXPECT_EQ(value.size(), kLimit - head.size() - tail.size());
    EXPECT_TRUE(value.endsWith('x'));
}

TEST(ProtocolScenario, QuitIsAnsweredAndNothingAfterItIsDone)
{
    HostProcess host;
    host.Send("{\"id\":1,\"op\":\"quit\"}\n{\"id\":2,\"op\":\"info\"}\n");
    EXPECT_EQ(host.Receive().value("id"), 1);
    EXPECT_EQ(host.Finish(), 0);
}

TEST(ProtocolScenario, EndOfInputEndsTheHostAfterTheLastRequest)
{
    HostProcess host;
    host.Load();
    host.Send("{\"id\":1,\"op\":\"get\",\"name\":\"@A:b\"}"); // without a line feed
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_EQ(host.Receive().value("id"), 1);
}

TEST(ProtocolScenario, WatchReportsMatchingChangesBeforeTheAnswerThatCausedThem)
{
    HostProcess host;
    host.Do("watch", {{"prefix", "@A"}});
    host.Set("@A:b", QVariantMap{{"n", 9223372036854775807LL}});
    host.Set("@B:b", 1);
    host.Trigger("@A:t");
    const auto events = host.TakeEvents();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0], (QVariantMap{{"event", "variable"},
                                      {"seq", 1},
                                      {"name", "@A:b"},
                                      {"kind", "set"},
                                      {"by", "page"},
                                      {"value", QVariantMap{{"n", 9223372036854775807LL}}}}));
    EXPECT_EQ(events[1].value("seq"), 3);
    EXPECT_EQ(events[1].value("kind"), "trigger");
    host.Do("watch", {{"prefix", "@A"}, {"on", false}});
    host.Set("@A:b", 2);
    EXPECT_TRUE(host.TakeEvents().empty());
}

TEST(ProtocolScenario, AdvanceLetsTimePass)
{
    HostProcess host;
    QElapsedTimer timer;
    timer.start();
    host.Do("advance", {{"ms", 50}});
    EXPECT_GE(timer.elapsed(), 50);
}

} // namespace
