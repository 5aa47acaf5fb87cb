#pragma once

#include "devkit/core/Result.h"

#include <QTemporaryDir>

#include <memory>

/// Where a run leaves everything behind: the store, the logs and, where there is no system registry, registry files.
class DataFolder
{
public:
    /// A folder that stays.
    explicit DataFolder(const QString& path);
    /// A fresh folder, deleted with this object.
    DataFolder();

    /// The folder of the user that is used when none is named; empty for a user without a home.
    static QString DefaultPath();

    /// Makes the folder and looks whether files can be made in it. The reason when not, else empty.
    QString Prepare() const;

    QString Path() const { return m_path; }
    QString StoreFile() const { return m_path + QLatin1String("/store.db"); }
    QString LogRoot() const { return m_path + QLatin1String("/log-root"); }
    QString LogFile() const { return LogRoot() + QLatin1String("/Norlane/Log/NLCC/Veridan.log"); }
    QString RegistryFolder() const { return m_path + QLatin1String("/registry"); }

private:
    std::unique_ptr<QTemporaryDir> m_temporary;
    QString m_path;
};
