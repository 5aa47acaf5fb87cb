#include "util/Sid.h"

#include "tests/support/PlatformFakes.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kInsufficientBuffer = 122;

using Bytes = std::vector<std::uint8_t>;

Bytes SystemSid()
{
    return {1, 1, 0, 0, 0, 0, 0, 5, 18, 0, 0, 0};
}

TEST(Sid, ReadsAsItsNumbers)
{
    EXPECT_EQ(Sid(SystemSid()).ToString(), L"S-1-5-18");
    EXPECT_EQ(Sid(Bytes{1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2, 0, 0}).ToString(), L"S-1-5-32-544");
    EXPECT_EQ(Sid(Bytes{1, 1, 0, 0, 0, 0, 0, 1, 0xFF, 0xFF, 0xFF, 0xFF}).ToString(), L"S-1-1-4294967295");
    EXPECT_EQ(Sid(Bytes{1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}).ToString(), L"S-1-4294967295");
    EXPECT_EQ(Sid(Bytes{1, 0, 1, 0, 0, 0, 0, 1}).ToString(), L"S-1-0x010000000001");
}

TEST(Sid, ItsRelativeIdIsTheLastNumber)
{
    EXPECT_EQ(Sid(Bytes{1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2, 0, 0}).RelativeId(), 544U);
    EXPECT_EQ(Sid(Bytes{1, 1, 0, 0, 0, 0, 0, 1, 0xFF, 0xFF, 0xFF, 0xFF}).RelativeId(), 4294967295U);
    EXPECT_FALSE(Sid().RelativeId());
}

TEST(Sid, BytesThatAreNoSidHaveNoText)
{
    EXPECT_EQ(Sid(Bytes{}).ToString(), L"");
    EXPECT_EQ(Sid(Bytes{1, 1, 0, 0, 0, 0, 0}).ToString(), L"");
    EXPECT_EQ(Sid(Bytes{1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0}).ToString(), L"");
    EXPECT_EQ(Sid(Bytes(8 + 4 * 16, 16)).ToString(), L"");
}

class AccountSid : public testing::Test
{
protected:
    FakeSessions m_sessions;
};

TEST_F(AccountSid, IsFoundByItsName)
{
    m_sessions.accounts[L"HOME\\anna"] = SystemSid();
    const Sid sid(L"HOME\\anna");
    EXPECT_EQ(sid.ToString(), L"S-1-5-18");
    EXPECT_EQ(sid.LastError(), 0U);
    EXPECT_THAT(m_sessions.asked, ElementsAre(L"HOME\\anna", L"HOME\\anna"));
}

TEST_F(AccountSid, AnyOtherAnswerLeavesItEmptyAndKeepsTheError)
{
    using Answers = std::vector<FakeSessions::Answer>;
    const std::pair<Answers, std::uint32_t> cases[] = {
        {{{5, 12, 2}}, 5},
        {{{0, 12, 2}}, 0},
        {{{kInsufficientBuffer, 0, 2}}, kInsufficientBuffer},
        {{{kInsufficientBuffer, 12, 0}}, kInsufficientBuffer},
        {{{kInsufficientBuffer, 12, 2}, {1332, 12, 2}}, 1332},
        {{{kInsufficientBuffer, 12, 2}, {kInsufficientBuffer, 16, 2}}, kInsufficientBuffer},
    };
    for (const auto& [answers, error] : cases)
    {
        m_sessions.answers = answers;
        const Sid sid(L"HOME\\anna");
        EXPECT_TRUE(sid.IsEmpty());
        EXPECT_EQ(sid.LastError(), error);
        EXPECT_THAT(m_sessions.answers, IsEmpty());
    }
}

TEST_F(AccountSid, WithoutANameTheSystemIsNotAsked)
{
    const Sid sid(L"");
    EXPECT_TRUE(sid.IsEmpty());
    EXPECT_EQ(sid.LastError(), 1332U);
    EXPECT_THAT(m_sessions.asked, IsEmpty());
}

} // namespace
