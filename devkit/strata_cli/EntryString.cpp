#include "devkit/strata_cli/EntryString.h"

#include "devkit/core/Json.h"
#include "devkit/core/Printable.h"

QByteArray EntryString::Plain(const StoreEntry& entry)
{
    const bool isString = entry.value.userType() == QMetaType::QString;
    return isString ? entry.value.toString().toUtf8() : Json::Write(entry.value);
}

QByteArray EntryString::AsJson(const StoreEntry& entry)
{
    QByteArray json = R"({"type":)" + Json::Write(entry.TypeName());
    if (entry.HasValue())
        json += R"(,"value":)" + Json::Write(entry.value);
    return json + R"(,"constraints":)" + QByteArray::number(entry.constraints) + '}';
}

QByteArray EntryString::AsLine(const QString& key, const StoreEntry& entry)
{
    const QByteArray value = entry.HasValue() ? Json::Write(entry.value) : QByteArray("no value");
    const QString constraints = StoreEntry::ConstraintsString(entry.constraints);
    const QString type = entry.TypeName() + (constraints.isEmpty() ? QString() : QLatin1String(", ") + constraints);
    return Printable(QString(key).replace(QLatin1Char('\n'), QLatin1String("\\n"))).toUtf8() + " = " + value + "  (" +
           type.toUtf8() + ")\n";
}

QByteArray EntryString::Export(const StoreAccess::Entries& entries)
{
    QByteArray json = "{";
    const char* separator = "\n  ";
    for (const auto& [key, entry] : entries)
    {
        json += separator + Json::Write(key) + ": " + AsJson(entry);
        separator = ",\n  ";
    }
    return json + (entries.empty() ? "}\n" : "\n}\n");
}
