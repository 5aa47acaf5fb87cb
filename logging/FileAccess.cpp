#include "logging/FileAccess.h"

#include "logging/LogSettings.h"
#include "logging/Logger.h"
#include "platform/DebugOutput.h"
#include "platform/Format.h"
#include "platform/Path.h"
#include "platform/Token.h"

#include <algorithm>
#include <array>
#include <utility>

namespace NlOrbLogging
{

namespace
{

using Platform::NamedMutex;

constexpr std::uint32_t kDefaultSizeKB = 100;
constexpr std::uint32_t kSmallestSize = 3;
constexpr std::uint32_t kDefaultRotationCount = 2;
constexpr std::uint32_t kLargestRotationCount = 99;
constexpr unsigned kDeleteNames = 99;
constexpr std::uint32_t kMutexTimeoutMs = 500;

constexpr const wchar_t* kAdministratorsOnly = L"D:(A;;GA;;;SY)(A;;GA;;;BA)";
constexpr const wchar_t* kReadableByUsers = L"D:(A;OICI;GA;;;SY)(A;OICI;GA;;;BA)(A;OICI;GRGX;;;AU)";

void WriteDebug(const std::wstring& text)
{
    Platform::Get<Platform::DebugOutput>().Write(text.c_str());
}

/// In bytes, from KiB; what does not fit stays at the largest number there is.
std::uint32_t MaximumSize(std::uint32_t sizeKB)
{
    const std::uint64_t size = std::uint64_t{sizeKB} * 1024;
    return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(size, kSmallestSize, 0xFFFFFFFF));
}

std::wstring MutexName(const std::wstring& path, bool lowIntegrity)
{
    std::wstring file = path;
    std::replace(file.begin(), file.end(), Platform::kPathSeparator, L'_');
    return (lowIntegrity ? L"Local\\NlOrbLogging_" : L"Global\\NlOrbLogging_") + file;
}

/// What the holders of the mutex tell each other about the live file: which one it is, counted by the rotations, and
/// its size. 0: the size is not known.
struct LiveFile
{
    static constexpr int kSizeBits = 40;

    explicit LiveFile(std::uint64_t number)
        : rotations(static_cast<std::uint32_t>(number >> kSizeBits)),
          size(number & ((std::uint64_t{1} << kSizeBits) - 1))
    {}
    static std::uint64_t Number(std::uint32_t rotations, std::uint64_t size)
    {
        return (std::uint64_t{rotations} << kSizeBits) | size;
    }
    static std::uint32_t Next(std::uint32_t rotations) { return (rotations + 1) & 0xFFFFFF; }

    std::uint32_t rotations;
    std::uint64_t size;
};

bool IsHeldAfter(NamedMutex::Wait result)
{
    return result == NamedMutex::Wait::Acquired || result == NamedMutex::Wait::Abandoned;
}

} // namespace

FileAccess::FileAccess(const std::wstring& component, const std::wstring& module, std::unique_ptr<FileLowLevel> file,
                       std::unique_ptr<FileUtils> utils, unsigned flags)
    : m_file(std::move(file)), m_utils(std::move(utils))
{
    const LogSettings settings(component, module);
    m_rotationCount = std::min(settings.ReadDword(L"LogRotateCount", kDefaultRotationCount), kLargestRotationCount);
    m_maximumSize = MaximumSize(settings.ReadDword(L"LogMaxSizeKB", kDefaultSizeKB));

    auto& token = Platform::Get<Platform::Token>();
    m_perUser =
        (flags & PerUserLocation) != 0 || !token.IsMemberOfBuiltinGroup(nullptr, Platform::Token::kAdministrators);
    m_lowIntegrity = token.IsLowIntegrity();

    m_root = LogRoot(m_perUser, m_lowIntegrity);
    if (m_root.empty())
        return;
    m_path = m_root;
    for (const std::wstring& part : {std::wstring(L"Log"), component, module + L".log"})
        m_path = Platform::JoinPath(m_path, part);
    if ((flags & RestrictedAccess) != 0)
        m_fileSecurity = kAdministratorsOnly;
    else if (!m_perUser)
        m_fileSecurity = kReadableByUsers;
    FileAccess::OpenFileMutex(MutexName(m_path, m_lowIntegrity), m_perUser);
}

void FileAccess::Write(const void* data, std::uint32_t bytes)
{
    if (!m_mutex.IsOpen())
        return;
    const NamedMutex::Wait result = m_mutex.Lock(kMutexTimeoutMs);
    if (!IsHeldAfter(result))
    {
        WriteDebug(Platform::FormatString(L"nl_orb_log!FileAccess::Write(): Failed to acquire file mutex, error=%lu\n",
                                          static_cast<std::uint32_t>(result)));
        return;
    }
    const NamedMutex::Unlocker unlocker(m_mutex);
    if (!FindEnd(result == NamedMutex::Wait::Abandoned))
        return;
    if (!NeedsRotation() || Rotate())
        m_file->Write(data, bytes);
    m_mutex.SetNumber(LiveFile::Number(m_rotations, m_file->GetSize()));
}

