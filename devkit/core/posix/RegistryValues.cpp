#include "devkit/core/RegistryValues.h"

#include <QDir>

RegistryValues::RegistryValues(const QString& folder) : m_folder(folder)
{
    QDir().mkpath(folder);
    qputenv("VERIDAN_REGISTRY_DIR", QFile::encodeName(folder));
}

std::unique_ptr<QSettings> RegistryValues::Open(Root root, const QString& key) const
{
    const QString file = root == Root::Machine ? QStringLiteral("/machine.ini") : QStringLiteral("/user.ini");
    auto settings = std::make_unique<QSettings>(m_folder + file, QSettings::IniFormat);
    settings->beginGroup(QString(key).replace(QLatin1Char('\\'), QLatin1Char('/')));
    return settings;
}
