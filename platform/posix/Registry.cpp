#include "platform/Registry.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <mutex>

namespace Platform
{

namespace
{

QString FileOf(RegistryRoot root)
{
    const QString name = root == RegistryRoot::Machine ? QStringLiteral("machine.ini") : QStringLiteral("user.ini");
    const QString folder = QFile::decodeName(qgetenv("VERIDAN_REGISTRY_DIR"));
    if (!folder.isEmpty())
        return folder + QLatin1Char('/') + name;
    if (root == RegistryRoot::Machine)
        return QStringLiteral("/etc/norlane/") + name;
    const QString configuration = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
    return (configuration.isEmpty() ? QDir::homePath() + QStringLiteral("/.config") : configuration) +
           QStringLiteral("/norlane/") + name;
}

/// Reads the file anew for each value, as the registry's readers ask only when a session of theirs starts.
class IniRegistry : public Registry
{
public:
    std::optional<std::uint32_t> ReadDword(RegistryRoot root, const wchar_t* key, const wchar_t* value) override
    {
        bool isNumber = false;
        const quint32 number = Read(root, key, value).toString().toUInt(&isNumber, 0);
        return isNumber ? std::optional(number) : std::nullopt;
    }

    std::optional<std::wstring> ReadString(RegistryRoot root, const wchar_t* key, const wchar_t* value) override
    {
        const QVariant entry = Read(root, key, value);
        if (!entry.isValid())
            return std::nullopt;
        // A file written by hand may lack the quotes that keep a comma from separating.
        return entry.toStringList().join(QStringLiteral(", ")).toStdWString();
    }

private:
    static QVariant Read(RegistryRoot root, const wchar_t* key, const wchar_t* value)
    {
        QString path = QString::fromWCharArray(key);
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        path += QLatin1Char('/') + QString::fromWCharArray(value);

        const QSettings settings(FileOf(root), QSettings::IniFormat);
        const QVariant exact = settings.value(path);
        if (exact.isValid())
            return exact;
        const QStringList entries = settings.allKeys();
        for (const QString& entry : entries)
            if (entry.compare(path, Qt::CaseInsensitive) == 0)
                return settings.value(entry);
        return {};
    }
};

} // namespace

template <>
Registry& System<Registry>()
{
    return Detail::NoDestructor<IniRegistry>();
}

} // namespace Platform
