#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The host that browsers look up for a host with characters beyond ASCII: its labels by UTS #46 (non-transitional;
/// with the rules on right-to-left text and on joiners, without those on hyphens and on other ASCII characters). A
/// label of ASCII stays as it is, and is not read even if it is a converted one. Nothing: the host has no ASCII form.
std::optional<std::string> HostToAscii(std::wstring_view host);
