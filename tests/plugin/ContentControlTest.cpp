#include "tarn/IPlugIn.h"
#include "tests/plugin/ThreadCount.h"
#include "tests/support/GeneratedFile.h"
#include "tests/support/LeakCheck.h"
#include "tests/support/OwnRegistry.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/StoreTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QPluginLoader>
#include <QTemporaryDir>

#include <regex>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

/// The built plug-in in this process, with a registry and a log of its own.
class ContentControlTest : public StoreTest
{
protected:
    ContentControlTest()
    {
        m_loader.setLoadHints({}); // the default keeps the library in memory
        const QString logging = QStringLiteral("SOFTWARE\\Norlane\\ORB\\Logging");
        m_registry.Set(logging, QStringLiteral("RootPath"), QDir::toNativeSeparators(m_log.path()));
        m_registry.Set(logging, QStringLiteral("LogLevel"), 5);
        m_registry.Set(logging, QStringLiteral("LogMaxSizeKB"), 100'000); // no rotation
    }

    ~ContentControlTest() override { m_loader.unload(); }

    void PointLibraryTo(const QString& library, const QString& path)
    {
        m_registry.Set(QStringLiteral("Software\\Norlane\\ORB\\Delay Loading"), library,
                       QDir::toNativeSeparators(path));
    }

    IPlugIn* Load() { return qobject_cast<IPlugIn*>(m_loader.instance()); }

    /// The messages that the plug-in has logged so far.
    std::vector<std::string> Log()
    {
        QFile file(m_log.filePath(QStringLiteral("Norlane/Log/NLCC/Veridan.log")));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QByteArray bytes = file.readAll();
        const QString text = QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()), bytes.size() / 2);
        std::vector<std::string> messages;
        for (const QString& line : text.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
            messages.push_back(line.section(QLatin1String("]"), 1).mid(5).toStdString());
        return messages;
    }

    OwnRegistry m_registry;
    QTemporaryDir m_log;
    RecordingHost m_host;
    QPluginLoader m_loader{QCoreApplication::applicationDirPath() + QStringLiteral("/Veridan")};
};

} // namespace

TEST_F(ContentControlTest, IsWhatTheHostLooksFor)
{
    EXPECT_EQ("com.norlane.Veridan.ContentControl",
              m_loader.metaData().value(QStringLiteral("IID")).toString().toStdString());
    EXPECT_EQ("ContentControl", m_loader.metaData().value(QStringLiteral("className")).toString().toStdString());
    EXPECT_EQ(QJsonObject(), m_loader.metaData().value(QStringLiteral("MetaData")).toObject());

    QObject* object = m_loader.instance();
    ASSERT_NE(nullptr, object) << m_loader.errorString().toStdString();
    EXPECT_STREQ("ContentControl", object->metaObject()->className());
    IPlugIn* plugIn = qobject_cast<IPlugIn*>(object);
    ASSERT_NE(nullptr, plugIn);
    EXPECT_EQ(plugIn, object->qt_metacast("com.norlane.Tarn.IPlugIn/1.0"));
    EXPECT_EQ(plugIn, object->qt_metacast("IPlugIn"));
    EXPECT_EQ(object, object->qt_metacast("ContentControl"));
    EXPECT_EQ(nullptr, object->qt_metacast("IDataPeer"));
    EXPECT_EQ(QObject::staticMetaObject.methodCount() + 1, object->metaObject()->methodCount());
    EXPECT_EQ(0, object->metaObject()->indexOfMethod("OnEventLoopReady()") - object->metaObject()->methodOffset());
}

TEST_F(ContentControlTest, TheHostsDeletionMakesRoomForANewInstance)
{
    QObject* first = m_loader.instance();
    EXPECT_EQ(first, m_loader.instance());
    delete first;
    EXPECT_TRUE(Load()->Initialize(&m_host));
}

