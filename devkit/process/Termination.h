#pragma once

#include <functional>
#include <memory>

/// Turns the system's requests to end the process (Ctrl-C, a closed terminal, a termination signal) into calls, so that
/// the process ends in order. A request that the process was started to ignore, as by nohup, stays ignored. One at a
/// time. While it lives, writing to a closed pipe is an error of the write and no reason to end.
class Termination
{
public:
    /// `onRequest` is called on a thread of its own, for each request; it may find the rest of the process blocked.
    explicit Termination(std::function<void()> onRequest);
    ~Termination();
    Termination(const Termination&) = delete;
    Termination& operator=(const Termination&) = delete;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};
