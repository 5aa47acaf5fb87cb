#include "platform/Registry.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

namespace
{

using Platform::RegistryRoot;

class Registry : public testing::Test
{
protected:
    Registry() { qputenv("VERIDAN_REGISTRY_DIR", QFile::encodeName(m_folder.path())); }
    ~Registry() override { qunsetenv("VERIDAN_REGISTRY_DIR"); }

    QString File(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    Platform::Registry& m_registry = Platform::Get<Platform::Registry>();
    QTemporaryDir m_folder;
};

TEST_F(Registry, ReadsWhatASettingsFileHolds)
{
    {
        QSettings machine(File("machine.ini"), QSettings::IniFormat);
        machine.setValue(QStringLiteral("Software/Norlane/ORB/Delay Loading/nl.so"), QStringLiteral("/a b;c,d.so"));
        machine.setValue(QStringLiteral("Software/Norlane/ORB/Logging/LogLevel"), 5);
        QSettings user(File("user.ini"), QSettings::IniFormat);
        user.setValue(QStringLiteral("Software/Norlane/ORB/Logging/RootPath"), QStringLiteral("/caf\u00e9"));
    }
    EXPECT_EQ(m_registry.ReadString(RegistryRoot::Machine, L"Software\\Norlane\\ORB\\Delay Loading", L"nl.so"),
              L"/a b;c,d.so");
    EXPECT_EQ(m_registry.ReadDword(RegistryRoot::Machine, L"SOFTWARE\\Norlane\\ORB\\Logging", L"LogLevel"), 5U);
    EXPECT_EQ(m_registry.ReadString(RegistryRoot::User, L"SOFTWARE\\Norlane\\ORB\\Logging", L"RootPath"),
              L"/caf\x00E9");
    EXPECT_FALSE(m_registry.ReadString(RegistryRoot::User, L"SOFTWARE\\Norlane\\ORB\\Logging", L"LogLevel"));
}

TEST_F(Registry, TakesNumbersAsPeopleWriteThemAndNothingElse)
{
    QFile file(File("machine.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Key]\nhex=0xFFFFFFFF\nlarge=4294967295\ntoo=4294967296\nminus=-1\ntext=yes\nlist=/a, /b\n");
    file.close();

    EXPECT_EQ(m_registry.ReadDword(RegistryRoot::Machine, L"Key", L"hex"), 0xFFFFFFFFU);
    EXPECT_EQ(m_registry.ReadDword(RegistryRoot::Machine, L"Key", L"large"), 0xFFFFFFFFU);
    for (const wchar_t* const value : {L"too", L"minus", L"text", L"absent"})
        EXPECT_FALSE(m_registry.ReadDword(RegistryRoot::Machine, L"Key", value)) << value;
    EXPECT_EQ(m_registry.ReadString(RegistryRoot::Machine, L"Key", L"list"), L"/a, /b");
}

} // namespace
