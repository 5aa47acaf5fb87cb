#pragma once

#include <QPluginLoader>
#include <QString>

#include <memory>

class IPlugIn;
class PlugInManager;

/// The plug-in's library and its one object.
class PlugInLoader
{
public:
    struct Outcome
    {
        bool loaded = false;
        bool initialized = false;
        QString error; // why it is not loaded or not initialised
    };

    PlugInLoader(const QString& libraryFile, PlugInManager& manager);
    ~PlugInLoader();
    PlugInLoader(const PlugInLoader&) = delete;
    PlugInLoader& operator=(const PlugInLoader&) = delete;

    /// Loads the library, takes its object by the interface id, initialises it and runs what it asked to be run once
    /// the event loop is ready. A plug-in that refuses stays loaded, to be looked at, until Unload().
    Outcome Load();

    /// Deletes the object and unloads the library. The number of data peers that were never handed back.
    std::size_t Unload();

    bool IsLoaded() const { return m_plugIn != nullptr; }
    bool IsInitialized() const { return m_initialized; }

    /// From the library's metadata, which is read without loading it; empty when there is none.
    QString InterfaceId() const;
    QString ClassName() const;

private:
    Outcome Fail(const QString& why);

    const QString m_file;
    QPluginLoader m_library;
    PlugInManager& m_manager;
    IPlugIn* m_plugIn = nullptr; // owned: deleted with the library's object
    bool m_initialized = false;
};
