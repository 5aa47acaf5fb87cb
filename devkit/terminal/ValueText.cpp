#include "devkit/terminal/ValueText.h"

#include "devkit/core/Json.h"

QString ValueText::Short(const QVariant& value)
{
    constexpr int Longest = 60;
    if (!value.isValid())
        return QStringLiteral("(none)");
    const bool isWord = value.userType() == QMetaType::QString && !value.toString().trimmed().isEmpty() &&
                        !value.toString().contains(QLatin1Char('\n'));
    const QString text = isWord ? value.toString() : QString::fromUtf8(Json::Write(value));
    return text.size() <= Longest ? text : text.left(Longest - 3) + QLatin1String("...");
}

QVariant ValueText::FromTyped(const QString& text)
{
    const Json::Parsed parsed = Json::Parse(text.toUtf8());
    return parsed.error.isEmpty() ? parsed.value : QVariant(text);
}
