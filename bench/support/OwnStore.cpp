#include "bench/support/OwnStore.h"

#include "text/Utf.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QProcess>
#include <QSettings>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <map>

namespace
{

[[noreturn]] void Stop(const QString& why)
{
    std::fprintf(stderr, "%s\n", qPrintable(why));
    std::exit(1);
}

QString BesideProgram(const char* file)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(file);
}

template <class Function>
void Resolve(QLibrary& library, Function*& function, const char* name)
{
    function = reinterpret_cast<Function*>(library.resolve(name));
    if (!function)
        Stop(QStringLiteral("The settings store has no function %1: %2")
                 .arg(QLatin1String(name), library.errorString()));
}

void Strata(const QStringList& arguments)
{
    if (QProcess::execute(BesideProgram("strata"), arguments) != 0)
        Stop(QStringLiteral("strata could not seed the store."));
}

} // namespace

StoreLibrary::StoreLibrary()
{
    QLibrary library(BesideProgram("nl_orb_strata_32"));
#define RESOLVE_FUNCTION(result, name, parameters) Resolve(library, g_orbStrata.name, #name);
    NL_ORB_STRATA_FUNCTIONS(RESOLVE_FUNCTION)
#undef RESOLVE_FUNCTION
#define RESOLVE_CONTROL(result, name, parameters) Resolve(library, control.name, #name);
    NL_ORB_STRATA_CONTROL_FUNCTIONS(RESOLVE_CONTROL)
#undef RESOLVE_CONTROL
}

OwnStore::OwnStore()
{
    qputenv("ORB_STRATA_STORE", m_folder.filePath(QStringLiteral("store.db")).toLocal8Bit());
    qputenv("VERIDAN_REGISTRY_DIR", m_folder.path().toLocal8Bit());
    QSettings registry(m_folder.filePath(QStringLiteral("machine.ini")), QSettings::IniFormat);
    registry.setValue(QStringLiteral("SOFTWARE/Norlane/ORB/Logging/RootPath"), m_folder.path());
}

void OwnStore::Seed() const
{
    Strata({QStringLiteral("seed")});
}

void OwnStore::Seed(const char* sid) const
{
    Strata({QStringLiteral("--scope"), QLatin1String(sid), QStringLiteral("seed")});
}

std::vector<BareSetting> SeededSettings()
{
    static const std::map<QString, OrbStrataType> s_types = {
        {"bool", ORB_STRATA_TYPE_BOOL},     {"int32", ORB_STRATA_TYPE_INT32}, {"int64", ORB_STRATA_TYPE_INT64},
        {"string", ORB_STRATA_TYPE_STRING}, {"utf8", ORB_STRATA_TYPE_UTF8},   {"object", ORB_STRATA_TYPE_OBJECT}};
    QFile file(BesideProgram("defaults.json"));
    if (!file.open(QIODevice::ReadOnly))
        Stop(file.fileName() + QLatin1String(": ") + file.errorString());
    const QJsonObject entries = QJsonDocument::fromJson(file.readAll()).object();
    std::vector<BareSetting> settings;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
    {
        const QString type = entry->toObject().value(QStringLiteral("type")).toString();
        settings.push_back({entry.key().toStdWString(), s_types.at(type)});
    }
    return settings;
}

BareScope::BareScope(const std::string& sid, bool elevated)
{
    OrbStrataResult result = ORB_STRATA_INVALID_HANDLE;
    const auto open = elevated ? OrbStrata_OpenElevatedHandle : OrbStrata_OpenHandle;
    m_handle = open(L"safe", Text::FromUtf8(sid).c_str(), L"bench", &result);
    if (result != ORB_STRATA_SUCCESS)
        Stop(QStringLiteral("The store does not open: %1").arg(result));
}

void BareScope::Read(const std::vector<BareSetting>& settings) const
{
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    for (const auto& [key, type] : settings)
    {
        switch (type)
        {
        case ORB_STRATA_TYPE_BOOL:
            OrbStrata_GetBool(m_handle, key.c_str(), false, &result);
            break;
        case ORB_STRATA_TYPE_INT32:
            OrbStrata_GetInt32(m_handle, key.c_str(), 0, &result);
            break;
        case ORB_STRATA_TYPE_INT64:
            OrbStrata_GetInt64(m_handle, key.c_str(), 0, &result);
            break;
        case ORB_STRATA_TYPE_STRING:
            OrbStrata_FreeString(OrbStrata_GetString(m_handle, key.c_str(), L"", &result));
            break;
        case ORB_STRATA_TYPE_UTF8:
            OrbStrata_FreeString(OrbStrata_GetStringUtf8(m_handle, key.c_str(), "", &result));
            break;
        default:
            OrbStrata_DeleteObject(OrbStrata_GetObject(m_handle, key.c_str(), &result));
            break;
        }
        if (result != ORB_STRATA_SUCCESS)
            Stop(QStringLiteral("%1 could not be read: %2").arg(QString::fromStdWString(key)).arg(result));
        OrbStrata_GetConstraints(m_handle, key.c_str(), &result);
    }
}
