#pragma once

#include "devkit/core/RegistryValues.h"

#include <QStringList>

class DataFolder;

/// What the plug-in finds in the registry when it starts: where its log goes and where the suite's libraries lie.
class PlugInEnvironment
{
public:
    /// Writes the log root and the paths of the libraries, which lie in `libraryFolder`.
    PlugInEnvironment(RegistryValues& registry, const DataFolder& folder, const QString& libraryFolder);

    /// The registry could not be written; the plug-in then uses its defaults.
    bool IsIncomplete() const { return m_incomplete; }

    /// Leads the named libraries ("strata", "metrics", "flyer") astray as long as the object lives.
    class MissingLibraries
    {
    public:
        MissingLibraries(RegistryValues& registry, const QStringList& names);
        ~MissingLibraries();
        MissingLibraries(const MissingLibraries&) = delete;
        MissingLibraries& operator=(const MissingLibraries&) = delete;

    private:
        RegistryValues& m_registry;
        QVariantMap m_paths; // what was there, by library
    };

private:
    bool m_incomplete = false;
};
