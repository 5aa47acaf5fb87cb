#include "devkit/core/StoreValue.h"

#include "devkit/core/Json.h"

#include <algorithm>
#include <array>
#include <limits>

namespace
{

using StoreValue::Stored;

bool IsInteger(const QVariant& value)
{
    return value.userType() == QMetaType::Int || value.userType() == QMetaType::LongLong;
}

bool IsText(const QVariant& value)
{
    return value.userType() == QMetaType::QString;
}

/// What the store's C texts can carry: no NUL, no lone surrogate.
bool IsStorable(const QString& text)
{
    return !text.contains(QChar(0)) && text.isValidUtf16();
}

bool IsRecord(const QVariant& value)
{
    if (value.userType() != QMetaType::QVariantMap)
        return false;
    const QVariantMap record = value.toMap();
    for (auto it = record.begin(); it != record.end(); ++it)
    {
        const bool scalar =
            it->userType() == QMetaType::Bool || IsInteger(*it) || (IsText(*it) && IsStorable(it->toString()));
        if (!scalar || !IsStorable(it.key()))
            return false;
    }
    return true;
}

bool MakeBool(const QVariant& value, Stored& stored)
{
    stored.number = value.toBool() ? 1 : 0;
    return value.userType() == QMetaType::Bool;
}

bool MakeInt32(const QVariant& value, Stored& stored)
{
    stored.number = value.toInt();
    return value.userType() == QMetaType::Int;
}

bool MakeInt64(const QVariant& value, Stored& stored)
{
    stored.number = value.toLongLong();
    return IsInteger(value);
}

bool MakeText(const QVariant& value, Stored& stored)
{
    stored.text = value.toString().toUtf8();
    return IsText(value) && IsStorable(value.toString());
}

bool MakeObject(const QVariant& value, Stored& stored)
{
    const QVariantList array = value.toList();
    const bool isArray = value.userType() == QMetaType::QVariantList;
    stored.text = Json::Write(value);
    return isArray ? std::all_of(array.begin(), array.end(), IsRecord) : IsRecord(value);
}

struct TypeRow
{
    OrbStrataType type;
    const char* name;
    bool (*make)(const QVariant& value, Stored& stored);
    const char* expected;
};

constexpr std::array<TypeRow, 6> Types{{
    {ORB_STRATA_TYPE_BOOL, "bool", &MakeBool, "true or false"},
    {ORB_STRATA_TYPE_INT32, "int32", &MakeInt32, "a whole number from -2147483648 to 2147483647"},
    {ORB_STRATA_TYPE_INT64, "int64", &MakeInt64, "a whole number of 64 bits"},
    {ORB_STRATA_TYPE_STRING, "string", &MakeText, "a text without NUL characters"},
    {ORB_STRATA_TYPE_UTF8, "utf8", &MakeText, "a text without NUL characters"},
    {ORB_STRATA_TYPE_OBJECT, "object", &MakeObject,
     "an object, or an array of objects, whose members are booleans, whole numbers and texts"},
}};

QVariant ValueOf(const OrbStrataEntry& entry)
{
    switch (entry.type)
    {
    case ORB_STRATA_TYPE_BOOL:
        return entry.number != 0;
    case ORB_STRATA_TYPE_INT32:
    case ORB_STRATA_TYPE_INT64:
        return static_cast<qlonglong>(entry.number);
    case ORB_STRATA_TYPE_STRING:
    case ORB_STRATA_TYPE_UTF8:
        return QString::fromUtf8(entry.text);
    case ORB_STRATA_TYPE_OBJECT:
        return Json::Parse(entry.text).value;
    case ORB_STRATA_TYPE_NONE:
        break;
    }
    return {};
}

} // namespace

Result<Stored> StoreValue::Make(const QString& type, const QVariant& value)
{
    const auto row = std::find_if(Types.begin(), Types.end(),
                                  [&type](const TypeRow& known) { return type == QLatin1String(known.name); });
    if (row == Types.end())
        return Result<Stored>::Failure(QStringLiteral("\"%1\" is not a type of the store.").arg(type));
    Stored stored;
    stored.type = row->type;
    if (!row->make(value, stored))
    {
        return Result<Stored>::Failure(
            QStringLiteral("A value of type \"%1\" must be %2.").arg(type, QLatin1String(row->expected)));
    }
    return {stored, {}};
}

QVariantMap StoreValue::Describe(const OrbStrataEntry& entry)
{
    const auto row =
        std::find_if(Types.begin(), Types.end(), [&entry](const TypeRow& known) { return known.type == entry.type; });
    const bool found = row != Types.end();
    return {{QStringLiteral("found"), found},
            {QStringLiteral("type"), found ? QVariant(QLatin1String(row->name)) : QVariant()},
            {QStringLiteral("value"), ValueOf(entry)},
            {QStringLiteral("constraints"), entry.constraints}};
}
