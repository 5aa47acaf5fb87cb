#include "devkit/core/Host.h"

#include "devkit/core/UserSid.h"
#include "devkit/flyer/NlFlyerControl.h"
#include "tarn/VariableIdentifier.h"

#include <QCoreApplication>

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
      environment(registry, folder, setup.libraryFolder), store(folder.StoreFile(), userSid), hub(setup.warn),
      manager(hub, setup.warn), urls(setup.openUrls), plugIn(setup.plugInFile, manager)
{
    if (environment.IsIncomplete())
        setup.warn(QStringLiteral("The registry could not be written; the plug-in starts with its defaults."));
    qRegisterMetaType<VariableIdentifier>(); // here, and not first by a library that goes away
    NlFlyerControl_SetActionHandler(&FireTrigger, &hub);
}

Host::~Host()
{
    hub.SetObserver(nullptr);
    plugIn.Unload();
    NlFlyerControl_SetActionHandler(nullptr, nullptr);
}

int Host::Run() const
{
    return m_quitting ? 0 : QCoreApplication::exec();
}

void Host::RequestQuit()
{
    m_quitting = true;
    QCoreApplication::exit(0);
}
