#include "devkit/core/StoreEntry.h"

#include "devkit/core/Json.h"
#include "devkit/core/Utf8.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace
{

using Made = Result<StoreEntry>;

bool IsInteger(const QVariant& value)
{
    return value.userType() == QMetaType::Int || value.userType() == QMetaType::LongLong;
}

/// What the store's C strings can carry: no NUL, no lone surrogate.
bool IsStorable(const QVariant& value)
{
    const QString string = value.toString();
    return value.userType() == QMetaType::QString && !string.contains(QChar(0)) && string.isValidUtf16();
}

bool IsRecord(const QVariant& value)
{
    const QVariantMap record = value.toMap();
    const auto fits = [](const QVariant& field) {
        return field.userType() == QMetaType::Bool || IsInteger(field) || IsStorable(field);
    };
    return value.userType() == QMetaType::QVariantMap && std::all_of(record.begin(), record.end(), fits) &&
           std::all_of(record.keyBegin(), record.keyEnd(), IsStorable);
}

bool IsObject(const QVariant& value)
{
    const QVariantList array = value.toList();
    const bool isArray = value.userType() == QMetaType::QVariantList;
    return isArray ? std::all_of(array.begin(), array.end(), IsRecord) : IsRecord(value);
}

struct TypeRow
{
    const char* name;
    const char* expected;
    bool (*fits)(const QVariant& value);
};

/// By the numbers of OrbStrataType.
constexpr TypeRow kTypes[] = {
    {"none", "nothing", [](const QVariant& value) { return !value.isValid(); }},
    {"bool", "true or false", [](const QVariant& value) { return value.userType() == QMetaType::Bool; }},
    {"int32", "a whole number from -2147483648 to 2147483647",
     [](const QVariant& value) { return value.userType() == QMetaType::Int; }},
    {"int64", "a whole number of 64 bits", IsInteger},
    {"string", "a string without NUL characters", IsStorable},
    {"utf8", "a string without NUL characters", IsStorable},
    {"object", "an object, or an array of objects, whose members are booleans, whole numbers and strings", IsObject},
};

const TypeRow* RowNamed(const QString& name)
{
    const auto* const row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                         [&name](const TypeRow& known) { return name == QLatin1String(known.name); });
    return row == std::end(kTypes) ? nullptr : row;
}

/// The type that a value of a key without one takes.
const char* GuessType(const QVariant& value)
{
    return value.userType() == QMetaType::Bool  ? "bool"
           : value.userType() == QMetaType::Int ? "int32"
           : IsInteger(value)                   ? "int64"
           : IsObject(value)                    ? "object"
                                                : "string";
}

QVariant ValueOf(const OrbStrataEntry& entry)
{
    switch (entry.type)
    {
    case ORB_STRATA_TYPE_BOOL:
        return entry.number != 0;
    case ORB_STRATA_TYPE_INT32:
        return static_cast<int>(entry.number);
    case ORB_STRATA_TYPE_INT64:
        return static_cast<qlonglong>(entry.number);
    case ORB_STRATA_TYPE_STRING:
    case ORB_STRATA_TYPE_UTF8:
        return FromUtf8(entry.text, static_cast<int>(std::strlen(entry.text)));
    case ORB_STRATA_TYPE_OBJECT:
        return Json::Parse(entry.text).value;
    case ORB_STRATA_TYPE_NONE:
        break;
    }
    return {};
}

} // namespace

QString StoreEntry::TypeName() const
{
    return QLatin1String(kTypes[type].name);
}

StoreEntry StoreEntry::FromC(const OrbStrataEntry& entry)
{
    return {entry.type, ValueOf(entry), entry.constraints};
}

