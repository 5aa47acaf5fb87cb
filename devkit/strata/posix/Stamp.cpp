#include "devkit/strata/Stamp.h"

#include <cerrno>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Strata
{

namespace
{

int OpenOwn(const char* path, int access)
{
    constexpr mode_t kAsTheStore = 0644; // the mode that SQLite gives the store itself, less the process's mask
    // Something else in the place, a pipe say, is not to be waited for.
    return open(path, access | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kAsTheStore);
}

/// Whether writing to the file changes no other one.
bool IsOnlyOurs(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1;
}

int OpenForWriting(const char* path)
{
    const int there = OpenOwn(path, O_WRONLY | O_CREAT);
    if (there >= 0 && IsOnlyOurs(there))
        return there;
    if (there >= 0)
        close(there);
    unlink(path);
    return OpenOwn(path, O_WRONLY | O_CREAT | O_EXCL);
}

class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

class FolderWatch final : public StampWatch
{
public:
    explicit FolderWatch(std::string stampPath)
        : m_stampPath(std::move(stampPath)), m_folder(std::filesystem::path(m_stampPath).parent_path()),
          m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), m_inotify(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        Watch();
    }

    void Wait() override
    {
        constexpr int kUnwatched = 10;  // ms between two looks
        constexpr int kUnstamped = 250; // the same for a store that nobody has written yet: an idle host does nothing
        if (Watch())
            return; // what happened before is not told
        // The system does not tell that a folder was deleted while a file that was in it is open: without a stamp in
        // its place, this may be such a folder.
        const bool isThere = m_watch >= 0 && access(m_stampPath.c_str(), F_OK) == 0;
        pollfd sources[] = {{m_wake.Get(), POLLIN, 0}, {m_inotify.Get(), POLLIN, 0}};
        poll(sources, 2, isThere ? -1 : m_watch >= 0 ? kUnstamped : kUnwatched);
        Drain(m_wake.Get());
        Drain(m_inotify.Get());
    }

    void Wake() override
    {
        const uint64_t once = 1;
        [[maybe_unused]] const auto written = write(m_wake.Get(), &once, sizeof once);
    }

private:
    /// Watches the folder that is at the path now. True: it is another one than before.
    bool Watch()
    {
        constexpr uint32_t kStamped = IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MOVE_SELF;
        const int before = std::exchange(m_watch, inotify_add_watch(m_inotify.Get(), m_folder.c_str(), kStamped));
        if (before >= 0 && before != m_watch)
            inotify_rm_watch(m_inotify.Get(), before);
        return m_watch >= 0 && m_watch != before;
    }

    static void Drain(int descriptor)
    {
        alignas(inotify_event) char events[4096];
        while (read(descriptor, events, sizeof events) == static_cast<ssize_t>(sizeof events))
        {}
    }

    const std::string m_stampPath;
    const std::string m_folder;
    FileDescriptor m_wake;
    FileDescriptor m_inotify;
    int m_watch = -1;
};

} // namespace

Stamp::Stamp(const std::string& path, Use use)
    : m_file(use == Use::Writing ? OpenForWriting(path.c_str()) : OpenOwn(path.c_str(), O_RDONLY))
{}

Stamp::Stamp(Stamp&& other) noexcept : m_file(std::exchange(other.m_file, kNone)) {}

Stamp& Stamp::operator=(Stamp&& other) noexcept
{
    std::swap(m_file, other.m_file);
    return *this;
}

void Stamp::Close()
{
    if (m_file != kNone)
        close(static_cast<int>(std::exchange(m_file, kNone)));
}

bool Stamp::Read(int64_t& revision) const
{
    const int file = static_cast<int>(m_file);
    struct stat status = {};
    return file >= 0 && fstat(file, &status) == 0 && status.st_nlink != 0 &&
           pread(file, &revision, sizeof revision, 0) == sizeof revision;
}

bool Stamp::Write(int64_t revision)
{
    return m_file != kNone && pwrite(static_cast<int>(m_file), &revision, sizeof revision, 0) == sizeof revision;
}

std::unique_ptr<StampWatch> StampWatch::Open(const std::string& stampPath)
{
    return std::make_unique<FolderWatch>(stampPath);
}

} // namespace Strata
