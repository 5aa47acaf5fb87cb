#include "devkit/core/PlugInLoader.h"

#include "devkit/core/EventLoop.h"
#include "devkit/core/PlugInManager.h"
#include "tarn/IPlugIn.h"

#include <QJsonObject>

PlugInLoader::PlugInLoader(const QString& libraryFile, PlugInManager& manager)
    : m_file(libraryFile), m_library(libraryFile), m_manager(manager)
{
    m_library.setLoadHints({}); // the default would keep the library in memory after it is unloaded
}

PlugInLoader::~PlugInLoader()
{
    Unload();
}

PlugInLoader::Outcome PlugInLoader::Load()
{
    QObject* object = m_library.instance();
    if (!object)
        return Fail(QStringLiteral("%1 does not load: %2").arg(m_file, m_library.errorString()));
    m_plugIn = qobject_cast<IPlugIn*>(object);
    if (!m_plugIn)
    {
        return Fail(QStringLiteral("%1 does not offer the interface \"%2\".")
                        .arg(m_file, QLatin1String(qobject_interface_iid<IPlugIn*>())));
    }
    m_initialized = m_plugIn->Initialize(&m_manager);
    RunUntilIdle();
    return {true, m_initialized,
            m_initialized ? QString() : QStringLiteral("The plug-in's Initialize answered false.")};
}

std::size_t PlugInLoader::Unload()
{
    m_plugIn = nullptr;
    m_initialized = false;
    if (m_library.isLoaded())
        m_library.unload();
    return m_manager.ReclaimPeers();
}

QString PlugInLoader::InterfaceId() const
{
    return m_library.metaData().value(QLatin1String("IID")).toString();
}

QString PlugInLoader::ClassName() const
{
    return m_library.metaData().value(QLatin1String("className")).toString();
}

PlugInLoader::Outcome PlugInLoader::Fail(const QString& why)
{
    Unload();
    return {false, false, why};
}
