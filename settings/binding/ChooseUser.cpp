#include "settings/binding/ChooseUser.h"

#include "platform/Sessions.h"
#include "util/Users.h"

#include <QString>

namespace
{

std::wstring ProcessUserSid(const MethodLog& log)
{
    std::wstring sid;
    if (CurrentUser().GetSid(sid))
        return sid;
    LOG(log, 2, L"%s: CurrentUser().GetSid() failed. Defaulting to ORB_STRATA_SCOPE_CURRENT_USER");
    return {};
}

std::wstring ActiveUserSid(const MethodLog& log)
{
    if (AllUsers().GetActiveSession() == Platform::Sessions::kInvalid)
    {
        LOG(log, 4,
            L"%s: AllUsers().GetActiveSession() returned an invalid ID. Using system default user for initialization");
        return {};
    }
    const LoggedInUser user = LoggedInUser::FromActiveUser();
    std::wstring sid = user.GetSid();
    if (sid.empty())
        LOG(log, 2, L"%s: LoggedInUser::FromActiveUser().GetSid() returned an empty string! Error: %lu",
            user.LastError());
    return sid;
}

} // namespace

std::string ChooseUserSid(const MethodLog& log)
{
    const std::wstring processUser = ProcessUserSid(log);
    const std::wstring activeUser = ActiveUserSid(log);
    return QString::fromStdWString(activeUser.empty() ? processUser : activeUser).toStdString();
}
