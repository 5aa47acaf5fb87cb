#include "devkit/core/Arguments.h"

#include <algorithm>
#include <limits>

namespace
{

bool IsText(const QVariant& value)
{
    return value.userType() == QMetaType::QString;
}

bool IsWholeNumber(const QVariant& value, qint64 from, qint64 to)
{
    const bool integer = value.userType() == QMetaType::Int || value.userType() == QMetaType::LongLong;
    return integer && value.toLongLong() >= from && value.toLongLong() <= to;
}

template <class Container>
bool AreTexts(const Container& values)
{
    return std::all_of(values.begin(), values.end(), IsText);
}

bool Fits(const QVariant& value, ArgumentKind kind)
{
    switch (kind)
    {
    case ArgumentKind::Any:
        return true;
    case ArgumentKind::Text:
        return IsText(value);
    case ArgumentKind::Name:
        return IsText(value) && !value.toString().isEmpty();
    case ArgumentKind::VariableId:
        return IsText(value) && value.toString().startsWith(QLatin1Char('@'));
    case ArgumentKind::Texts:
        return value.userType() == QMetaType::QVariantList && AreTexts(value.toList());
    case ArgumentKind::TextMap:
        return value.userType() == QMetaType::QVariantMap && AreTexts(value.toMap());
    case ArgumentKind::Flag:
        return value.userType() == QMetaType::Bool;
    case ArgumentKind::Natural:
        return IsWholeNumber(value, 0, std::numeric_limits<qint64>::max());
    case ArgumentKind::Milliseconds:
        return IsWholeNumber(value, 0, std::numeric_limits<qint32>::max());
    case ArgumentKind::Int32:
        return IsWholeNumber(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    case ArgumentKind::UInt32:
        return IsWholeNumber(value, 0, std::numeric_limits<quint32>::max());
    }
    return false;
}

const char* Describe(ArgumentKind kind)
{
    switch (kind)
    {
    case ArgumentKind::Any:
        return "a value";
    case ArgumentKind::Text:
        return "a text";
    case ArgumentKind::Name:
        return "a text that is not empty";
    case ArgumentKind::VariableId:
        return "the id of a variable, which begins with \"@\"";
    case ArgumentKind::Texts:
        return "an array of texts";
    case ArgumentKind::TextMap:
        return "an object whose members are texts";
    case ArgumentKind::Flag:
        return "true or false";
    case ArgumentKind::Natural:
        return "a whole number of 0 or more";
    case ArgumentKind::Milliseconds:
        return "a whole number of milliseconds from 0 to 2147483647";
    case ArgumentKind::Int32:
        return "a whole number from -2147483648 to 2147483647";
    case ArgumentKind::UInt32:
        return "a whole number from 0 to 4294967295";
    }
    return "";
}

} // namespace

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
    if (!Fits(value, parameter.kind))
        return QStringLiteral("The argument \"%1\" must be %2.").arg(name, QLatin1String(Describe(parameter.kind)));
    const QStringList choices = QString::fromLatin1(parameter.choices).split(QLatin1Char('|'), Qt::SkipEmptyParts);
    const QStringList given =
        parameter.kind == ArgumentKind::Texts ? value.toStringList() : QStringList{value.toString()};
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
