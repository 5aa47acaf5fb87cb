#pragma once

#include <functional>
#include <memory>

/// Turns the system's requests to end the process (Ctrl-C, a closed terminal, a termination signal) into a call on the
/// UI thread through the event loop. One at a time. While it lives, writing to a closed pipe is an error of the write
/// and no reason to end.
class Termination
{
public:
    explicit Termination(std::function<void()> onRequest);
    ~Termination();
    Termination(const Termination&) = delete;
    Termination& operator=(const Termination&) = delete;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};
