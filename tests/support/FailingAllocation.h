#pragma once

#include <cstddef>

/// While this lives the calling thread's next allocations succeed and then one fails, as when memory runs out. Only in
/// programs that have FailingAllocation.cpp.
class FailingAllocation
{
public:
    explicit FailingAllocation(std::size_t after);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// False: fewer allocations were made.
    bool HasFailed() const;
};
