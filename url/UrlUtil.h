#pragma once

#include <string>

namespace UrlUtil
{

/// The URL in UTF-8 with its host in the ASCII form of internationalised names. The host is the text after the scheme's
/// "://" (or from the beginning, without one) up to its path, query or port, without user info; where it is not ASCII
/// it becomes what HostToAscii() says. All else stays as it is. After a failure, which is logged, the whole URL does.
std::string GetPunycodeUrl(const std::wstring& url);

} // namespace UrlUtil
