#include "logging/FileAccess.h"
#include "logging/FileUtilsWin32.h"
#include "logging/LoggerWin.h"
#include "platform/KnownFolders.h"
#include "platform/Path.h"
#include "tests/support/PlatformFakes.h"

#include <gmock/gmock.h>

#include <utility>

namespace
{

using NlOrbLogging::FileAccess;
using Root = FakeRegistry::Root;
using testing::ElementsAre;

constexpr const wchar_t* kLogging = L"SOFTWARE\\Norlane\\ORB\\Logging";
constexpr const wchar_t* kShellFolders = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr const wchar_t* kLocalLow = L"{A520A1A4-1780-4FF6-BD18-167343C5AF16}";

class LogLocation : public testing::Test
{
protected:
    std::wstring Path(unsigned flags = 0) const
    {
        return FileAccess(L"NLCC", L"Veridan", std::make_unique<NlOrbLogging::FileLowLevel>(),
                          std::make_unique<NlOrbLogging::FileUtilsWin32>(), flags)
            .Path();
    }

    static std::wstring Below(std::wstring root)
    {
        for (const wchar_t* const part : {L"Norlane", L"Log", L"NLCC", L"Veridan.log"})
            root = Platform::JoinPath(root, part);
        return root;
    }

    FakeRegistry m_registry;
    FakeToken m_token;
    FakeDebugOutput m_debugOutput;
};

TEST_F(LogLocation, AdministratorsLogForTheMachine)
{
    EXPECT_EQ(Path(), Below(Platform::CommonAppData()));
    m_registry.Set(Root::Machine, kShellFolders, L"Common AppData", L"/common");
    EXPECT_EQ(Path(), Below(L"/common"));
    m_registry.Set(Root::Machine, kLogging, L"RootPath", L"/root-path");
    EXPECT_EQ(Path(), Below(L"/root-path"));
    m_token.lowIntegrity = true;
    EXPECT_EQ(Path(), Below(L"/root-path"));
}

TEST_F(LogLocation, OthersLogForThemselvesAndAdministratorsWhoAskForIt)
{
    m_registry.Set(Root::Machine, kLogging, L"RootPath", L"/machine");
    EXPECT_EQ(Path(NlOrbLogging::PerUserLocation), Below(Platform::LocalAppData()));
    m_token.administrator = false;
    EXPECT_EQ(Path(), Below(Platform::LocalAppData()));
    m_registry.Set(Root::User, kShellFolders, L"Local AppData", L"/local");
    EXPECT_EQ(Path(), Below(L"/local"));
    m_registry.Set(Root::User, kLogging, L"RootPath", L"/user");
    EXPECT_EQ(Path(), Below(L"/user"));
}

TEST_F(LogLocation, AtLowIntegrityTheFolderForItComesFirst)
{
    m_token.administrator = false;
    m_token.lowIntegrity = true;
    m_registry.Set(Root::User, kLogging, L"RootPath", L"/user");
    EXPECT_EQ(Path(), Below(L"/user"));
    m_registry.Set(Root::User, kShellFolders, kLocalLow, L"/low");
    EXPECT_EQ(Path(), Below(L"/low"));
    m_token.lowIntegrity = false;
    EXPECT_EQ(Path(), Below(L"/user"));
}

TEST_F(LogLocation, ARootThatIsTooLongMeansNoFile)
{
    const std::size_t appended = std::wstring(L"/Norlane").size();
    m_registry.Set(Root::Machine, kLogging, L"RootPath", L"/" + std::wstring(259 - appended, L'x'));
    EXPECT_NE(Path(), L"");
    m_registry.Set(Root::Machine, kLogging, L"RootPath", L"/" + std::wstring(260 - appended, L'x'));
    EXPECT_EQ(Path(), L"");
}

TEST_F(LogLocation, TheFileAndItsFoldersAreOpenToThoseTheyAreFor)
{
    std::vector<std::wstring> made;
    const auto note = [&made](const std::wstring& path, const wchar_t* security) {
        made.push_back(path + L" " + (security ? security : L"default"));
    };
    using Note = decltype(note);
    struct File : NlOrbLogging::FileLowLevel
    {
        explicit File(const Note& note) : m_note(note) {}
        bool Open(const std::wstring& path, const wchar_t* security) override
        {
            m_note(path, security);
            return false;
        }
        const Note& m_note;
    };
    struct Folders : NlOrbLogging::FileUtilsWin32
    {
        Folders(const Note& note, bool exist) : m_note(note), m_exist(exist) {}
        bool CreateDirectoryTree(const std::wstring& path, const wchar_t* security) override
        {
            m_note(path, security);
            return true;
        }
        bool DirectoryExists(const std::wstring&) override { return m_exist; }
        const Note& m_note;
        const bool m_exist;
    };
    const auto write = [&](unsigned flags, bool foldersExist = false) {
        FileAccess(L"NLCC", L"Veridan", std::make_unique<File>(note), std::make_unique<Folders>(note, foldersExist),
                   flags)
            .Write("", 0);
        return std::exchange(made, {});
    };
    m_registry.Set(Root::Machine, kLogging, L"RootPath", L"/machine");
    m_registry.Set(Root::User, kLogging, L"RootPath", L"/user");
    const std::wstring path = Below(L"/machine");
    const std::wstring userPath = Below(L"/user");
    const std::wstring root = Platform::JoinPath(L"/machine", L"Norlane");
    const std::wstring administrators = L" D:(A;;GA;;;SY)(A;;GA;;;BA)";
    const std::wstring readable = L" D:(A;OICI;GA;;;SY)(A;OICI;GA;;;BA)(A;OICI;GRGX;;;AU)";

    EXPECT_THAT(write(0), ElementsAre(root + L" default", Platform::ParentFolder(path) + readable, path + readable));
    EXPECT_THAT(write(0, true), ElementsAre(path + readable));
    EXPECT_THAT(write(NlOrbLogging::RestrictedAccess, true), ElementsAre(path + administrators));
    EXPECT_THAT(write(NlOrbLogging::PerUserLocation),
                ElementsAre(Platform::ParentFolder(userPath) + L" default", userPath + L" default"));
    EXPECT_THAT(write(NlOrbLogging::PerUserLocation | NlOrbLogging::RestrictedAccess, true),
                ElementsAre(Platform::ParentFolder(userPath) + L" default", userPath + administrators));
}

TEST_F(LogLocation, WithoutAFileLinesStillReachTheDebugger)
{
    m_registry.Set(Root::Machine, kLogging, L"RootPath", std::wstring(300, L'x'));
    m_registry.Set(Root::Machine, kLogging, L"DebugOutputLogging", 1);
    NlOrbLogging::LoggerWin logger;
    logger.Initialize(L"NLCC", L"Veridan", 4, NlOrbLogging::BannerAtDebug);
    logger.Log(4, L"x");
    logger.Flush();
    EXPECT_EQ(m_debugOutput.Take().size(), 1U);
}

} // namespace
