#include "platform/KnownFolders.h"

#include <gtest/gtest.h>

#include <QByteArray>

namespace
{

TEST(ExpandEnvironment, PutsInWhatIsSetAsItStands)
{
    qputenv("VERIDAN_TEST", "50% of %PATH%");
    EXPECT_EQ(Platform::ExpandEnvironment(L"<%VERIDAN_TEST%>%ProgramData%%"),
              L"<50% of %PATH%>" + Platform::CommonAppData() + L"%");
    qunsetenv("VERIDAN_TEST");
    EXPECT_EQ(Platform::ExpandEnvironment(L"%VERIDAN_TEST%\\x"), L"");
    EXPECT_EQ(Platform::ExpandEnvironment(L"no variable"), L"no variable");
}

} // namespace