TEST_F(ContentControlTest, StartsUpInItsOrder)
{
    ASSERT_TRUE(Load()->Initialize(&m_host));
    EXPECT_THAT(m_host.EventLoopSlots(), ElementsAre("1OnEventLoopReady()"));
    EXPECT_EQ(2u, OpenHandles());
    m_host.Forget();
    EXPECT_TRUE(QMetaObject::invokeMethod(m_loader.instance(), "OnEventLoopReady"));
    EXPECT_THAT(m_host.Take("trigger"), ElementsAre("close_block_dialog", "release_shortcuts"));
    m_loader.unload();

    // Entry lines of constructors, destructors and Initialize, and what the plug-in itself says.
    std::vector<std::string> milestones;
    const std::regex milestone(R"((\w+)::(~?\1|Initialize): |ContentControl::.*)");
    for (const std::string& message : Log())
        if (std::regex_match(message, milestone))
            milestones.push_back(message);

    const std::vector<std::string> created = {
        "MainGui",      "SafeBanking", "WebsiteList",       "TimeLimit",  "BrowsingProtection",
        "WebFiltering", "FamilyRules", "BrowserExtensions", "DeviceLock", "Statistics"};
    const std::vector<std::string> initialized = {
        "BrowsingProtection", "WebFiltering", "TimeLimit",         "WebsiteList", "SafeBanking",
        "FamilyRules",        "MainGui",      "BrowserExtensions", "DeviceLock",  "Statistics"};
    const std::vector<std::string> destroyed = {
        "Statistics",  "DeviceLock", "BrowserExtensions", "FamilyRules",        "SafeBanking",
        "WebsiteList", "TimeLimit",  "WebFiltering",      "BrowsingProtection", "MainGui"};
    std::vector<std::string> expected = {"ContentControl::ContentControl: ", "ContentControl::Initialize: ",
                                         "ContentControl::Initialize: VDN settings initialized"};
    for (const std::string& name : created)
        expected.push_back(name + "Handler::" + name + "Handler: ");
    expected.emplace_back("ContentControl::Initialize: GUI handlers created");
    for (const std::string& name : initialized)
        expected.push_back(name + "Handler::Initialize: ");
    expected.emplace_back("ContentControl::Initialize: GUI handlers initialized");
    expected.emplace_back("ContentControl::~ContentControl: ");
    for (const std::string& name : destroyed)
        expected.push_back(name + "Handler::~" + name + "Handler: ");
    EXPECT_EQ(expected, milestones);
}

TEST_F(ContentControlTest, AHandlerWithoutADataPeerStopsTheStart)
{
    const std::vector<std::string> order = {"BrowsingProtection", "WebFiltering", "TimeLimit", "WebsiteList",
                                            "SafeBanking",        "FamilyRules",  "MainGui",   "BrowserExtensions",
                                            "DeviceLock",         "Statistics"};
    for (std::size_t given = 0; given < order.size(); ++given)
    {
        RecordingHost host;
        host.LimitPeers(given);
        EXPECT_FALSE(Load()->Initialize(&host)) << order[given];
        EXPECT_EQ(given, host.PeersOut());
        EXPECT_THAT(host.EventLoopSlots(), IsEmpty());
        host.PageFires("@Veridan\\Settings\\Triggers:load_data"); // those before it work on
        host.PageFires("@Veridan\\Settings\\Triggers:save");
        m_loader.unload();
        EXPECT_EQ(0u, host.PeersOut());
        EXPECT_THAT(Log(), Contains(order[given] + "Handler::Initialize: The host gives no data peer"));
    }
    EXPECT_THAT(Log(), Not(Contains("ContentControl::Initialize: GUI handlers initialized")));
}

TEST_F(ContentControlTest, DeclaresAndPublishesInItsOrder)
{
    QByteArray orders = "What the plug-in does with UI variables, in its order.\n";
    const auto add = [&](const char* when) {
        orders += QByteArray("\n# ") + when + '\n';
        for (const std::string& entry : m_host.TakeChanges())
            orders += QByteArray::fromStdString(entry) + '\n';
    };
    ASSERT_TRUE(Load()->Initialize(&m_host));
    add("Initialize");
    for (const char* trigger :
         {"@Veridan\\Settings\\Triggers:load_data", "@ContentControl\\Triggers:request_show_website_list",
          "@Veridan\\Settings\\Triggers:load_data", "@Veridan\\Settings\\Triggers:save"})
    {
        m_host.PageFires(trigger);
        add(trigger);
    }
    ExpectGeneratedFile(QStringLiteral(VERIDAN_SOURCE_FOLDER "/tests/plugin/orders.txt"), orders);
}

