#pragma once

#include <string>

namespace UrlUtil
{

/// The URL in UTF-8 with its host in the ASCII form of internationalised names. The host is the text after the scheme's
/// "://" (or from the beginning, without one) up to its path, query or port, without user info; each of its labels that
/// is not ASCII is brought to lower case and to its compatibility form and becomes "xn--" and its Punycode. All else
/// stays as it is. After a failure, which is logged, the whole URL does.
std::string GetPunycodeUrl(const std::wstring& url);

} // namespace UrlUtil
