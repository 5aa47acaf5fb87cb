#include "platform/ElevationOwner.h"

#include "platform/win32/Win32.h"

#include <objbase.h>
#include <shobjidl.h>

namespace Platform
{

namespace
{

void RemoveFromTaskbar(HWND window)
{
    ITaskbarList* list = nullptr;
    if (FAILED(::CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList,
                                  reinterpret_cast<void**>(&list))))
        return;
    if (SUCCEEDED(list->HrInit()))
        list->DeleteTab(window);
    list->Release();
}

} // namespace

ElevationOwner::ElevationOwner()
    : m_window(::CreateWindowExW(0, L"STATIC", L".", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr))
{
    if (m_window)
    {
        RemoveFromTaskbar(static_cast<HWND>(m_window));
        ::ShowWindow(static_cast<HWND>(m_window), SW_SHOW);
    }
}

ElevationOwner::~ElevationOwner()
{
    if (m_window)
        ::DestroyWindow(static_cast<HWND>(m_window));
}

} // namespace Platform
