#include "platform/Files.h"
#include "platform/NamedMutex.h"
#include "platform/win32/SecurityAttributes.h"

#include <aclapi.h>
#include <gtest/gtest.h>
#include <sddl.h>

#include <QDir>
#include <QTemporaryDir>

#include <map>
#include <string>

namespace
{

constexpr const wchar_t* kAdministratorsOnly = L"D:(A;;GA;;;SY)(A;;GA;;;BA)";

constexpr const wchar_t* kSystem = L"S-1-5-18";
constexpr const wchar_t* kAdministratorsSid = L"S-1-5-32-544";

/// The rights that an access list grants to each account, generic ones spelled out.
std::map<std::wstring, DWORD> Granted(ACL* list, GENERIC_MAPPING mapping)
{
    std::map<std::wstring, DWORD> granted;
    for (WORD i = 0; list && i < list->AceCount; ++i)
    {
        void* entry = nullptr;
        EXPECT_TRUE(::GetAce(list, i, &entry));
        auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
        EXPECT_EQ(allowed->Header.AceType, ACCESS_ALLOWED_ACE_TYPE);
        DWORD rights = allowed->Mask;
        ::MapGenericMask(&rights, &mapping);
        wchar_t* sid = nullptr;
        EXPECT_TRUE(::ConvertSidToStringSidW(&allowed->SidStart, &sid));
        granted[sid] |= rights;
        ::LocalFree(sid);
    }
    return granted;
}

std::map<std::wstring, DWORD> GrantedOnMutex(const wchar_t* name)
{
    ACL* list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    const HANDLE mutex = ::OpenMutexW(READ_CONTROL, FALSE, name);
    EXPECT_EQ(::GetSecurityInfo(mutex, SE_KERNEL_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list, nullptr,
                                &descriptor),
              DWORD{ERROR_SUCCESS});
    ::CloseHandle(mutex);
    const auto granted = Granted(list, {READ_CONTROL, MUTEX_MODIFY_STATE, SYNCHRONIZE, MUTEX_ALL_ACCESS});
    ::LocalFree(descriptor);
    return granted;
}

std::map<std::wstring, DWORD> GrantedOnFile(const std::wstring& path)
{
    ACL* list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(::GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                                      nullptr, &descriptor),
              DWORD{ERROR_SUCCESS});
    const auto granted = Granted(list, {FILE_GENERIC_READ, FILE_GENERIC_WRITE, FILE_GENERIC_EXECUTE, FILE_ALL_ACCESS});
    ::LocalFree(descriptor);
    return granted;
}

class Security : public testing::Test
{
protected:
    std::wstring Path(const char* name) const
    {
        return QDir::toNativeSeparators(m_folder.filePath(QString::fromLatin1(name))).toStdWString();
    }

    QTemporaryDir m_folder;
};

TEST_F(Security, ATextBecomesTheDescriptorItDescribes)
{
    constexpr const wchar_t* kReadable = L"D:(A;OICI;GA;;;SY)(A;OICI;GA;;;BA)(A;OICI;GRGX;;;AU)";
    const std::map<const wchar_t*, const wchar_t*> asTheSystemWritesIt{
        {kAdministratorsOnly, kAdministratorsOnly},
        {kReadable, L"D:(A;OICI;GA;;;SY)(A;OICI;GA;;;BA)(A;OICI;GXGR;;;AU)"}};
    for (const auto& [text, expected] : asTheSystemWritesIt)
    {
        Platform::SecurityAttributes attributes(text);
        ASSERT_TRUE(attributes.IsValid());
        ASSERT_NE(attributes.Get(), nullptr);
        EXPECT_FALSE(attributes.Get()->bInheritHandle);
        wchar_t* back = nullptr;
        ASSERT_TRUE(::ConvertSecurityDescriptorToStringSecurityDescriptorW(
            attributes.Get()->lpSecurityDescriptor, SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &back, nullptr));
        EXPECT_STREQ(back, expected);
        ::LocalFree(back);
    }
}

TEST_F(Security, AMutexIsForSystemAndAdministratorsOnly)
{
    constexpr const wchar_t* kName = L"Local\\Veridan_SecurityTest";
    Platform::NamedMutex mutex;
    ASSERT_EQ(mutex.Create(kName, kAdministratorsOnly), 0U);
    const std::map<std::wstring, DWORD> expected{{kSystem, MUTEX_ALL_ACCESS}, {kAdministratorsSid, MUTEX_ALL_ACCESS}};
    EXPECT_EQ(GrantedOnMutex(kName), expected);
}

// Wine keeps of a file's list what a file of the system below can express: it shows the owner for the administrators.
TEST_F(Security, ARestrictedFileOrFolderIsOpenToNobodyElse)
{
    Platform::File file;
    ASSERT_TRUE(file.Open(Path("file"), kAdministratorsOnly));
    ASSERT_TRUE(Platform::MakeFolder(Path("folder"), kAdministratorsOnly));
    for (const char* const name : {"file", "folder"})
    {
        const auto granted = GrantedOnFile(Path(name));
        ASSERT_EQ(granted.count(kSystem), 1U) << name;
        EXPECT_EQ(granted.at(kSystem), DWORD{FILE_ALL_ACCESS}) << name;
        EXPECT_LE(granted.size(), 2U) << name;
        for (const wchar_t* const other : {L"S-1-1-0", L"S-1-5-11", L"S-1-5-32-545"})
            EXPECT_EQ(granted.count(other), 0U) << name << ' ' << other;
    }
}

TEST_F(Security, NothingIsMadeFromATextThatIsNotSddl)
{
    Platform::File file;
    EXPECT_FALSE(file.Open(Path("file"), L"D:(A;;"));
    EXPECT_FALSE(Platform::FileExists(Path("file")));
    EXPECT_FALSE(Platform::MakeFolder(Path("folder"), L"D:(A;;"));
    EXPECT_FALSE(Platform::FolderExists(Path("folder")));
    Platform::NamedMutex mutex;
    EXPECT_NE(mutex.Create(L"Local\\Veridan_SecurityTest", L"D:(A;;"), 0U);
    EXPECT_FALSE(mutex.IsOpen());
}

} // namespace
