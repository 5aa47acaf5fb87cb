#include "devkit/core/Session.h"
#include "devkit/core/Client.h"
#include "devkit/core/Host.h"
#include "devkit/core/Json.h"
#include "devkit/core/Words.h"
#include "tarn/VariableIdentifier.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include <functional>

using testing::ElementsAre;

namespace
{

/// A client that keeps what it receives, and may act on it at once.
class TestClient : public Client
{
public:
    explicit TestClient(Host& host, Session::Rights rights = Session::Rights::All)
        : session(Session::Open(host, *this, rights))
    {}
    ~TestClient() override { session->Close(); }

    void Receive(const QVariantMap& message) override
    {
        received.push_back(message.contains("event") ? "event " + message["event"].toString().toStdString()
                                                     : "answer " + message["id"].toString().toStdString());
        last = message;
        if (onReceive)
            onReceive(message);
    }

    QVariantMap Do(QVariantMap request)
    {
        request["id"] = ++lastId;
        session->Submit(request);
        return last;
    }

    using Client::StringOf;

    const std::shared_ptr<Session> session;
    std::function<void(const QVariantMap& message)> onReceive;
    std::vector<std::string> received;
    QVariantMap last;
    int lastId = 0;
};

/// Asks for elevated rights whenever its variable is written, as a settings page does.
class Asker : public QObject
{
    Q_OBJECT
public Q_SLOTS:
    void OnAsked()
    {
        OrbStrataResult result = ORB_STRATA_SUCCESS;
        OrbStrata_CloseHandle(OrbStrata_OpenElevatedHandle(L"safe", nullptr, L"asker", &result));
        results.push_back(result);
    }

public:
    std::vector<OrbStrataResult> results;
};

class SessionTest : public testing::Test
{
public:
    SessionTest() { host.hub.Subscribe("@A:ask", this, &asker, "1OnAsked()"); }

