#pragma once

#include "devkit/core/CommandTable.h"
#include "devkit/core/DataFolder.h"
#include "devkit/core/Elevation.h"
#include "devkit/core/Feeds.h"
#include "devkit/core/MadeEvents.h"
#include "devkit/core/PlugInEnvironment.h"
#include "devkit/core/PlugInLoader.h"
#include "devkit/core/PlugInManager.h"
#include "devkit/core/RegistryValues.h"
#include "devkit/core/RunningRecording.h"
#include "devkit/core/Sessions.h"
#include "devkit/core/StoreAccess.h"
#include "devkit/core/StoreWrites.h"
#include "devkit/core/UrlRecorder.h"
#include "devkit/core/VariableHub.h"

#include <atomic>

/// Everything that a plug-in meets: the variables, the suite's libraries and the surroundings it finds on the machine;
/// and the clients that drive it. Its parts in the order in which they come to life; the plug-in goes first. UI thread
/// only, but for RequestQuit().
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
    /// Ends Run(), also one that comes later; nothing further is begun. The greatest code that was asked for counts.
    void RequestQuit(int exitCode = 0);
    bool IsQuitting() const { return m_quitting; }

    /// The commands that are the same for every client.
    const CommandTable& Commands() const { return m_commands; }

    /// A client watches something else, or is gone. Why that cannot be, else empty.
    QString OnWatchesChanged();

    const DataFolder& folder;
    const QString userSid;
    RegistryValues registry;
    PlugInEnvironment environment;
    Sessions sessions;
    StoreAccess store;
    StoreWrites storeWrites;
    Elevation elevation;
    VariableHub hub;
    PlugInManager manager;
    UrlRecorder urls;
    MadeEvents events;
    PlugInLoader plugIn;
    Feeds feeds;
    RunningRecording recording;

private:
    CommandTable m_commands;
    std::atomic<bool> m_quitting{false};
    std::atomic<int> m_exitCode{0};
};
