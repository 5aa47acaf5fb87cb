#include "devkit/process/Termination.h"

#include <QCoreApplication>

#include <windows.h>

#include <utility>

namespace
{

std::function<void()>* g_onRequest = nullptr;

/// Called on a thread of the system's.
BOOL WINAPI OnConsole(DWORD)
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [] {
            if (g_onRequest != nullptr)
                (*g_onRequest)();
        },
        Qt::QueuedConnection);
    return TRUE;
}

} // namespace

struct Termination::Implementation
{
    std::function<void()> onRequest;
};

Termination::Termination(std::function<void()> onRequest)
    : m_implementation(std::make_unique<Implementation>(Implementation{std::move(onRequest)}))
{
    g_onRequest = &m_implementation->onRequest;
    SetConsoleCtrlHandler(&OnConsole, TRUE);
}

Termination::~Termination()
{
    SetConsoleCtrlHandler(&OnConsole, FALSE);
    g_onRequest = nullptr;
}
