#include "devkit/core/PlugInManager.h"
#include "tarn/VariableIdentifier.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QObject>

#include <functional>
#include <string>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class Receiver : public QObject
{
    Q_OBJECT
public:
    Receiver(std::vector<std::string>& calls, const char* name) : m_calls(calls), m_name(name) {}

    std::function<void(const QString& id)> onNotify;

public Q_SLOTS:
    void OnNotify(VariableIdentifier id)
    {
        m_calls.push_back(m_name + " begins " + id.ToString().toStdString());
        if (onNotify)
            onNotify(id.ToString());
        m_calls.push_back(m_name + " ends " + id.ToString().toStdString());
    }
    void OnSave() { m_calls.push_back(m_name + " saves"); }
    void OnNumber(int) {}

private:
    std::vector<std::string>& m_calls;
    const std::string m_name;
};

constexpr const char* kNotify = "1OnNotify(VariableIdentifier)";

class VariableHubTest : public testing::Test
{
public:
    VariableHub::Warn warn = [this](const QString& sentence) { warnings.push_back(sentence.toStdString()); };
    VariableHub hub{warn};
    PlugInManager manager{hub, warn};
    IDataPeer* const peer = manager.GetDataPeer();
    std::vector<std::string> warnings;
    std::vector<std::string> calls;
    Receiver first{calls, "first"};
    Receiver second{calls, "second"};
};

TEST_F(VariableHubTest, SubscribersHearOfAWriteInTheOrderOfTheirSubscription)
{
    peer->Subscribe("@P:b", &second, kNotify);
    peer->Subscribe("@P:a", &second, SLOT(OnSave()));
    peer->Subscribe("@P:a", &first, kNotify);
    EXPECT_TRUE(peer->SetValue("@P:a", 5, 0));
    EXPECT_THAT(calls, ElementsAre("second saves", "first begins @P:a", "first ends @P:a"));
    EXPECT_EQ(peer->GetValue("@P:a"), 5);
}

TEST_F(VariableHubTest, NotificationsCausedByANotificationFollowItAndNeverNest)
{
    peer->Subscribe("@P:a", &first, kNotify);
    peer->Subscribe("@P:a", &second, kNotify);
    peer->Subscribe("@P:b", &first, kNotify);
    second.onNotify = [this](const QString& id) {
        if (id == QLatin1String("@P:a"))
        {
            peer->SetValue("@P:b", 1, 0);
            EXPECT_EQ(peer->GetValue("@P:b"), 1);
            hub.Set("@P:c", 1, Actor::Page); // of its own accord, while the plug-in happens to be told
        }
    };
    first.onNotify = [this](const QString& id) {
        if (id == QLatin1String("@P:a"))
            peer->Trigger("@P:b", 0);
    };
    peer->SetValue("@P:a", 1, 0);
    EXPECT_THAT(calls, ElementsAre("first begins @P:a", "first ends @P:a", "second begins @P:a", "second ends @P:a",
                                   "first begins @P:b", "first ends @P:b", "first begins @P:b", "first ends @P:b"));
    hub.Set("@P:a", 2, Actor::Page);
    std::vector<quint64> causes;
    for (const VariableChange& change : hub.Changes())
        causes.push_back(change.cause);
    EXPECT_THAT(causes, ElementsAre(0, 1, 1, 0, 0, 5, 5, 0));
}

TEST_F(VariableHubTest, ReceiverThatDiesDuringANotificationIsNotCalled)
{
    auto doomed = std::make_unique<Receiver>(calls, "doomed");
    peer->Subscribe("@P:a", &first, SLOT(OnSave()));
    peer->Subscribe("@P:a", &second, kNotify);
    peer->Subscribe("@P:a", doomed.get(), kNotify);
    second.onNotify = [&doomed](const QString&) { doomed.reset(); };
    hub.Set("@P:a", 1, Actor::Page);
    EXPECT_THAT(calls, ElementsAre("first saves", "second begins @P:a", "second ends @P:a"));
    EXPECT_EQ(hub.Variables("@P:a").at("@P:a").subscribers, 2);
}

