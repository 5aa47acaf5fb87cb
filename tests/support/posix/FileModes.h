#pragma once

#include <QDirIterator>

#include <sys/stat.h>

#include <algorithm>
#include <string>
#include <vector>

/// The process's mask for the files and folders that it makes, as long as this object lives.
class Umask
{
public:
    explicit Umask(mode_t mask) : m_before(::umask(mask)) {}
    ~Umask() { ::umask(m_before); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    const mode_t m_before;
};

/// Everything below a folder with its permission bits, by name: "data/store.db 644".
inline std::vector<std::string> ModesBelow(const QString& folder)
{
    std::vector<std::string> modes;
    QDirIterator files(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
    {
        const std::string path = files.next().toStdString();
        struct stat status
        {};
        ::lstat(path.c_str(), &status);
        const QString mode = QString::number(status.st_mode & 07777, 8);
        modes.push_back(path.substr(folder.toStdString().size() + 1) + ' ' + mode.toStdString());
    }
    std::sort(modes.begin(), modes.end());
    return modes;
}
