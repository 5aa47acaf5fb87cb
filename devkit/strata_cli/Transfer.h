#pragma once

#include "devkit/strata_cli/Item.h"

#include <string>
#include <string_view>

namespace Strata
{
class JsonReader;
}

namespace StrataCli
{

/// A scope's entries as JSON: {"key": {"type": "int32", "value": 5, "constraints": 0}, …}, one entry a line.
/// "constraints" may be left out for 0; entries of the type "none" have no "value".
std::string Export(const Items& items);

/// Reads what Export writes. False: `error` tells what is wrong and where.
bool Import(std::string_view json, Items& items, std::string& error);

/// The whole of a file, or of standard input for "-". False: `error` tells why.
bool ReadInput(const std::string& path, std::string& contents, std::string& error);
/// Writes a file whole, or standard output for "-".
bool WriteOutput(const std::string& path, const std::string& contents, std::string& error);

} // namespace StrataCli