TEST_F(VariableHubTest, PeerHandedBackDuringANotificationEndsItsSubscriptionsAtOnce)
{
    IDataPeer* const other = manager.GetDataPeer();
    peer->Subscribe("@P:a", &first, kNotify);
    other->Subscribe("@P:a", &second, kNotify);
    other->Register("@P:b");
    EXPECT_EQ(hub.Variables("@P:b").at("@P:b").owner, QLatin1String(Receiver::staticMetaObject.className()));
    first.onNotify = [this, other](const QString&) { manager.ReleaseDataPeer(other); };
    hub.Set("@P:a", 1, Actor::Page);
    EXPECT_THAT(calls, ElementsAre("first begins @P:a", "first ends @P:a"));
    EXPECT_FALSE(hub.Variables("@P:b").at("@P:b").registered);
    EXPECT_EQ(hub.Variables("@P:b").at("@P:b").owner, QString());
    EXPECT_EQ(manager.ReclaimPeers(), 1U);
}

TEST_F(VariableHubTest, SubscriptionsMadeDuringANotificationHearOnlyOfLaterOnes)
{
    peer->Subscribe("@P:a", &first, kNotify);
    first.onNotify = [this](const QString&) {
        peer->Subscribe("@P:a", &second, SLOT(OnSave()));
        first.onNotify = nullptr;
    };
    hub.Set("@P:a", 1, Actor::Page);
    EXPECT_THAT(calls, ElementsAre("first begins @P:a", "first ends @P:a"));
    hub.Set("@P:a", 1, Actor::Page);
    EXPECT_EQ(calls.back(), "second saves");
}

TEST_F(VariableHubTest, TriggerOfThePlugInLeavesTheValueAndThatOfAPageMayBringOne)
{
    hub.Set("@T:go", "before", Actor::Page);
    peer->Trigger("@T:go", 0);
    EXPECT_EQ(peer->GetValue("@T:go"), "before");
    hub.Trigger("@T:go", "https://example.com/", Actor::Page);
    EXPECT_EQ(peer->GetValue("@T:go"), "https://example.com/");

    const auto& history = hub.Changes();
    ASSERT_EQ(history.size(), 3U);
    EXPECT_EQ(history[1].kind, VariableChange::Kind::Trigger);
    EXPECT_EQ(history[1].by, Actor::PlugIn);
    EXPECT_FALSE(history[1].value.isValid());
    EXPECT_EQ(history[2].value, "https://example.com/");
    EXPECT_EQ(history[2].sequence, 3U);
}

TEST_F(VariableHubTest, ObserverLearnsOfChangesBeforeTheSubscribersAndInTheirOrder)
{
    peer->Subscribe("@P:a", &first, kNotify);
    first.onNotify = [this](const QString&) { hub.Set("@P:b", 2, Actor::PlugIn); };
    hub.SetObserver([this](const VariableChange& change) {
        calls.push_back(change.name.toStdString() + " is " + change.value.toString().toStdString());
    });
    hub.Set("@P:a", 1, Actor::Page);
    EXPECT_THAT(calls, ElementsAre("@P:a is 1", "first begins @P:a", "@P:b is 2", "first ends @P:a"));
}

