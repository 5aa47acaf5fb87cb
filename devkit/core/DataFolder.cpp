#include "devkit/core/DataFolder.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>

DataFolder::DataFolder(const QString& path) : m_path(QDir(path).absolutePath()) {}

DataFolder::DataFolder()
    : m_temporary(std::make_unique<QTemporaryDir>(QDir::tempPath() + QLatin1String("/veridan-XXXXXX"))),
      m_path(m_temporary->path())
{}

QString DataFolder::DefaultPath()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const bool isOwn = QDir::homePath() != QDir::rootPath() || !qEnvironmentVariableIsEmpty("XDG_DATA_HOME");
    return isOwn && QDir::isAbsolutePath(base) ? base + QLatin1String("/veridan") : QString();
}

QString DataFolder::Prepare() const
{
    if (!QDir().mkpath(m_path))
        return QStringLiteral("The data folder \"%1\" cannot be created.").arg(QDir::toNativeSeparators(m_path));
    QTemporaryFile probe(m_path + QLatin1String("/.probe-XXXXXX"));
    if (!probe.open())
    {
        return QStringLiteral("The data folder \"%1\" cannot be written: %2.")
            .arg(QDir::toNativeSeparators(m_path), probe.errorString());
    }
    return {};
}