    DataFolder folder;
    Host host{folder, {"none", ".", false, [](const QString&) {}}};
    Asker asker;
    TestClient one{host};
    TestClient other{host, Session::Rights::Page};
};

TEST_F(SessionTest, AnswerThatIsTooLongBecomesARefusal)
{
    QVariantList pieces;
    for (qint64 left = Json::kLongestString; left >= 0; left -= 1024 * 1024)
        pieces.append(pieces.isEmpty() ? QVariant(QString(1024 * 1024, 'x')) : pieces.first());
    const QVariantMap refusal = Json::Parse(TestClient::StringOf({{"id", 7}, {"result", pieces}})).value.toMap();
    EXPECT_EQ(refusal["id"], 7);
    EXPECT_EQ(refusal["ok"], false);
    EXPECT_EQ(refusal["error"], "The answer is too long; ask for less.");
}

TEST_F(SessionTest, EachClientHearsOfWhatItWatchesItself)
{
    one.Do({{"op", "watch"}, {"prefix", "@A"}});
    other.Do({{"op", "watch"}, {"topic", "store"}, {"prefix", "k"}});
    one.received.clear();
    other.received.clear();
    other.Do({{"op", "set"}, {"name", "@A:b"}, {"value", 1}});
    EXPECT_THAT(one.received, ElementsAre("event variable"));
    other.received.clear();
    for (const char* const key : {"key", "other"})
        one.Do({{"op", "store.set"}, {"scope", "user"}, {"key", key}, {"type", "int32"}, {"value", 7}});
    one.Do({{"op", "settle"}});
    EXPECT_THAT(other.received, ElementsAre("event store"));
    EXPECT_EQ(other.last, (QVariantMap{{"event", "store"},
                                       {"scope", "user"},
                                       {"key", "key"},
                                       {"kind", "changed"},
                                       {"found", true},
                                       {"type", "int32"},
                                       {"value", 7},
                                       {"constraints", 0}}));
    other.Do({{"op", "watch"}, {"topic", "store"}, {"prefix", "k"}, {"on", false}});
    other.received.clear();
    one.Do({{"op", "store.remove"}, {"scope", "user"}, {"key", "key"}});
    one.Do({{"op", "settle"}});
    EXPECT_TRUE(other.received.empty());
    EXPECT_EQ(other.Do({{"op", "quit"}})["ok"], false);
    EXPECT_EQ(other.Do({{"op", "record"}, {"file", folder.Path() + "/file"}})["ok"], false);
    EXPECT_FALSE(host.IsQuitting());
}

TEST_F(SessionTest, ClientThatWaitsKeepsNobodyElseWaiting)
{
    one.Do({{"op", "advance"}, {"ms", 600000}});
    one.Do({{"op", "get"}, {"name", "@A:b"}});
    EXPECT_EQ(one.session->Waiting(), 2U);
    EXPECT_EQ(other.Do({{"op", "info"}})["ok"], true);
    one.session->EndInput();
    EXPECT_THAT(one.received, ElementsAre("answer 1", "answer 2"));
    EXPECT_TRUE(host.IsQuitting());
}

TEST_F(SessionTest, PromptIsAnsweredWhileTheCommandThatCausedItWaits)
{
    const QVariantMap ask{{"op", "set"}, {"name", "@A:ask"}, {"value", 1}};
    one.Do({{"op", "elevation"}, {"answer", "ask"}});
    one.Do(ask); // nobody watches
    one.Do({{"op", "watch"}, {"topic", "elevation"}});
    one.received.clear();
    bool accept = true;
    one.onReceive = [this, &accept](const QVariantMap& message) {
        if (message["event"] != "elevation")
            return;
        EXPECT_EQ(message["client"], "asker");
        other.Do({{"op", "set"}, {"name", "@A:b"}, {"value", 1}}); // waits for its turn
        EXPECT_FALSE(host.hub.Value("@A:b").isValid());
        EXPECT_EQ(other.session->Waiting(), accept ? 1U : 2U);
        one.Do({{"op", "elevation.answer"}, {"prompt", message["prompt"]}, {"accept", accept}});
    };
    one.Do(ask);
    EXPECT_THAT(one.received, ElementsAre("event elevation", "answer 4", "answer 5"));
    EXPECT_EQ(one.last["ok"], true);
    accept = false;
    one.Do(ask);
    EXPECT_THAT(asker.results, ElementsAre(ORB_STRATA_ACCESS_DENIED, ORB_STRATA_SUCCESS, ORB_STRATA_ACCESS_DENIED));
    one.onReceive = [this](const QVariantMap& message) {
        if (message["event"] == "elevation")
            one.Do({{"op", "watch"}, {"topic", "elevation"}, {"on", false}}); // stands behind what waits
        if (message["event"] == "elevation")
            one.session->Close(); // and the only one who would answer has gone
    };
    one.Do(ask);
    EXPECT_EQ(asker.results.back(), ORB_STRATA_ACCESS_DENIED);
    QCoreApplication::processEvents();
    EXPECT_EQ(host.hub.Value("@A:b"), 1);
}

TEST_F(SessionTest, EveryCommandIsInTheSchemaAndCanBeWrittenAsWords)
{
    const QVariantList schema = one.Do({{"op", "schema"}})["result"].toList();
    EXPECT_GT(schema.size(), 35);
    for (const QVariant& row : schema)
    {
        const QString op = row.toMap()["op"].toString();
        EXPECT_FALSE(row.toMap()["help"].toString().isEmpty()) << qUtf8Printable(op);
        const Words::Line line = Words::Line::FromString(QString(op).replace('.', ' '));
        const Words::Named named = Words::Find(one.session->Commands(), line.words);
        ASSERT_TRUE(named.command) << qUtf8Printable(op);
        EXPECT_EQ(named.command->op, op);
    }
    const auto request = [this](const char* text) {
        const Words::Line line = Words::Line::FromString(text);
        const Words::Named named = Words::Find(one.session->Commands(), line.words);
        return Words::ToRequest(*named.command, line, named.words).value;
    };
    EXPECT_EQ(request("  set @A:b  {\"a\": [1,  2]} "),
              (QVariantMap{{"op", "set"}, {"name", "@A:b"}, {"value", QVariantMap{{"a", QVariantList{1, 2}}}}}));
    EXPECT_EQ(request("store constrain --scope=system a.key enforced"),
              (QVariantMap{{"op", "store.constrain"}, {"scope", "system"}, {"key", "a.key"}, {"constraints", 1}}));
    EXPECT_EQ(request("load strata flyer"),
              (QVariantMap{{"op", "load"}, {"missing", QVariantList{"strata", "flyer"}}}));
    EXPECT_TRUE(request("settle 1 2").isEmpty());
    EXPECT_TRUE(request("get --nothing 5").isEmpty());
}

} // namespace

#include "SessionTest.moc"
