#include "tests/support/OwnRegistry.h"

#include <QSettings>
#include <QTemporaryDir>

struct OwnRegistry::Implementation
{
    QTemporaryDir folder;
};

OwnRegistry::OwnRegistry() : m_implementation(std::make_unique<Implementation>())
{
    qputenv("VERIDAN_REGISTRY_DIR", m_implementation->folder.path().toLocal8Bit());
}

OwnRegistry::~OwnRegistry()
{
    qunsetenv("VERIDAN_REGISTRY_DIR");
}

void OwnRegistry::Set(const QString& key, const QString& name, const QVariant& value)
{
    const QString entry = QString(key).replace(QLatin1Char('\\'), QLatin1Char('/')) + QLatin1Char('/') + name;
    for (const char* const file : {"machine.ini", "user.ini"})
    {
        QSettings settings(m_implementation->folder.filePath(QLatin1String(file)), QSettings::IniFormat);
        settings.setValue(entry, value);
    }
}