Result<StoreEntry> StoreEntry::Make(const QString& type, const QVariant& value)
{
    const TypeRow* const row = RowNamed(type);
    if (!row)
        return Made::Failure(QStringLiteral("\"%1\" is not a type of the store.").arg(type), FailureKind::Misused);
    if (!row->fits(value))
    {
        return Made::Failure(
            QStringLiteral("A value of type \"%1\" must be %2.").arg(type, QLatin1String(row->expected)),
            FailureKind::Refused);
    }
    return {{static_cast<OrbStrataType>(row - kTypes), value, 0}, {}};
}

Result<StoreEntry> StoreEntry::FromWord(const QString& type, const QString& word)
{
    // A number with a blank before it is no number here: what is written is meant as it stands.
    const bool plain = word == word.trimmed();
    const Json::Parsed parsed = Json::Parse(word.toUtf8());
    const QVariant value = plain && parsed.error.isEmpty() ? parsed.value : QVariant(word);
    const QString name = type.isEmpty() ? QString(QLatin1String(GuessType(value))) : type;
    const bool isString = name == QLatin1String("string") || name == QLatin1String("utf8");
    return Make(name, isString ? QVariant(word) : value);
}

Result<StoreEntry> StoreEntry::FromJson(const QVariant& json)
{
    static const QStringList s_members{QStringLiteral("constraints"), QStringLiteral("found"), QStringLiteral("type"),
                                       QStringLiteral("value")};
    const QVariantMap members = json.toMap();
    const auto unknown = std::find_if(members.keyBegin(), members.keyEnd(),
                                      [](const QString& member) { return !s_members.contains(member); });
    const QVariant constraints = members.value(s_members[0], 0);
    const QVariant type = members.value(s_members[2]);
    const auto refuse = [](const QString& why) { return Made::Failure(why, FailureKind::Refused); };
    if (json.userType() != QMetaType::QVariantMap || type.userType() != QMetaType::QString)
        return refuse(QStringLiteral("An entry is an object with \"type\", \"value\" and \"constraints\"."));
    if (unknown != members.keyEnd())
        return refuse(QStringLiteral("An entry has no \"%1\".").arg(*unknown));
    if (!IsInteger(constraints) || constraints.toLongLong() < 0 ||
        constraints.toLongLong() > std::numeric_limits<quint32>::max())
        return refuse(QStringLiteral("The constraints must be a whole number of 32 bits."));
    if (type != QLatin1String("none") && !members.contains(s_members[3]))
        return refuse(QStringLiteral("The entry has no \"value\"."));
    Made made = Make(type.toString(), members.value(s_members[3]));
    made.value.constraints = constraints.toUInt();
    made.kind = FailureKind::Refused;
    return made;
}

QVariantMap StoreEntry::Describe() const
{
    return {{QStringLiteral("found"), HasValue()},
            {QStringLiteral("type"), HasValue() ? QVariant(TypeName()) : QVariant()},
            {QStringLiteral("value"), value},
            {QStringLiteral("constraints"), constraints}};
}

QString StoreEntry::ConstraintsString(quint32 constraints)
{
    QStringList parts;
    if ((constraints & ORB_STRATA_CONSTRAINT_ENFORCED) != 0)
        parts.append(QStringLiteral("enforced"));
    if ((constraints & ~quint32{ORB_STRATA_CONSTRAINT_ENFORCED}) != 0)
        parts.append(QStringLiteral("constraints %1").arg(constraints));
    return parts.join(QLatin1String(", "));
}

EntriesForC::EntriesForC(const std::map<QString, StoreEntry>& entries)
{
    for (const auto& [key, entry] : entries)
    {
        const bool isString = entry.value.userType() == QMetaType::QString;
        m_keys.push_back(key.toStdWString());
        m_texts.push_back(isString                               ? entry.value.toString().toUtf8()
                          : entry.type == ORB_STRATA_TYPE_OBJECT ? Json::Write(entry.value)
                                                                 : QByteArray());
        m_entries.push_back({m_keys.back().c_str(), entry.type, isString ? 0 : entry.value.toLongLong(),
                             m_texts.back().constData(), entry.constraints});
    }
}
