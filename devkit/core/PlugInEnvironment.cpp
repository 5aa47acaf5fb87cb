#include "devkit/core/PlugInEnvironment.h"

#include "devkit/core/DataFolder.h"

#include <QDir>

#include <array>

namespace
{

struct Library
{
    const char* name; // as the commands call it
    const char* file;
};

constexpr std::array<Library, 3> kLibraries{{
    {"strata", "nl_orb_strata_32" VERIDAN_MODULE_SUFFIX},
    {"metrics", "nl_orb_datapipeline_api_32" VERIDAN_MODULE_SUFFIX},
    {"flyer", "nl_flyer_api_32" VERIDAN_MODULE_SUFFIX},
}};

QString LoggingKey()
{
    return QStringLiteral("SOFTWARE\\Norlane\\ORB\\Logging");
}
QString DelayLoadKey()
{
    return QStringLiteral("Software\\Norlane\\ORB\\Delay Loading");
}

} // namespace

PlugInEnvironment::PlugInEnvironment(RegistryValues& registry, const DataFolder& folder, const QString& libraryFolder)
{
    const QString logRoot = QDir::toNativeSeparators(folder.LogRoot());
    QDir().mkpath(folder.LogRoot());
    for (const RegistryValues::Root root : {RegistryValues::Root::Machine, RegistryValues::Root::User})
        m_incomplete |= !registry.Set(root, LoggingKey(), QStringLiteral("RootPath"), logRoot);
    for (const Library& library : kLibraries)
    {
        const QString file = QLatin1String(library.file);
        const QString path = QDir::toNativeSeparators(libraryFolder + QLatin1Char('/') + file);
        m_incomplete |= !registry.Set(RegistryValues::Root::Machine, DelayLoadKey(), file, path);
    }
}

PlugInEnvironment::MissingLibraries::MissingLibraries(RegistryValues& registry, const QStringList& names)
    : m_registry(registry)
{
    for (const Library& library : kLibraries)
    {
        if (names.contains(QLatin1String(library.name)))
        {
            const QString file = QLatin1String(library.file);
            const QVariant path = registry.Get(RegistryValues::Root::Machine, DelayLoadKey(), file);
            m_paths.insert(file, path);
            registry.Set(RegistryValues::Root::Machine, DelayLoadKey(), file,
                         path.toString() + QLatin1String(".missing"));
        }
    }
}

PlugInEnvironment::MissingLibraries::~MissingLibraries()
{
    for (auto it = m_paths.begin(); it != m_paths.end(); ++it)
        m_registry.Set(RegistryValues::Root::Machine, DelayLoadKey(), it.key(), it.value());
}
