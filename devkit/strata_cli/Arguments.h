#pragma once

#include <optional>
#include <string>
#include <vector>

namespace StrataCli
{

/// What the program was asked to do.
struct Arguments
{
    std::string command;
    std::vector<std::string> operands;
    std::optional<std::string> scope; ///< as given: "system", "user" or a SID
    std::optional<std::string> type;
    std::optional<std::string> data;
    bool json = false;
    bool help = false;

    std::string error; ///< what is wrong with the command line, as a sentence; empty: nothing
};

/// Options may stand anywhere; behind "--" everything is an operand.
Arguments ParseArguments(const std::vector<std::string>& words);

} // namespace StrataCli
