#include "platform/Ansi.h"
#include "platform/DebugOutput.h"
#include "platform/Files.h"
#include "platform/KnownFolders.h"
#include "platform/ProcessLauncher.h"
#include "platform/Registry.h"
#include "platform/Sessions.h"
#include "platform/SharedLibrary.h"
#include "platform/Token.h"
#include "platform/win32/Win32.h"

#include <gmock/gmock.h>
#include <lmcons.h>
#include <sddl.h>
#include <shlobj.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <array>
#include <string>
#include <vector>

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

constexpr DWORD kDeadline = 30000;

std::wstring StringOf(std::vector<std::uint8_t> sid)
{
    wchar_t* text = nullptr;
    EXPECT_TRUE(::ConvertSidToStringSidW(sid.data(), &text));
    const std::wstring result = text ? text : L"";
    ::LocalFree(text);
    return result;
}

std::wstring UserName()
{
    std::array<wchar_t, UNLEN + 1> name{};
    DWORD size = UNLEN + 1;
    EXPECT_TRUE(::GetUserNameW(name.data(), &size));
    return name.data();
}

TEST(Sessions, AnAccountIsFoundInTwoSteps)
{
    Platform::Sessions& sessions = Platform::Get<Platform::Sessions>();
    const std::wstring account = UserName();
    std::uint32_t sidSize = 0;
    std::uint32_t domainSize = 0;
    ASSERT_EQ(sessions.LookupAccount(account.c_str(), nullptr, &sidSize, nullptr, &domainSize),
              Platform::Sessions::kErrorInsufficientBuffer);
    std::vector<std::uint8_t> sid(sidSize);
    std::wstring domain(domainSize, L'\0');
    ASSERT_EQ(sessions.LookupAccount(account.c_str(), sid.data(), &sidSize, domain.data(), &domainSize), 0U);

    std::vector<std::uint8_t> own;
    ASSERT_EQ(sessions.ProcessUser(own), 0U);
    EXPECT_EQ(StringOf(sid), StringOf(own));
    EXPECT_THAT(StringOf(own), StartsWith(L"S-1-5-21-"));

    sidSize = domainSize = 0;
    EXPECT_EQ(sessions.LookupAccount(L"nobody.of.this.name", nullptr, &sidSize, nullptr, &domainSize),
              Platform::Sessions::kErrorNoneMapped);
}

TEST(Sessions, TheProcessSessionBelongsToItsUser)
{
    Platform::Sessions& sessions = Platform::Get<Platform::Sessions>();
    std::vector<Platform::Sessions::Session> list{{42, true}};
    ASSERT_TRUE(sessions.Enumerate(list));
    for (const Platform::Sessions::Session& session : list)
        EXPECT_NE(session.id, 42U);
    std::uint32_t session = Platform::Sessions::kInvalid;
    ASSERT_TRUE(sessions.ProcessSession(session));
    EXPECT_EQ(sessions.UserName(session), UserName());
    EXPECT_NE(sessions.DomainName(session), L"");
}

TEST(Token, MembershipIsTheSystemsAnswer)
{
    Platform::Token& token = Platform::Get<Platform::Token>();
    EXPECT_EQ(token.IsMemberOfBuiltinGroup(nullptr, Platform::Token::kAdministrators), ::IsUserAnAdmin() != FALSE);
    EXPECT_FALSE(token.IsMemberOfBuiltinGroup(nullptr, 9999));
    EXPECT_FALSE(token.IsLowIntegrity());
}

TEST(Token, APrimaryOneAndOneOfAnUnelevatedAdministratorAreAnswered)
{
    constexpr std::uint32_t kAdministrators = Platform::Token::kAdministrators;
    Platform::Token& token = Platform::Get<Platform::Token>();
    HANDLE own = nullptr;
    ASSERT_TRUE(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY | TOKEN_DUPLICATE, &own));
    EXPECT_EQ(token.IsMemberOfBuiltinGroup(own, kAdministrators), ::IsUserAnAdmin() != FALSE);
    EXPECT_FALSE(token.IsUserMemberOfBuiltinGroup(own, 9999));

    // The token that this process would have without elevation; Wine leaves the group in it.
    TOKEN_LINKED_TOKEN unelevated{};
    DWORD size = sizeof(unelevated);
    if (::IsUserAnAdmin() && ::GetTokenInformation(own, TokenLinkedToken, &unelevated, size, &size))
    {
        SID_AND_ATTRIBUTES group{};
        HANDLE limited = nullptr;
        ASSERT_TRUE(::ConvertStringSidToSidW(L"S-1-5-32-544", &group.Sid));
        ASSERT_TRUE(::CreateRestrictedToken(unelevated.LinkedToken, 0, 1, &group, 0, nullptr, 0, nullptr, &limited));
        EXPECT_FALSE(token.IsMemberOfBuiltinGroup(limited, kAdministrators));
        EXPECT_TRUE(token.IsUserMemberOfBuiltinGroup(limited, kAdministrators));
        ::LocalFree(group.Sid);
        ::CloseHandle(limited);
        ::CloseHandle(unelevated.LinkedToken);
    }
    ::CloseHandle(own);
}

