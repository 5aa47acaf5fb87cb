#include "devkit/host/OpenFile.h"

#include <QProcess>

bool OpenFile(const QString& path)
{
    return QProcess::startDetached(QStringLiteral("xdg-open"), {path});
}
