#pragma once

#include <string>

/// What ICU, as browsers use it, makes of a host, beside what HostToAscii() does. There is no ICU on Windows.
namespace HostOracle
{

/// Each difference that is meant has its name.
enum class Difference
{
    None,
    AsciiLabelIsNotRead,   ///< browsers decode and check a label of ASCII with the prefix; here ASCII stays as it is
    MadePrefixIsRefused,   ///< a label that is not ASCII becomes one with the prefix, which browsers decode
    LongLabelIsRefused,    ///< more than 63 characters, which browsers only refuse when they look the name up
    NewMarkIsNotOrdered,   ///< Qt's Unicode knows no order for a mark
    OtherVersionOfUnicode, ///< ICU's data is not of the version that the table was made from
    Unexplained,
};

/// `host` is well formed and not all ASCII.
Difference Compare(const std::wstring& host);

} // namespace HostOracle
