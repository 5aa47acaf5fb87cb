#include "devkit/host/OpenFile.h"

#include <QDir>

#include <string>

#include <windows.h>

#include <shellapi.h>

bool OpenFile(const QString& path)
{
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    constexpr INT_PTR kLastError = 32;
    return reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", native.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) >
           kLastError;
}
