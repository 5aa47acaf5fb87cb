#include "devkit/core/Client.h"

#include "devkit/core/Json.h"

QByteArray Client::StringOf(const QVariantMap& message)
{
    const QString id = QStringLiteral("id");
    const QByteArray text = Json::Write(message);
    return !text.isEmpty() ? text
                           : Json::Write(QVariantMap{
                                 {id, message.value(id)},
                                 {QStringLiteral("ok"), false},
                                 {QStringLiteral("error"), QStringLiteral("The answer is too long; ask for less.")}});
}
