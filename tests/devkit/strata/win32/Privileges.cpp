#include "tests/devkit/strata/Privileges.h"

#include <windows.h>

// There is nothing to give up, but Wine on behalf of a superuser writes to what is read-only.
bool DropPrivileges()
{
    wchar_t folder[MAX_PATH + 1];
    wchar_t path[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"ro", 0, path) == 0)
        return false;
    SetFileAttributesW(path, FILE_ATTRIBUTE_READONLY);
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const bool writable = file != INVALID_HANDLE_VALUE;
    if (writable)
        CloseHandle(file);
    SetFileAttributesW(path, FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(path);
    return !writable;
}
