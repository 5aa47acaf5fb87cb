#include "devkit/process/Termination.h"

#include <mutex>
#include <utility>

#include <windows.h>

namespace
{

std::mutex s_mutex; // guards what follows
const std::function<void()>* s_onRequest = nullptr;

/// Called on a thread of the system's.
BOOL WINAPI OnConsole(DWORD)
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    if (s_onRequest)
        (*s_onRequest)();
    return TRUE;
}

void Set(const std::function<void()>* onRequest)
{
    const std::lock_guard<std::mutex> lock(s_mutex);
    s_onRequest = onRequest;
}

} // namespace

struct Termination::Implementation
{
    std::function<void()> onRequest;
};

Termination::Termination(std::function<void()> onRequest)
    : m_implementation(std::make_unique<Implementation>(Implementation{std::move(onRequest)}))
{
    Set(&m_implementation->onRequest);
    SetConsoleCtrlHandler(&OnConsole, TRUE);
}

Termination::~Termination()
{
    SetConsoleCtrlHandler(&OnConsole, FALSE);
    Set(nullptr);
}
