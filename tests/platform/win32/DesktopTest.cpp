#include "platform/Clipboard.h"
#include "platform/ElevationOwner.h"
#include "platform/KernelHandle.h"
#include "platform/NamedEvents.h"
#include "platform/win32/Win32.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace
{

void PutString(const char* text)
{
    ASSERT_TRUE(::OpenClipboard(nullptr));
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, std::strlen(text) + 1);
    std::strcpy(static_cast<char*>(::GlobalLock(memory)), text);
    ::GlobalUnlock(memory);
    EXPECT_NE(::SetClipboardData(CF_TEXT, memory), nullptr);
    ::CloseClipboard();
}

TEST(Clipboard, IsEmptyForAllFormatsAfterwards)
{
    PutString("IBAN");
    ASSERT_TRUE(::IsClipboardFormatAvailable(CF_UNICODETEXT));
    Platform::Clipboard& clipboard = Platform::Get<Platform::Clipboard>();
    ASSERT_TRUE(clipboard.Open());
    clipboard.Empty();
    clipboard.Close();
    EXPECT_EQ(::CountClipboardFormats(), 0);
}

TEST(Clipboard, CannotBeOpenedWhileAnotherHasIt)
{
    Platform::Clipboard& clipboard = Platform::Get<Platform::Clipboard>();
    const HWND owner = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ASSERT_NE(owner, nullptr);
    ASSERT_TRUE(::OpenClipboard(owner));
    std::thread([&] { EXPECT_FALSE(clipboard.Open()); }).join();
    ::CloseClipboard();
    ::DestroyWindow(owner);
    EXPECT_TRUE(clipboard.Open());
    clipboard.Close();
}

TEST(NamedEvents, AnotherUserOfTheNameSeesTheSignal)
{
    constexpr const wchar_t* kName = L"Local\\Veridan_NamedEventsTest";
    Platform::NamedEvents& events = Platform::Get<Platform::NamedEvents>();
    EXPECT_EQ(events.Open(kName), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});

    const HANDLE service = ::CreateEventW(nullptr, TRUE, FALSE, kName);
    const Platform::KernelHandle event = events.Open(kName);
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(::WaitForSingleObject(service, 0), DWORD{WAIT_TIMEOUT});
    EXPECT_TRUE(Platform::Signal(event));
    EXPECT_EQ(::WaitForSingleObject(service, 0), DWORD{WAIT_OBJECT_0});
    EXPECT_EQ(::WaitForSingleObject(service, 0), DWORD{WAIT_OBJECT_0}) << "it has to stay set";
    EXPECT_TRUE(Platform::Close(event));
    EXPECT_FALSE(Platform::Signal(nullptr));
    ::CloseHandle(service);
}

BOOL CALLBACK Collect(HWND window, LPARAM list)
{
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<HWND> WindowsOfThisThread()
{
    std::vector<HWND> windows;
    ::EnumThreadWindows(::GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

TEST(ElevationOwner, IsAWindowOfOnePixelAsLongAsItLives)
{
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    const std::size_t before = WindowsOfThisThread().size();
    auto owner = std::make_unique<Platform::ElevationOwner>();
    const std::vector<HWND> windows = WindowsOfThisThread();
    ASSERT_GT(windows.size(), before) << "this test needs a display";
    RECT area{};
    EXPECT_TRUE(::GetWindowRect(windows.front(), &area));
    EXPECT_LE(area.right - area.left, 1);
    EXPECT_LE(area.bottom - area.top, 1);
    owner.reset();
    EXPECT_FALSE(::IsWindow(windows.front()));
    ::CoUninitialize();
}

} // namespace
