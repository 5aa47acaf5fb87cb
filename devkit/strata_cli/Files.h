#pragma once

#include "devkit/core/Result.h"

#include <QByteArray>
#include <QString>

class StandardOutput;

/// The whole of a file, or of standard input for "-".
Result<QByteArray> ReadInput(const QString& path);
/// Writes a file whole or not at all, or standard output for "-". Why not, as a sentence, else empty.
QString WriteOutput(const QString& path, const QByteArray& contents, StandardOutput& output);
