#include "platform/posix/SharedPage.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace Platform
{

namespace
{

/// The user's own folder; empty when it cannot be made or is not safe to use.
std::string Folder()
{
    const uid_t user = ::geteuid();
    std::string path = "/dev/shm/norlane-" + std::to_string(user);
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return {};
    struct stat status
    {};
    const bool safe = ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == user &&
                      (status.st_mode & 077) == 0;
    if (!safe)
    {
        errno = EACCES;
        return {};
    }
    return path;
}

/// FNV-1a; names are paths of any length.
std::string Digest(const std::string& name)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char byte : name)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "%016" PRIx64, hash);
    return text.data();
}

/// The signal-safe form of flock().
bool Lock(int file, int operation)
{
    int result;
    do
    {
        result = ::flock(file, operation);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

void* Map(int file, std::size_t size)
{
    void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    return memory != MAP_FAILED ? memory : nullptr;
}

} // namespace

SharedPage::~SharedPage()
{
    Close();
}

int SharedPage::Open(const std::string& kind, const std::string& name, std::size_t size,
                     bool (*initialise)(void* memory))
{
    Close();
    const std::string folder = Folder();
    if (folder.empty())
        return errno;
    m_size = size;
    m_path =
        folder + '/' + kind + '-' + Digest(name) + '-' + std::to_string(size) + '-' + std::to_string(8 * sizeof(void*));
    int error = OpenExisting();
    while (error == ENOENT && initialise)
    {
        error = Make(initialise);
        if (error == 0 || error == EEXIST)
            error = OpenExisting(); // gone again when its last user left in between
    }
    return error;
}

int SharedPage::OpenExisting()
{
    m_file = ::open(m_path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (m_file < 0)
        return errno;
    struct stat status
    {};
    int error = 0;
    if (!Lock(m_file, LOCK_SH) || ::fstat(m_file, &status) != 0)
        error = errno;
    else if (status.st_nlink == 0)
        error = ENOENT;
    else
    {
        m_memory = Map(m_file, m_size);
        error = m_memory ? 0 : errno;
    }
    if (error != 0)
        ::close(std::exchange(m_file, -1));
    return error;
}

/// Prepares the file under a name of its own and then gives it the one that others look for.
int SharedPage::Make(bool (*initialise)(void* memory))
{
    static std::atomic<unsigned> s_count{0};
    const std::string path = m_path + '.' + std::to_string(::getpid()) + '.' + std::to_string(++s_count);
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0)
        return errno;
    // Allocated now: touching a page that no memory is left for would end the process.
    int error = ::posix_fallocate(file, 0, static_cast<off_t>(m_size));
    void* const memory = error == 0 ? Map(file, m_size) : nullptr;
    if (error == 0)
    {
        const bool made = memory && initialise(memory) && ::link(path.c_str(), m_path.c_str()) == 0;
        error = made ? 0 : errno;
    }
    if (memory)
        ::munmap(memory, m_size);
    ::unlink(path.c_str());
    ::close(file);
    return error;
}

void SharedPage::Close()
{
    if (!m_memory)
        return;
    ::munmap(std::exchange(m_memory, nullptr), m_size);
    if (Lock(m_file, LOCK_EX | LOCK_NB))
        ::unlink(m_path.c_str());
    ::close(std::exchange(m_file, -1));
}

} // namespace Platform