bool FileAccess::FindEnd(bool abandoned)
{
    if (abandoned) // perhaps by a process that was rotating
    {
        m_file->Close();
        m_mutex.SetNumber(LiveFile::Number(LiveFile::Next(LiveFile(m_mutex.Number()).rotations), 0));
    }
    const LiveFile live(m_mutex.Number());
    if (live.rotations != m_rotations)
        m_file->Close();
    m_rotations = live.rotations;
    if (m_file->IsOpen() && live.size != 0)
    {
        m_file->FollowTo(live.size);
        return true;
    }
    return EnsureOpen() && m_file->SeekToEnd();
}

void FileAccess::Flush()
{
    if (!m_mutex.IsOpen() || !IsHeldAfter(m_mutex.Lock(kMutexTimeoutMs)))
        return;
    const NamedMutex::Unlocker unlocker(m_mutex);
    m_file->Flush();
}

bool FileAccess::Rotate()
{
    if (m_path.empty())
        return false;
    m_file->Close();
    m_rotations = LiveFile::Next(m_rotations);
    m_mutex.SetNumber(LiveFile::Number(m_rotations, 0)); // from now on nobody else's file is the live one
    if (m_rotationCount == 0)
    {
        RemoveFile(m_path);
        return Reopen();
    }
    bool moved = true;
    for (std::uint32_t i = 0; i <= m_rotationCount; ++i)
    {
        const std::wstring source = NumberedName(m_path, m_rotationCount - i);
        if (!m_utils->FileExists(source))
            continue;
        if (i == 0)
            RemoveFile(source);
        else
            moved = m_utils->FileRename(source, NumberedName(m_path, m_rotationCount - i + 1));
    }
    return Reopen() && moved;
}

bool FileAccess::EnsureOpen()
{
    if (m_file->IsOpen())
        return true;
    if (m_path.empty())
        return false;
    CreateLogDirectory();
    return Reopen();
}

bool FileAccess::NeedsRotation()
{
    if (!m_file->IsOpen() || m_file->GetSize() <= m_maximumSize)
        return false;
    // Another process may have rotated meanwhile; then this handle still shows the old file.
    m_file->Close();
    return !Reopen() || m_file->GetSize() > m_maximumSize;
}

void FileAccess::RemoveFile(const std::wstring& path)
{
    // Under another name first: the live name is free at once, even while another process holds the file.
    std::array<wchar_t, 1024> name;
    const bool renamed = MakeDeleteName(name.data(), name.size(), path) && m_utils->FileRename(path, name.data());
    m_utils->FileDelete(renamed ? name.data() : path);
}

bool FileAccess::MakeDeleteName(wchar_t* buffer, std::size_t size, const std::wstring& path)
{
    for (unsigned i = 1; i <= kDeleteNames; ++i)
    {
        if (Platform::FormatTo(buffer, size, L"%s__delete_%u", path.c_str(), i) < 0)
            return false;
        if (!m_utils->FileExists(buffer))
            break;
    }
    return true;
}

void FileAccess::CreateLogDirectory()
{
    const std::wstring folder = Platform::ParentFolder(m_path);
    if (m_perUser)
        m_utils->CreateDirectoryTree(folder, nullptr);
    else if (!m_utils->DirectoryExists(folder))
    {
        m_utils->CreateDirectoryTree(m_root, nullptr);
        m_utils->CreateDirectoryTree(folder, kReadableByUsers);
    }
}

void FileAccess::OpenFileMutex(const std::wstring& name, bool perUser)
{
    std::uint32_t error = m_mutex.Create(name, perUser ? nullptr : kAdministratorsOnly);
    if (NamedMutex::IsAccessDenied(error))
        error = m_mutex.Open(name);
    if (error != 0)
        WriteDebug(Platform::FormatString(L"Failed to open mutex '%s': Win32 error: %lu", name.c_str(), error));
}

std::wstring FileAccess::NumberedName(const std::wstring& path, std::uint32_t number)
{
    if (number == 0)
        return path;
    const std::wstring digits = L"." + std::to_wstring(number);
    const auto dot = path.find_last_of(L'.');
    return dot == std::wstring::npos ? path + digits : path.substr(0, dot) + digits + path.substr(dot);
}

bool FileAccess::Reopen()
{
    return m_file->Open(m_path, m_fileSecurity);
}

} // namespace NlOrbLogging
