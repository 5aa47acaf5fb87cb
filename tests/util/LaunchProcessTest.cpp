#include "util/LaunchProcess.h"

#include "platform/Path.h"
#include "platform/ProcessLauncher.h"
#include "tests/support/PlatformFakes.h"
#include "util/Handle.h"

#include <gmock/gmock.h>

namespace
{

struct FakeLauncher : FakeService<Platform::ProcessLauncher>
{
    std::wstring folder = L"C:\\Windows\\System32";
    std::wstring program;
    std::wstring commandLine;
    std::uint32_t flags = 0;
    std::wstring workingFolder = L"not called";

    std::wstring SystemFolder() override { return folder; }
    Platform::KernelHandle Start(const std::wstring& path, const std::wstring& line, std::uint32_t creationFlags,
                                 const wchar_t* working) override
    {
        program = path;
        commandLine = line;
        flags = creationFlags;
        workingFolder = working ? working : L"none";
        return nullptr;
    }
};

TEST(LaunchProcess, QuotesTheProgramOfTheSystemFolder)
{
    FakeLauncher launcher;
    const std::wstring path = Platform::JoinPath(launcher.folder, L"control.exe");
    LaunchProcess(L"control.exe", L"userpasswords", Platform::ProcessLauncher::kDetached, nullptr);
    EXPECT_EQ(launcher.program, path);
    EXPECT_EQ(launcher.commandLine, L"\"" + path + L"\" userpasswords");
    EXPECT_EQ(launcher.flags, 8U);
    EXPECT_EQ(launcher.workingFolder, L"none");

    LaunchProcess(L"control.exe", nullptr, 0, L"C:\\");
    EXPECT_EQ(launcher.commandLine, L"\"" + path + L"\"");
    EXPECT_EQ(launcher.workingFolder, L"C:\\");
}

TEST(LaunchProcess, StartsNothingWithoutASystemFolder)
{
    FakeLauncher launcher;
    launcher.folder.clear();
    EXPECT_EQ(LaunchProcess(L"control.exe", nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(launcher.workingFolder, L"not called");
}

TEST(LaunchProcess, AProgramThatDoesNotExistGivesNoHandle)
{
    EXPECT_EQ(LaunchProcess(L"no-such-program-of-the-system", nullptr, 0, nullptr), nullptr);
}

} // namespace
