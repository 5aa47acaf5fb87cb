#pragma once

#include <QString>

/// What the command line asks for.
struct Options
{
    bool jsonLines = false;
    bool temporary = false;
    bool openUrls = false;
    QString dataFolder;
    QString plugInFile;

    /// Prints the help or the version, or what is wrong, and ends the process where the command line asks for it.
    static Options FromCommandLine();
};
