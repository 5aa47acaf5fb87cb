#include "tests/plugin/ThreadCount.h"

#include <QDir>

int ThreadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}
