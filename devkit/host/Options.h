#pragma once

#include <QString>

/// What the command line asks for.
struct Options
{
    bool jsonLines = false;
    bool temporary = false;
    bool openUrls = false;
    bool page = false; // serve it
    bool openPage = false;
    bool pageMayQuit = false;
    bool goesOn = false; // in the stead of another host, with its page
    QString dataFolder;
    QString plugInFile;
    QString recording;  // to replay
    bool renew = false; // and to write anew
    QString problem;    // what is wrong with the options; empty when nothing is

    /// Prints the help or the version and ends the process where the command line asks for it; so it does when an
    /// option is unknown.
    static Options FromCommandLine();
};
