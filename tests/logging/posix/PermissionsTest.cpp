#include "tests/support/posix/FileModes.h"

#include "tests/logging/LogFixture.h"

namespace
{

using testing::ElementsAre;

class LogPermissions : public LogFixture
{
protected:
    /// What a logger makes below its root under this mask.
    std::vector<std::string> Made(mode_t mask, unsigned flags = 0)
    {
        const Umask inForce(mask);
        Initialize(flags);
        m_logger->Log(4, L"a");
        m_logger->Shutdown();
        std::vector<std::string> modes = ModesBelow(m_folder.path());
        QDir(m_folder.filePath(QStringLiteral("Norlane"))).removeRecursively();
        return modes;
    }
};

TEST_F(LogPermissions, AUsersLogIsAsOpenAsTheUsersMaskAllows)
{
    m_token.administrator = false;
    m_registry.Set(FakeRegistry::Root::User, kKey, L"RootPath", m_folder.path().toStdWString());
    EXPECT_THAT(Made(077), ElementsAre("Norlane 700", "Norlane/Log 700", "Norlane/Log/NLCC 700",
                                       "Norlane/Log/NLCC/Veridan.log 600"));
    EXPECT_THAT(Made(022), ElementsAre("Norlane 755", "Norlane/Log 755", "Norlane/Log/NLCC 755",
                                       "Norlane/Log/NLCC/Veridan.log 644"));
}

TEST_F(LogPermissions, TheMachinesLogIsWrittenByItsOwnerAloneWhateverTheMask)
{
    EXPECT_THAT(Made(002), ElementsAre("Norlane 775", "Norlane/Log 755", "Norlane/Log/NLCC 755",
                                       "Norlane/Log/NLCC/Veridan.log 644"));
    EXPECT_THAT(Made(077), ElementsAre("Norlane 700", "Norlane/Log 700", "Norlane/Log/NLCC 700",
                                       "Norlane/Log/NLCC/Veridan.log 600"));
    EXPECT_THAT(
        Made(002, NlOrbLogging::RestrictedAccess),
        ElementsAre("Norlane 775", "Norlane/Log 755", "Norlane/Log/NLCC 755", "Norlane/Log/NLCC/Veridan.log 600"));
}

} // namespace
