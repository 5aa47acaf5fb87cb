#include "devkit/process/CommandLine.h"

std::optional<QStringList> CommandLine(int argc, char** argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
    {
        words.append(QString::fromUtf8(argv[i]));
        if (words.last().toUtf8() != argv[i]) // two different words would become one
            return std::nullopt;
    }
    return words;
}
