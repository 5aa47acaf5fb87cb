#include "devkit/strata_cli/Files.h"

#include "devkit/process/StandardStreams.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{

QString FileError(const QString& path, const char* what, const QString& reason)
{
    return QStringLiteral("\"%1\" cannot be %2: %3.").arg(path, QLatin1String(what), reason);
}

} // namespace

Result<QByteArray> ReadInput(const QString& path)
{
    using Read = Result<QByteArray>;
    QByteArray contents;
    if (path == QLatin1String("-"))
    {
        StandardInput input;
        for (QByteArray piece = input.Read(); !piece.isEmpty(); piece = input.Read())
            contents += piece;
        return input.HasFailed() ? Read::Failure(QStringLiteral("Standard input cannot be read.")) : Read{contents, {}};
    }
    QFile file(path);
    if (QFileInfo(path).isDir())
        return Read::Failure(FileError(path, "read", QStringLiteral("it is a folder")));
    if (!file.open(QIODevice::ReadOnly))
        return Read::Failure(FileError(path, "read", file.errorString()));
    contents = file.readAll();
    return file.error() == QFile::NoError ? Read{contents, {}}
                                          : Read::Failure(FileError(path, "read", file.errorString()));
}

QString WriteOutput(const QString& path, const QByteArray& contents, StandardOutput& output)
{
    if (path == QLatin1String("-"))
    {
        if (output.Write(contents))
            return {};
        return QStringLiteral("Standard output cannot be written: %1.")
            .arg(output.Error().isEmpty() ? QStringLiteral("nobody reads it") : output.Error());
    }
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.commit();
    return written ? QString() : FileError(path, "written", file.errorString());
}
