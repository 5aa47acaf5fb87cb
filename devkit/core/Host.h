#pragma once

#include "devkit/core/DataFolder.h"
#include "devkit/core/NamedEvents.h"
#include "devkit/core/PlugInEnvironment.h"
#include "devkit/core/PlugInLoader.h"
#include "devkit/core/PlugInManager.h"
#include "devkit/core/Registry.h"
#include "devkit/core/StoreAccess.h"
#include "devkit/core/UrlRecorder.h"
#include "devkit/core/VariableHub.h"

/// Everything that a plug-in meets: the variables, the suite's libraries and the surroundings it finds on the machine.
/// Its parts in the order in which they come to life; the plug-in goes first. UI thread only.
class Host
{
public:
    struct Setup
    {
        QString plugInFile;
        QString libraryFolder; // of the suite's libraries
        bool openUrls = false;
        VariableHub::Warn warn;
    };

    Host(const DataFolder& folder, const Setup& setup);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Runs the event loop until the end is asked for. The exit code.
    int Run() const;
    /// Ends Run(), also one that comes later; nothing further is begun.
    void RequestQuit();
    bool IsQuitting() const { return m_quitting; }

    const DataFolder& folder;
    const QString userSid;
    Registry registry;
    PlugInEnvironment environment;
    StoreAccess store;
    VariableHub hub;
    PlugInManager manager;
    UrlRecorder urls;
    NamedEvents events;
    PlugInLoader plugIn;
    QStringList watched; // prefixes of the variables whose changes are reported as they happen

private:
    bool m_quitting = false;
};