TEST_F(VariableHubTest, HistoryKeepsWhatIsNewWithinItsLimits)
{
    VariableHub bounded(warn, {50, 100'000});
    const QString large(1'000, u'x');
    for (int i = 0; i < 100; ++i)
        bounded.Set("@P:a", QVariantList{i, QVariantMap{{"text", large}}}, Actor::Page);
    const auto& changes = bounded.Changes();
    EXPECT_LE(changes.size() * 2'000, 100'000U);
    EXPECT_GT(changes.size(), 20U);
    EXPECT_LT(changes.size(), 50U);
    EXPECT_EQ(changes.back().sequence, 100U);
    for (int i = 0; i < 50; ++i)
        bounded.Trigger("@P:b", {}, Actor::Page);
    EXPECT_EQ(changes.size(), 50U);
    EXPECT_EQ(changes.front().sequence, 101U);
}

TEST_F(VariableHubTest, RegisteringKeepsWhatAPageHasWrittenBefore)
{
    hub.Set("@P:a", "from the page", Actor::Page);
    peer->RegisterKept("@P:a");
    EXPECT_EQ(peer->GetValue("@P:a"), "from the page");
    EXPECT_TRUE(hub.Variables("@P:").at("@P:a").kept);
    manager.ReleaseDataPeer(peer);
    EXPECT_EQ(hub.Value("@P:a"), "from the page");
}

TEST_F(VariableHubTest, SlotsThatCouldNotBeCalledAreRefused)
{
    EXPECT_FALSE(peer->Subscribe("@P:a", &first, SLOT(OnNumber(int))));
    EXPECT_FALSE(peer->Subscribe("@P:a", &first, SLOT(OnNothing())));
    EXPECT_FALSE(peer->Subscribe("@P:a", &first, SIGNAL(destroyed())));
    EXPECT_FALSE(peer->Subscribe("@P:a", &first, nullptr));
    EXPECT_FALSE(peer->Subscribe("@P:a", nullptr, kNotify));
    EXPECT_EQ(warnings.size(), 5U);
    hub.Set("@P:a", 1, Actor::Page);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(VariableHubTest, MisuseIsReportedOnceForEachVariable)
{
    peer->SetValue("@P:undeclared", 1, 0);
    peer->SetValue("@P:undeclared", 2, 0);
    peer->Register("@P:declared");
    peer->SetValue("@P:declared", 1, 0);
    peer->SetValue("@P:declared", qlonglong{1} << 40, 0);
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("@P:undeclared")));
    hub.Set("@P:declared", "text", Actor::Page);
    EXPECT_THAT(warnings.back(), HasSubstr("@P:declared"));
    EXPECT_EQ(warnings.size(), 2U);
}

TEST_F(VariableHubTest, PeerIsHandedBackExactlyOnce)
{
    manager.ReleaseDataPeer(peer);
    EXPECT_THAT(warnings, IsEmpty());
    manager.ReleaseDataPeer(peer);
    EXPECT_EQ(warnings.size(), 1U);
    EXPECT_EQ(manager.ReclaimPeers(), 0U);
}

TEST_F(VariableHubTest, EventLoopReadyIsRunByTheEventLoopAndNotForTheDead)
{
    auto doomed = std::make_unique<Receiver>(calls, "doomed");
    manager.InvokeWhenEventLoopReady(nullptr, &first, SLOT(OnSave()));
    manager.InvokeWhenEventLoopReady(nullptr, doomed.get(), SLOT(OnSave()));
    doomed.reset();
    EXPECT_THAT(calls, IsEmpty());
    QCoreApplication::sendPostedEvents();
    EXPECT_THAT(calls, ElementsAre("first saves"));
}

TEST(VariableIdentifierTest, NamesPackageAndTextAreThoseOfTheId)
{
    const VariableIdentifier literal("@Dialogs\\id\\7:result");
    const VariableIdentifier filled(QStringLiteral("@Dialogs\\id\\%1:result").arg(7));
    EXPECT_EQ(literal, filled);
    EXPECT_EQ(literal.GetHash(), filled.GetHash());
    EXPECT_EQ(literal.GetName(), "result");
    EXPECT_EQ(literal.GetPackage(), "Dialogs\\id\\7");

    const VariableIdentifier whole("@TARN\\MetaData\\Settings");
    EXPECT_EQ(whole.GetName(), "");
    EXPECT_EQ(whole.GetPackage(), "TARN\\MetaData\\Settings");
    EXPECT_EQ(VariableIdentifier("@A:b:c").GetName(), "b:c");
    EXPECT_NE(literal, VariableIdentifier());
}

} // namespace

#include "VariableHubTest.moc"
