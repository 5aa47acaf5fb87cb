#pragma once

#include "bench/support/PageHost.h"
#include "tarn/IPlugIn.h"

#include <QCoreApplication>
#include <QPluginLoader>

/// The built plug-in, up and running in a host of this process.
class LoadedPlugIn
{
public:
    LoadedPlugIn()
    {
        m_loader.setLoadHints({}); // the default would keep the library in memory
        IPlugIn* const plugIn = qobject_cast<IPlugIn*>(m_loader.instance());
        if (!plugIn || !plugIn->Initialize(&host))
            qFatal("The plug-in does not start: %s", qPrintable(m_loader.errorString()));
        PageHost::EventLoopIsReady();
    }
    ~LoadedPlugIn() { m_loader.unload(); }
    LoadedPlugIn(const LoadedPlugIn&) = delete;
    LoadedPlugIn& operator=(const LoadedPlugIn&) = delete;

    PageHost host;

private:
    QPluginLoader m_loader{QCoreApplication::applicationDirPath() + QLatin1String("/Veridan")};
};
