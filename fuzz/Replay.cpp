// fuzz_replay <folder>: gives each target the files of the folder's folder of that name. Ends with 1 where there are
// none or one cannot be read; a target itself ends the program where the product fails.

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"

#include <QDir>
#include <QFile>

#include <cstdio>

namespace
{

bool ReplayFile(const Target& target, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
    {
        std::fprintf(stderr, "%s cannot be read: %s\n", qUtf8Printable(path), qUtf8Printable(file.errorString()));
        return false;
    }
    const QByteArray bytes = file.readAll();
    // The last line tells where a target ended the program.
    std::printf("%s\n", qUtf8Printable(path));
    std::fflush(stdout);
    target({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    return true;
}

bool ReplayFolder(const Target& target, const QDir& folder)
{
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    if (names.isEmpty())
        std::fprintf(stderr, "%s holds no file\n", qUtf8Printable(folder.path()));
    bool replayed = !names.isEmpty();
    for (const QString& name : names)
        replayed = ReplayFile(target, folder.filePath(name)) && replayed;
    return replayed;
}

} // namespace

int main(int argc, char** argv)
{
    const Surroundings surroundings(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2)
    {
        std::fputs("fuzz_replay <folder>\n", stderr);
        return 1;
    }
    bool replayed = true;
    for (const Target& target : Target::All())
        replayed =
            ReplayFolder(target, QDir(arguments[1] + QLatin1Char('/') + QLatin1String(target.Name()))) && replayed;
    return replayed ? 0 : 1;
}
