#pragma once

#include <cstdint>
#include <string>

/// Why a library of the suite could not be loaded.
struct DelayLoadError
{
    std::int32_t code = 0;          ///< The system's error number.
    std::string fileName;           ///< The library's file name; of one that it depends on the path, as listed.
    const char* function = nullptr; ///< The name of a function that the library lacks, else null.
};

/// Each loads one library with what it depends on and fills its table (delay_load/SuiteTable.h) with its functions. A
/// library that is loaded is counted once more. `reserved` is 100. False: nothing is loaded, the reason is in `error`.
/// Any thread.
///
/// The file comes from the machine's registry, key "Software\Norlane\ORB\Delay Loading": the value named as the file
/// is its full path; the sub-key "NLDelayLoadDependencies" has, under the same name, the full paths of libraries that
/// are loaded first, separated by ";" with or without blanks. Without a value it is the file of that name beside the
/// one that holds this code. A path that is not absolute is refused.
bool OrbStrata_DelayLoadInitialize(int reserved, DelayLoadError* error);
bool OrbDpApi_DelayLoadInitialize(int reserved, DelayLoadError* error);
bool NlFlyerApiDelayLoadInitialize(int reserved, DelayLoadError* error);

/// Each takes back one successful call of its counterpart. The last one empties the table and unloads the library and
/// its dependencies.
void OrbStrata_DelayLoadUninitialize();
void OrbDpApi_DelayLoadUninitialize();
void NlFlyerApiDelayLoadUninitialize();
