#include "devkit/strata/RealPath.h"

#include "text/Utf.h"

#include <windows.h>

std::string Strata::RealPath(const std::string& path)
{
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD kLongest = 32768;
    const HANDLE file = CreateFileW(Text::FromUtf8(path).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return path;
    std::wstring real(kLongest, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file, real.data(), kLongest, FILE_NAME_NORMALIZED);
    CloseHandle(file);
    real.resize(length < kLongest ? length : 0);
    // "\\?\C:\...", as nobody writes it; of a share it has to stay.
    if (real.compare(0, 8, L"\\\\?\\UNC\\") != 0)
        real.erase(0, 4);
    return real.empty() ? path : Text::ToUtf8(real);
}
