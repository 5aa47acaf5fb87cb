#pragma once

#include <QString>
#include <QVariantMap>

/// Why an operation gave nothing, as far as a script may want to tell it apart.
enum class FailureKind
{
    Failed,  ///< the store or a file could not be read or written
    Misused, ///< the request makes no sense
    Refused, ///< a value is none of its type
    NotFound
};

/// What an operation gave, or why it gave nothing, as a sentence that a person understands.
template <class T>
struct Result
{
    T value{};
    QString error; // empty on success
    FailureKind kind = FailureKind::Failed;

    bool Ok() const { return error.isEmpty(); }
    static Result Failure(const QString& sentence, FailureKind kind = FailureKind::Failed)
    {
        return {T{}, sentence, kind};
    }
    /// What made another one fail.
    template <class Other>
    static Result Failure(const Result<Other>& other)
    {
        return {T{}, other.error, other.kind};
    }
};

/// The answer to a command: a value for JSON, invalid where there is nothing to tell.
using Answer = Result<QVariant>;

/// {"ok", "result" or "error"}
inline QVariantMap ToMessage(const Answer& answer)
{
    return answer.Ok() ? QVariantMap{{QStringLiteral("ok"), true}, {QStringLiteral("result"), answer.value}}
                       : QVariantMap{{QStringLiteral("ok"), false}, {QStringLiteral("error"), answer.error}};
}
