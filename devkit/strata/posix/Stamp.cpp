#include "devkit/strata/Stamp.h"

#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Strata
{

namespace
{

using SharedWord = std::atomic<uint32_t>;
static_assert(SharedWord::is_always_lock_free && sizeof(SharedWord) == sizeof(uint32_t), "shared between processes");

class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(other.m_descriptor) { other.m_descriptor = -1; }
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

class MappedStamp final : public Stamp
{
public:
    MappedStamp(FileDescriptor file, void* view, bool writable)
        : m_file(std::move(file)), m_view(view), m_writable(writable)
    {}
    ~MappedStamp() override { munmap(m_view, sizeof(SharedWord)); }

    uint32_t Word() const override { return static_cast<const SharedWord*>(m_view)->load(std::memory_order_acquire); }

    void Publish(uint32_t word) override
    {
        // Written as to any file, for the watchers' sake; the views see it at once, being the same memory.
        if (m_writable && pwrite(m_file.Get(), &word, sizeof word, 0) != sizeof word)
            static_cast<SharedWord*>(m_view)->store(word, std::memory_order_release);
    }

private:
    FileDescriptor m_file;
    void* m_view;
    bool m_writable;
};

class InotifyWatch final : public StampWatch
{
public:
    explicit InotifyWatch(const std::string& path)
        : m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), m_inotify(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
          m_watching(m_wake.Get() >= 0 && m_inotify.Get() >= 0 &&
                     inotify_add_watch(m_inotify.Get(), path.c_str(), IN_MODIFY) >= 0)
    {}

    void Wait() override
    {
        constexpr int Unwatched = 10; // ms between two looks at the word
        pollfd sources[] = {{m_wake.Get(), POLLIN, 0}, {m_inotify.Get(), POLLIN, 0}};
        poll(sources, 2, m_watching ? -1 : Unwatched);
        Drain(m_wake.Get());
        Drain(m_inotify.Get());
    }

    void Wake() override
    {
        const uint64_t once = 1;
        [[maybe_unused]] const auto written = write(m_wake.Get(), &once, sizeof once);
    }

private:
    static void Drain(int descriptor)
    {
        alignas(inotify_event) char events[4096];
        while (read(descriptor, events, sizeof events) == static_cast<ssize_t>(sizeof events))
        {}
    }

    FileDescriptor m_wake;
    FileDescriptor m_inotify;
    bool m_watching;
};

} // namespace

std::unique_ptr<Stamp> Stamp::Open(const std::string& path)
{
    constexpr mode_t AsTheStore = 0644; // the mode that SQLite gives the store itself, less the process's mask
    FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, AsTheStore));
    const bool writable = file.Get() >= 0;
    FileDescriptor source = writable ? std::move(file) : FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    constexpr auto Size = static_cast<off_t>(sizeof(SharedWord));
    struct stat status = {};
    // A view beyond the file's end is deadly to look at.
    if (source.Get() < 0 || fstat(source.Get(), &status) != 0 ||
        (status.st_size < Size && (!writable || ftruncate(source.Get(), Size) != 0)))
        return nullptr;
    const int access = writable ? PROT_READ | PROT_WRITE : PROT_READ;
    void* view = mmap(nullptr, sizeof(SharedWord), access, MAP_SHARED, source.Get(), 0);
    return view == MAP_FAILED ? nullptr : std::make_unique<MappedStamp>(std::move(source), view, writable);
}

std::unique_ptr<StampWatch> StampWatch::Open(const std::string& path)
{
    return std::make_unique<InotifyWatch>(path);
}

} // namespace Strata
