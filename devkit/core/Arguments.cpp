#include "devkit/core/Arguments.h"

#include "devkit/core/Json.h"

#include <algorithm>
#include <limits>

namespace
{

bool IsString(const QVariant& value)
{
    return value.userType() == QMetaType::QString;
}

bool IsWholeNumber(const QVariant& value, qint64 from, qint64 to)
{
    bool isInteger = value.userType() == QMetaType::Int || value.userType() == QMetaType::LongLong;
    if (value.userType() == QMetaType::ULongLong)
        isInteger = value.toULongLong() <= static_cast<quint64>(std::numeric_limits<qint64>::max());
    return isInteger && value.toLongLong() >= from && value.toLongLong() <= to;
}

template <class Container>
bool AreStrings(const Container& values)
{
    return std::all_of(values.begin(), values.end(), IsString);
}

struct KindRow
{
    const char* name; // in the schema
    const char* description;
    bool (*fits)(const QVariant& value);
};

/// One table of what there is, in the order of the enumeration.
const KindRow& RowOf(ArgumentKind kind)
{
    using I32 = std::numeric_limits<qint32>;
    using U32 = std::numeric_limits<quint32>;
    static constexpr KindRow kRows[] = {
        {"any", "a value", [](const QVariant&) { return true; }},
        {"any", "a value", [](const QVariant&) { return true; }},
        {"string", "a string", IsString},
        {"name", "a string that is not empty",
         [](const QVariant& value) { return IsString(value) && !value.toString().isEmpty(); }},
        {"variable", "the id of a variable, which begins with \"@\"",
         [](const QVariant& value) { return IsString(value) && value.toString().startsWith(QLatin1Char('@')); }},
        {"strings", "an array of strings",
         [](const QVariant& value) {
             return value.userType() == QMetaType::QVariantList && AreStrings(value.toList());
         }},
        {"stringMap", "an object whose members are strings",
         [](const QVariant& value) { return value.userType() == QMetaType::QVariantMap && AreStrings(value.toMap()); }},
        {"entries", "an object of entries by key",
         [](const QVariant& value) { return value.userType() == QMetaType::QVariantMap; }},
        {"bool", "true or false", [](const QVariant& value) { return value.userType() == QMetaType::Bool; }},
        {"natural", "a whole number of 0 or more",
         [](const QVariant& value) { return IsWholeNumber(value, 0, std::numeric_limits<qint64>::max()); }},
        {"milliseconds", "a whole number of milliseconds from 0 to 2147483647",
         [](const QVariant& value) { return IsWholeNumber(value, 0, I32::max()); }},
        {"int32", "a whole number from -2147483648 to 2147483647",
         [](const QVariant& value) { return IsWholeNumber(value, I32::min(), I32::max()); }},
        {"uint32", "a whole number from 0 to 4294967295",
         [](const QVariant& value) { return IsWholeNumber(value, 0, U32::max()); }},
        {"constraints", "a whole number from 0 to 4294967295",
         [](const QVariant& value) { return IsWholeNumber(value, 0, U32::max()); }},
    };
    return kRows[static_cast<int>(kind)];
}

} // namespace

QVariantMap Parameter::Describe() const
{
    QVariantMap row{{QStringLiteral("name"), QLatin1String(name)},
                    {QStringLiteral("type"), QLatin1String(RowOf(kind).name)},
                    {QStringLiteral("required"), need == Need::Required}};
    if (choices)
        row.insert(QStringLiteral("choices"), Choices());
    return row;
}

QStringList Parameter::Choices() const
{
    return QString::fromLatin1(choices).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

QVariant Parameter::FromWord(const QString& word) const
{
    switch (kind)
    {
    case ArgumentKind::Typed:
    case ArgumentKind::String:
    case ArgumentKind::Name:
    case ArgumentKind::VariableId:
        return word;
    case ArgumentKind::Strings:
        return QVariantList{word};
    case ArgumentKind::Bool:
        if (word == QLatin1String("on") || word == QLatin1String("off"))
            return word == QLatin1String("on");
        break;
    case ArgumentKind::Constraints:
        if (word == QLatin1String("enforced") || word == QLatin1String("none"))
            return word == QLatin1String("enforced") ? 1 : 0;
        break;
    default:
        break;
    }
    const Json::Parsed parsed = Json::Parse(word.toUtf8());
    return parsed.error.isEmpty() ? parsed.value : QVariant(word);
}

QString Arguments::Check(const Parameter& parameter) const
{
    const QString name = QLatin1String(parameter.name);
    if (!m_values.contains(name))
    {
        return parameter.need == Parameter::Need::Optional
                   ? QString()
                   : QStringLiteral("The argument \"%1\" is missing.").arg(name);
    }
    const QVariant value = m_values.value(name);
    const KindRow& kind = RowOf(parameter.kind);
    if (!kind.fits(value))
        return QStringLiteral("The argument \"%1\" must be %2.").arg(name, QLatin1String(kind.description));
    const QStringList choices = parameter.Choices();
    const QStringList given =
        parameter.kind == ArgumentKind::Strings ? value.toStringList() : QStringList{value.toString()};
    const bool allowed = choices.isEmpty() || std::all_of(given.begin(), given.end(), [&choices](const QString& word) {
                             return choices.contains(word);
                         });
    return allowed ? QString()
                   : QStringLiteral("The argument \"%1\" must be one of \"%2\".")
                         .arg(name, choices.join(QLatin1String("\", \"")));
}

QVariant Arguments::Value(const char* name, const QVariant& otherwise) const
{
    return m_values.value(QLatin1String(name), otherwise);
}