TEST(KnownFolders, AreTheOnesThatTheShellLists)
{
    constexpr const wchar_t* kShellFolders = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    Platform::Registry& registry = Platform::Get<Platform::Registry>();
    EXPECT_EQ(registry.ReadString(Platform::RegistryRoot::Machine, kShellFolders, L"Common AppData"),
              Platform::CommonAppData());
    EXPECT_EQ(registry.ReadString(Platform::RegistryRoot::User, kShellFolders, L"Local AppData"),
              Platform::LocalAppData());
}

TEST(SharedLibrary, OnlyAnAbsolutePathIsLoaded)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    const std::wstring path = QDir::toNativeSeparators(folder.filePath(QStringLiteral("TarnTypes.dll"))).toStdWString();
    Platform::SharedLibrary library;
    for (const wchar_t* const relative :
         {L"TarnTypes.dll", L".\\TarnTypes.dll", L"\\TarnTypes.dll", L"C:TarnTypes.dll"})
        EXPECT_EQ(library.Load(relative), Platform::SharedLibrary::kErrorBadPathname) << relative;
    EXPECT_EQ(library.Load(path + L".absent"), Platform::SharedLibrary::kErrorModuleNotFound);
    EXPECT_FALSE(library.IsLoaded());
    ASSERT_EQ(library.Load(path), 0U);
    EXPECT_EQ(library.Find("absent"), nullptr);

    HMODULE module = ::GetModuleHandleW(L"TarnTypes.dll");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(Platform::SharedLibrary::PathOf(module), path);
    library.Unload();
    EXPECT_EQ(::GetModuleHandleW(L"TarnTypes.dll"), nullptr);
}

TEST(SharedLibrary, ALoadFailsWithoutABoxForTheUser)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    const auto path = [&folder](const char* name) {
        return QDir::toNativeSeparators(folder.filePath(QString::fromLatin1(name))).toStdWString();
    };
    ASSERT_TRUE(::SetThreadErrorMode(0, nullptr));
    Platform::SharedLibrary library;
    ASSERT_EQ(library.Load(path("ErrorModeProbe.dll")), 0U);
    const auto modeOnLoad = reinterpret_cast<DWORD (*)()>(library.Find("ErrorModeOnLoad"));
    ASSERT_NE(modeOnLoad, nullptr);
    EXPECT_EQ(modeOnLoad() & SEM_FAILCRITICALERRORS, DWORD{SEM_FAILCRITICALERRORS});

    EXPECT_EQ(library.Load(path("defaults.json")), DWORD{ERROR_BAD_EXE_FORMAT});
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
    EXPECT_EQ(::GetThreadErrorMode(), 0U);
}

TEST(ProcessLauncher, RunsAProgramOfTheSystemFolder)
{
    Platform::ProcessLauncher& launcher = Platform::Get<Platform::ProcessLauncher>();
    const std::wstring program = launcher.SystemFolder() + L"\\cmd.exe";
    ASSERT_TRUE(Platform::FileExists(program));

    const Platform::KernelHandle process =
        launcher.Start(program, L"\"" + program + L"\" /c exit 7", Platform::ProcessLauncher::kDetached, nullptr);
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(::WaitForSingleObject(process, kDeadline), DWORD{WAIT_OBJECT_0});
    DWORD exitCode = 0;
    EXPECT_TRUE(::GetExitCodeProcess(process, &exitCode));
    EXPECT_EQ(exitCode, 7U);
    EXPECT_TRUE(Platform::Close(process));

    EXPECT_EQ(launcher.Start(program + L".absent", L"x", 0, nullptr), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

/// What a debugger would be told. Windows offers the text wide, Wine narrow.
std::string g_debuggerString;

LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers)
{
    constexpr DWORD kNarrowString = 0x40010006;
    constexpr DWORD kWideString = 0x4001000A;
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == kWideString)
    {
        g_debuggerString = Platform::ToAnsi(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    if (record.ExceptionCode == kNarrowString)
    {
        g_debuggerString = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

TEST(DebugOutput, ReachesADebugger)
{
    void* const handler = ::AddVectoredExceptionHandler(1, OnException);
    Platform::Get<Platform::DebugOutput>().Write(L"a line\n");
    ::RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(g_debuggerString, "a line\n");
}

TEST(Files, RemovalAtRestartIsPutDownWithTheSystem)
{
    const QTemporaryDir folder;
    const std::wstring path = QDir::toNativeSeparators(folder.filePath(QStringLiteral("left.log"))).toStdWString();
    Platform::File file;
    ASSERT_TRUE(file.Open(path, nullptr));
    ASSERT_TRUE(Platform::RemoveAtRestart(path));

    std::vector<wchar_t> pending(0x10000);
    auto size = static_cast<DWORD>(pending.size() * sizeof(wchar_t));
    ASSERT_EQ(::RegGetValueW(HKEY_LOCAL_MACHINE, L"System\\CurrentControlSet\\Control\\Session Manager",
                             L"PendingFileRenameOperations", RRF_RT_REG_MULTI_SZ, nullptr, pending.data(), &size),
              ERROR_SUCCESS);
    EXPECT_THAT(std::wstring(pending.data(), size / sizeof(wchar_t)), HasSubstr(path));
}

} // namespace
