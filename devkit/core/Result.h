#pragma once

#include <QString>
#include <QVariant>

/// What an operation gave, or why it gave nothing, as a sentence that a person understands.
template <class T>
struct Result
{
    T value{};
    QString error; // empty on success

    bool Ok() const { return error.isEmpty(); }
    static Result Failure(const QString& sentence) { return {T{}, sentence}; }
};

/// The answer to a command: a value for JSON, invalid where there is nothing to tell.
using Answer = Result<QVariant>;
