#include "devkit/strata_cli/Arguments.h"

namespace StrataCli
{

namespace
{

/// Where the option keeps its value; null for an option without one, or none at all.
std::optional<std::string>* ValueOf(Arguments& arguments, const std::string& option)
{
    return option == "--scope"  ? &arguments.scope
           : option == "--type" ? &arguments.type
           : option == "--data" ? &arguments.data
                                : nullptr;
}

bool IsOption(const std::string& word)
{
    return word == "-h" || word.compare(0, 2, "--") == 0;
}

} // namespace

Arguments ParseArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    bool optionsEnded = false;
    for (auto word = words.begin(); word != words.end() && arguments.error.empty(); ++word)
    {
        if (optionsEnded || !IsOption(*word))
        {
            (arguments.command.empty() ? arguments.command : arguments.operands.emplace_back()) = *word;
            continue;
        }
        const auto equals = word->find('=');
        const std::string option = word->substr(0, equals);
        if (auto* value = ValueOf(arguments, option))
        {
            const bool separate = equals == std::string::npos;
            if (separate && ++word == words.end())
            {
                arguments.error = "The option " + option + " needs a value.";
                break;
            }
            *value = separate ? *word : word->substr(equals + 1);
        }
        else if (*word == "--")
        {
            optionsEnded = true;
        }
        else if (*word == "--json")
        {
            arguments.json = true;
        }
        else if (*word == "--help" || *word == "-h")
        {
            arguments.help = true;
        }
        else
        {
            arguments.error = "There is no option " + *word + ".";
        }
    }
    return arguments;
}

} // namespace StrataCli
