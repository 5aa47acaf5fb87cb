#include "tests/support/FailingAllocation.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace
{

thread_local std::int64_t g_left = -1; // allocations until one fails; negative: none does

void* Allocate(std::size_t size)
{
    if (g_left >= 0 && g_left-- == 0)
        return nullptr;
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

FailingAllocation::FailingAllocation(std::size_t after)
{
    g_left = static_cast<std::int64_t>(after);
}

FailingAllocation::~FailingAllocation()
{
    g_left = -1;
}

bool FailingAllocation::HasFailed() const
{
    return g_left < 0;
}

void* operator new(std::size_t size)
{
    void* const memory = Allocate(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
