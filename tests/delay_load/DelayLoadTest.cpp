#include "delay_load/ModuleHandler.h"
#include "delay_load/NlFlyerApi.h"
#include "delay_load/OrbDpApi.h"
#include "delay_load/OrbStrataApi.h"
#include "platform/Ansi.h"
#include "platform/SharedLibrary.h"
#include "tests/support/LogCapture.h"
#include "tests/support/PlatformFakes.h"
#include "text/Utf.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDir>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const wchar_t* kKey = L"Software\\Norlane\\ORB\\Delay Loading";
constexpr const wchar_t* kDependencies = L"Software\\Norlane\\ORB\\Delay Loading\\NLDelayLoadDependencies";
constexpr std::int32_t kModuleNotFound = 126;

class DelayLoad : public testing::Test
{
protected:
    static std::string FileName(const char* library)
    {
        return std::string(library) + Platform::SharedLibrary::Suffix();
    }
    static std::wstring ModulePath(const char* module)
    {
        const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/delay_load/") +
                             QString::fromLatin1(module) + QLatin1Char('/') + QString::fromStdString(FileName(module));
        return QDir::toNativeSeparators(path).toStdWString();
    }
    static std::string FailureOf(const std::string& file, int code)
    {
        return "ModuleHandler::LoadDll: Failed to load " + file + ". Error code: " + std::to_string(code);
    }
    static std::string Failure(const char* library, int code) { return FailureOf(FileName(library), code); }

    void SetPath(const char* library, const std::wstring& path)
    {
        m_registry.Set(FakeRegistry::Root::Machine, kKey, Text::FromUtf8(FileName(library)), path);
    }
    void SetDependencies(const char* library, const std::wstring& paths)
    {
        m_registry.Set(FakeRegistry::Root::Machine, kDependencies, Text::FromUtf8(FileName(library)), paths);
    }

    static constexpr const char* kStrata = "nl_orb_strata_32";
    static constexpr const char* kMetrics = "nl_orb_datapipeline_api_32";
    static constexpr const char* kFlyer = "nl_flyer_api_32";

    FakeRegistry m_registry;
};

TEST_F(DelayLoad, FindsTheLibrariesBesideItsOwnCodeAndKeepsThemWhileTheHandlerLives)
{
    {
        ModuleHandler modules;
        EXPECT_TRUE(modules.LoadDll());
        EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "x"), 0);
        {
            ModuleHandler others;
            EXPECT_TRUE(others.LoadDll());
        }
        EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "x"), 0);
    }
    EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "x"), kModuleNotFound);
}

TEST_F(DelayLoad, TriesAgainOnlyWhatFailed)
{
    SetPath(kMetrics, ModulePath("Nowhere"));
    ModuleHandler modules;
    LogCapture::Expect(2, Failure(kMetrics, kModuleNotFound));
    EXPECT_FALSE(modules.LoadDll());
    EXPECT_NE(OrbStrata_CreateObject, UnloadedTable<OrbStrataTable>().OrbStrata_CreateObject);
    EXPECT_EQ(NlFlyer_CloseFlyer(nullptr), kModuleNotFound);

    SetPath(kStrata, ModulePath("Nowhere"));
    SetPath(kMetrics, ModulePath("DependentMetrics"));
    SetDependencies(kMetrics, ModulePath("Helper"));
    EXPECT_TRUE(modules.LoadDll());
}

TEST_F(DelayLoad, NamesTheFunctionThatALibraryLacks)
{
    SetPath(kMetrics, ModulePath("IncompleteMetrics"));
    ModuleHandler modules;
    EXPECT_FALSE(modules.LoadDll());
    EXPECT_THAT(LogCapture::Take(3), ElementsAre(LogLine{2, Failure(kMetrics, 127)},
                                                 LogLine{3, "ModuleHandler::LoadDll: " + FileName(kMetrics) +
                                                                " has no function OrbDpApi_MetricsRecordMajorEvent"}));
    EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "x"), kModuleNotFound);
}

TEST_F(DelayLoad, RefusesAPathThatIsNotAbsolute)
{
    for (const wchar_t* const path : {L"", L"library", L"delay_load/Helper/Helper.so", L"../library"})
    {
        SetPath(kStrata, path);
        ModuleHandler modules;
        LogCapture::Expect(2, Failure(kStrata, 161));
        EXPECT_FALSE(modules.LoadDll());
    }
}

TEST_F(DelayLoad, LoadsDependenciesFirst)
{
    SetPath(kMetrics, ModulePath("DependentMetrics"));
    {
        ModuleHandler modules;
        LogCapture::Expect(2, Failure(kMetrics, kModuleNotFound));
        EXPECT_FALSE(modules.LoadDll());
    }
    SetDependencies(kMetrics, L"; \t" + ModulePath("Helper") + L" ; ;");
    ModuleHandler modules;
    EXPECT_TRUE(modules.LoadDll());
    EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "x"), 4711);
}

TEST_F(DelayLoad, AMissingDependencyIsAFailureOfTheLibraryAndNamed)
{
    SetDependencies(kFlyer, ModulePath("Helper") + L"; " + ModulePath("Nowhere"));
    ModuleHandler modules;
    LogCapture::Expect(2, FailureOf(Platform::ToAnsi(ModulePath("Nowhere")), kModuleNotFound));
    EXPECT_FALSE(modules.LoadDll());
    SetDependencies(kFlyer, L"Helper");
    LogCapture::Expect(2, FailureOf("Helper", 161));
    EXPECT_FALSE(modules.LoadDll());
}

TEST(UnloadedLibrary, AnswersFailureAndTheDefaultsOfReads)
{
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    EXPECT_EQ(OrbStrata_OpenHandle(L"safe", L"", L"test", &result), nullptr);
    EXPECT_EQ(result, static_cast<OrbStrataResult>(ORB_STRATA_INVALID_HANDLE));
    EXPECT_TRUE(OrbStrata_GetBool(nullptr, L"key", true, &result));
    EXPECT_EQ(OrbStrata_GetInt64(nullptr, L"key", -7, &result), -7);
    EXPECT_EQ(OrbStrata_GetString(nullptr, L"key", L"text", &result), nullptr);
    EXPECT_EQ(OrbStrata_GetConstraints(nullptr, L"key", &result), 0U);
    EXPECT_EQ(OrbStrata_SetBool(nullptr, L"key", true), static_cast<OrbStrataResult>(ORB_STRATA_INVALID_HANDLE));
    OrbStrata_FreeString(nullptr);
}

} // namespace