TEST_F(ContentControlTest, AnAllowedUrlIsHandedOnToTheWebsiteList)
{
    ASSERT_TRUE(Load()->Initialize(&m_host));
    m_host.Forget();
    m_host.PageSets("@ContentControl\\Triggers:save_allowed_url", "a.example");
    EXPECT_THAT(m_host.Take("set"), Contains("allowed_websites"));
}

TEST_F(ContentControlTest, WithoutAManagerNothingIsCreated)
{
    EXPECT_FALSE(Load()->Initialize(nullptr));
    EXPECT_EQ(0u, OpenHandles());
    EXPECT_THAT(Log(), Not(Contains(HasSubstr("ModuleHandler"))));
}

TEST_F(ContentControlTest, AMissingLibraryStopsTheStartAndIsNamed)
{
    const QString suffix = QFileInfo(m_loader.fileName()).suffix();
    for (const char* library : {"nl_orb_strata_32", "nl_orb_datapipeline_api_32", "nl_flyer_api_32"})
    {
        const QString name = QLatin1String(library) + QLatin1Char('.') + suffix;
        PointLibraryTo(name, m_log.filePath(QStringLiteral("missing")));
        EXPECT_FALSE(Load()->Initialize(&m_host)) << library;
        EXPECT_EQ(0u, OpenHandles());
        EXPECT_THAT(m_host.TakeChanges(), IsEmpty());
        EXPECT_EQ(0u, m_host.PeersOut());
        EXPECT_THAT(m_host.EventLoopSlots(), IsEmpty());
        EXPECT_THAT(Log(),
                    Contains("ModuleHandler::LoadDll: Failed to load " + name.toStdString() + ". Error code: 126"));
        m_loader.unload();
        PointLibraryTo(name, QCoreApplication::applicationDirPath() + QLatin1Char('/') + name);
    }
    EXPECT_TRUE(Load()->Initialize(&m_host));
}

TEST_F(ContentControlTest, AStoreThatDoesNotOpenDoesNotStopTheStart)
{
    Fail("OrbStrata_OpenHandle", nullptr, ORB_STRATA_STORE_FAILED, 0);
    EXPECT_TRUE(Load()->Initialize(&m_host));
    EXPECT_EQ("Ok", m_host.String("@ContentControl\\Status:status_level"));
    EXPECT_EQ("Off", m_host.String("@TimeLimit\\Data:time_limit_state"));

    ClearFaults();
    Put(kUser, L"common.time.enabled", false);
    m_host.PageFires("@Veridan\\Settings\\Triggers:load_data");
    EXPECT_GE(OpenHandles(), 1u); // the user's settings came back
}

TEST_F(ContentControlTest, TwentyLivesLeaveNothingBehind)
{
    const int threads = ThreadCount();
    for (int life = 0; life < 20; ++life)
    {
        IPlugIn* plugIn = Load();
        ASSERT_NE(nullptr, plugIn) << m_loader.errorString().toStdString();
        ASSERT_TRUE(plugIn->Initialize(&m_host));
        m_host.PageFires("@Veridan\\Settings\\Triggers:request_show_settings_ui");
        EXPECT_EQ(3u, OpenHandles());
        ASSERT_TRUE(m_loader.unload());
        EXPECT_EQ(0u, OpenHandles());
        EXPECT_EQ(0u, m_host.PeersOut());
    }
    EXPECT_EQ(threads, ThreadCount());
    EXPECT_FALSE(MemoryWasLost());
    EXPECT_EQ("Ok", m_host.String("@ContentControl\\Status:status_level")); // the texts are the host's own
}
