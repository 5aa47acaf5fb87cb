#include "devkit/core/Host.h"

#include "devkit/core/HostCommands.h"
#include "devkit/core/StoreCommands.h"
#include "devkit/core/UserSid.h"
#include "devkit/flyer/NlFlyerControl.h"
#include "tarn/VariableIdentifier.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

/// A flyer's button acts as a page does.
void NL_SUITE_CALL FireTrigger(void* context, const char* action)
{
    static_cast<VariableHub*>(context)->Trigger(QString::fromUtf8(action), true, Actor::Page);
}

} // namespace

Host::Host(const DataFolder& dataFolder, const Setup& setup)
    : folder(dataFolder), userSid(UserSid()), registry(folder.RegistryFolder()),
      environment(registry, folder, setup.libraryFolder), store(folder.StoreFile(), userSid), storeWrites(store),
      elevation(sessions), hub(setup.warn), manager(hub, setup.warn), urls(setup.openUrls),
      plugIn(setup.plugInFile, manager), feeds(*this), recording(*this, setup.warn)
{
    if (environment.IsIncomplete())
        setup.warn(QStringLiteral("The registry could not be written; the plug-in starts with its defaults."));
    qRegisterMetaType<VariableIdentifier>(); // here, and not first by a library that goes away
    NlFlyerControl_SetActionHandler(&FireTrigger, &hub);
    sessions.SetOnRemoved([this] { OnWatchesChanged(); });
    for (const auto& commands : {PlugInCommands(*this), VariableCommands(hub), StoreCommands(store),
                                 StoreTestCommands(*this), SuiteCommands(), SystemCommands(*this)})
        m_commands.Add(commands);
}

Host::~Host()
{
    recording.Stop();
    hub.SetObserver(nullptr);
    urls.SetObserver(nullptr);
    sessions.SetOnRemoved(nullptr);
    plugIn.Unload();
    NlFlyerControl_SetActionHandler(nullptr, nullptr);
}

int Host::Run() const
{
    return m_quitting ? m_exitCode.load() : QCoreApplication::exec();
}

void Host::RequestQuit(int exitCode)
{
    m_exitCode = std::max(m_exitCode.load(), exitCode);
    m_quitting = true;
    // Through the event loop also here: an exit() inside of a nested loop would end that one only.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [code = m_exitCode.load()] { QCoreApplication::exit(code); },
        Qt::QueuedConnection);
}

QString Host::OnWatchesChanged()
{
    elevation.OnWatchesChanged();
    return feeds.OnWatchesChanged();
}
