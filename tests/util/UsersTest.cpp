#include "util/Users.h"

#include "tests/support/PlatformFakes.h"

#include <gmock/gmock.h>

namespace
{

using testing::IsEmpty;

constexpr std::uint32_t kInvalid = 0xFFFFFFFF;

class Users : public testing::Test
{
protected:
    std::uint32_t ActiveOf(std::vector<Platform::Sessions::Session> sessions)
    {
        m_sessions.sessions = std::move(sessions);
        return AllUsers().GetActiveSession();
    }

    FakeSessions m_sessions;
};

TEST_F(Users, TheLastActiveSessionWinsAndSessionZeroOnlyAlone)
{
    m_sessions.console = 9;
    EXPECT_EQ(ActiveOf({{0, true}}), 0U);
    EXPECT_EQ(ActiveOf({{1, true}, {2, true}}), 2U);
    EXPECT_EQ(ActiveOf({{2, true}, {1, true}, {3, false}}), 1U);
    EXPECT_EQ(ActiveOf({{1, true}, {0, true}}), 1U);
    EXPECT_EQ(ActiveOf({{0, false}, {1, false}}), kInvalid);
    EXPECT_EQ(ActiveOf({}), kInvalid);
    EXPECT_EQ(ActiveOf({{kInvalid, true}, {0, true}}), 0U);
}

TEST_F(Users, TheConsolesSessionCountsWhenThereIsNoList)
{
    m_sessions.hasList = false;
    m_sessions.sessions = {{1, true}};
    m_sessions.console = 9;
    EXPECT_EQ(AllUsers().GetActiveSession(), 9U);
}

TEST_F(Users, TheActiveSessionsUserIsFoundByDomainAndName)
{
    m_sessions.sessions = {{3, true}};
    m_sessions.users[3] = {L"anna", L"HOME"};
    m_sessions.accounts[L"HOME\\anna"] = {1, 1, 0, 0, 0, 0, 0, 5, 7, 0, 0, 0};
    const LoggedInUser user = LoggedInUser::FromActiveUser();
    EXPECT_EQ(user.GetSid(), L"S-1-5-7");
    EXPECT_EQ(user.SessionId(), 3U);
}

TEST_F(Users, ASessionWithoutAUserNameHasNoSid)
{
    m_sessions.users[3] = {L"", L"HOME"};
    m_sessions.users[4] = {L"anna", L""};
    for (const std::uint32_t session : {3U, 4U, 5U})
    {
        const LoggedInUser user(session);
        EXPECT_EQ(user.GetSid(), L"");
        EXPECT_EQ(user.SessionId(), kInvalid);
        EXPECT_NE(user.LastError(), 0U);
    }
    EXPECT_THAT(m_sessions.asked, IsEmpty());
}

TEST_F(Users, WithoutAnActiveSessionNoUserIsTaken)
{
    m_sessions.users[kInvalid] = {L"the caller", L"HOME"};
    EXPECT_EQ(LoggedInUser::FromActiveUser().GetSid(), L"");
    EXPECT_THAT(m_sessions.asked, IsEmpty());
}

TEST_F(Users, TheProcessesOwnUserNeedsNoSession)
{
    m_sessions.processUser = {1, 1, 0, 0, 0, 0, 0, 5, 18, 0, 0, 0};
    std::wstring sid = L"unchanged";
    EXPECT_TRUE(CurrentUser().GetSid(sid));
    EXPECT_EQ(sid, L"S-1-5-18");
    EXPECT_EQ(CurrentUser().SessionId(), kInvalid);

    m_sessions.processUserError = 5;
    sid = L"unchanged";
    EXPECT_FALSE(CurrentUser().GetSid(sid));
    EXPECT_EQ(sid, L"unchanged");
    EXPECT_EQ(CurrentUser().LastError(), 5U);
}

TEST(SystemSessions, TheCallingUserIsTheOneOfTheActiveSession)
{
    std::wstring own;
    ASSERT_TRUE(CurrentUser().GetSid(own));
    EXPECT_EQ(own.rfind(L"S-1-", 0), 0U);
    const LoggedInUser active = LoggedInUser::FromActiveUser();
    EXPECT_TRUE(active.GetSid() == own || active.GetSid().empty());
}

} // namespace
