#include "tests/logging/LogFixture.h"

#include "platform/Path.h"

#include <QDir>
#include <QFile>

using Platform::JoinPath;

namespace
{

constexpr std::size_t kPrefixLength = 40; // with ids of four digits; longer ones end at the same "  I: "

} // namespace

LogFixture::LogFixture()
{
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"RootPath",
                   QDir::toNativeSeparators(m_folder.path()).toStdWString());
    m_clock.Set("2024-03-05T02:07:09.012");
    m_clock.SetOffset(120);
    m_sessions.processSession = 1;
}

void LogFixture::SetLimits(std::uint32_t maximumKB, std::uint32_t rotationCount)
{
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"LogMaxSizeKB", maximumKB);
    m_registry.Set(FakeRegistry::Root::Machine, kKey, L"LogRotateCount", rotationCount);
}

std::wstring LogFixture::Folder() const
{
    std::wstring path = QDir::toNativeSeparators(m_folder.path()).toStdWString();
    for (const wchar_t* const part : {L"Norlane", L"Log", L"NLCC"})
        path = JoinPath(path, part);
    return path;
}

std::wstring LogFixture::FilePath(const std::wstring& name) const
{
    return JoinPath(Folder(), name);
}

std::wstring LogFixture::Read(const std::wstring& path)
{
    QFile file(QString::fromStdWString(path));
    if (!file.open(QIODevice::ReadOnly))
        return L"no file";
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("\xFF\xFE") || bytes.size() % 2 != 0)
        return L"no mark";
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()) + 1, bytes.size() / 2 - 1)
        .toStdWString();
}

std::vector<std::wstring> LogFixture::Lines(const std::wstring& text)
{
    std::vector<std::wstring> lines;
    for (std::size_t begin = 0, end; (end = text.find(L"\r\n", begin)) != std::wstring::npos; begin = end + 2)
        lines.push_back(text.substr(begin, end - begin));
    return lines;
}

std::vector<std::wstring> LogFixture::Messages(const std::wstring& name) const
{
    std::vector<std::wstring> lines = Lines(Read(FilePath(name)));
    for (std::wstring& line : lines)
    {
        const auto end = line.find(L"] ");
        line.erase(0, end != std::wstring::npos && line.size() >= kPrefixLength ? end + 6 : 0);
    }
    return lines;
}

std::vector<std::wstring> LogFixture::FileNames() const
{
    std::vector<std::wstring> names;
    const QStringList files = QDir(QString::fromStdWString(Folder())).entryList(QDir::Files, QDir::Name);
    for (const QString& file : files)
        names.push_back(file.toStdWString());
    return names;
}

void LogFixture::Put(const std::wstring& name, const std::string& bytes) const
{
    QDir().mkpath(QString::fromStdWString(Folder()));
    QFile file(QString::fromStdWString(FilePath(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
}
