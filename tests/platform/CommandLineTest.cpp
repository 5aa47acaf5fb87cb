#include "platform/posix/CommandLine.h"

#include <gmock/gmock.h>

namespace
{

using Platform::SplitCommandLine;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(CommandLine, IsTakenApartByTheRulesOfWindows)
{
    EXPECT_THAT(SplitCommandLine(L""), IsEmpty());
    EXPECT_THAT(SplitCommandLine(L"  a \t b  "), ElementsAre(L"a", L"b"));
    EXPECT_THAT(SplitCommandLine(L"\"/usr/bin/a b\" c\"d e\"f"), ElementsAre(L"/usr/bin/a b", L"cd ef"));
    EXPECT_THAT(SplitCommandLine(L"\"\" x"), ElementsAre(L"", L"x"));
    EXPECT_THAT(SplitCommandLine(L"a\\b\\ c\\\\"), ElementsAre(L"a\\b\\", L"c\\\\"));
    EXPECT_THAT(SplitCommandLine(L"\\\"a \\\\\"b c\\\\\" d"), ElementsAre(L"\"a", L"\\b c\\", L"d"));
    EXPECT_THAT(SplitCommandLine(L"\"open end"), ElementsAre(L"open end"));
}

} // namespace
