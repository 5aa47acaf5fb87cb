#include "devkit/process/CommandLine.h"

#include <windows.h>

#include <shellapi.h>

std::optional<QStringList> CommandLine(int /*argc*/, char** /*argv*/)
{
    QStringList words;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide && i < count; ++i)
        words.append(QString::fromWCharArray(wide[i]));
    LocalFree(wide);
    return words;
}
