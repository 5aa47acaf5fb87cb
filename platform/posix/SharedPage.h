#pragma once

#include <cstddef>
#include <string>

namespace Platform
{

/// Memory that the processes of one user share under a name, as long as one of them has it open. It lies in a file of a
/// folder in memory that only this user can write to; a lock on the file tells the last user, who removes it.
class SharedPage
{
public:
    SharedPage() = default;
    ~SharedPage();
    SharedPage(const SharedPage&) = delete;
    SharedPage& operator=(const SharedPage&) = delete;

    /// Who comes first makes the memory: `initialise` is called on it before anybody else sees it. Without one the
    /// memory has to exist. `kind` and `size` are part of the name. Returns 0 or an error number.
    int Open(const std::string& kind, const std::string& name, std::size_t size, bool (*initialise)(void* memory));

    void* Memory() const { return m_memory; }

private:
    int OpenExisting();
    int Make(bool (*initialise)(void* memory));
    void Close();

    std::string m_path;
    std::size_t m_size = 0;
    int m_file = -1;
    void* m_memory = nullptr;
};

} // namespace Platform
