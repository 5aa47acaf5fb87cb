#pragma once

#include <QSettings>
#include <QString>

#include <memory>

/// The registry that the plug-in reads: the system's own (64-bit view) on Windows, INI files in a folder elsewhere. A
/// group of such a file is a key with slashes, an entry a value.
class RegistryValues
{
public:
    enum class Root
    {
        Machine,
        User
    };

    /// `folder` holds the files where there is no system registry; the plug-in's platform layer is pointed to it.
    explicit RegistryValues(const QString& folder);

    /// `data` is a quint32 for a DWORD, else a text. False: the registry could not be written.
    bool Set(Root root, const QString& key, const QString& value, const QVariant& data);
    bool Remove(Root root, const QString& key, const QString& value);
    /// Invalid when there is no such value.
    QVariant Get(Root root, const QString& key, const QString& value) const;

private:
    std::unique_ptr<QSettings> Open(Root root, const QString& key) const;

    const QString m_folder;
};
