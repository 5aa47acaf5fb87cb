#include "devkit/core/RegistryValues.h"

RegistryValues::RegistryValues(const QString& folder) : m_folder(folder) {}

std::unique_ptr<QSettings> RegistryValues::Open(Root root, const QString& key) const
{
    const QString top =
        root == Root::Machine ? QStringLiteral("HKEY_LOCAL_MACHINE\\") : QStringLiteral("HKEY_CURRENT_USER\\");
    return std::make_unique<QSettings>(top + key, QSettings::Registry64Format);
}
