#include "devkit/core/RegistryValues.h"

bool RegistryValues::Set(Root root, const QString& key, const QString& value, const QVariant& data)
{
    const auto settings = Open(root, key);
    settings->setValue(value, data);
    settings->sync();
    return settings->status() == QSettings::NoError;
}

bool RegistryValues::Remove(Root root, const QString& key, const QString& value)
{
    const auto settings = Open(root, key);
    settings->remove(value);
    settings->sync();
    return settings->status() == QSettings::NoError;
}

QVariant RegistryValues::Get(Root root, const QString& key, const QString& value) const
{
    return Open(root, key)->value(value);
}
