#include "util/LaunchProcess.h"

#include "platform/Path.h"
#include "tests/support/PlatformFakes.h"

#include <gmock/gmock.h>

namespace
{

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
