#include "devkit/strata_cli/Commands.h"

#include "devkit/strata_cli/Complaint.h"
#include "devkit/strata_cli/Help.h"
#include "devkit/strata_cli/StoreScope.h"
#include "devkit/strata_cli/Transfer.h"
#include "devkit/strata_cli/TransferCommands.h"
#include "devkit/strata_cli/Watch.h"

#include "devkit/strata/json/JsonReader.h"

#include "platform/KnownFolders.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <limits>

namespace StrataCli
{

namespace
{

ExitCode Print(const std::string& text)
{
    std::string error;
    return WriteOutput("-", text, error) ? Done : Complain(Failed, error);
}

ExitCode NoValue(const std::string& key)
{
    return Complain(NotFound, "There is no value under \"" + key + "\".");
}

/// What is under the key; where there is nothing, an entry that holds nothing. False: the store failed.
bool Current(StoreScope& scope, const std::string& key, Item& item)
{
    item = scope.Find(key).value_or(Item());
    return scope.Result() == ORB_STRATA_SUCCESS || scope.Result() == ORB_STRATA_NOT_FOUND;
}

ExitCode Get(StoreScope& scope, const Arguments& arguments)
{
    const std::string& key = arguments.operands[0];
    Item item;
    if (!Current(scope, key, item))
        return Complain(scope);
    if (item.type == ORB_STRATA_TYPE_NONE)
        return NoValue(key);
    return Print((arguments.json ? JsonItem(item) : PlainValue(item)) + "\n");
}

ExitCode Set(StoreScope& scope, const Arguments& arguments)
{
    const std::string& key = arguments.operands[0];
    std::string text = arguments.operands[1];
    std::string error;
    if (text == "-" && !ReadInput("-", text, error))
        return Complain(Failed, error);
    Item item;
    if (!Current(scope, key, item))
        return Complain(scope);
    auto type = arguments.type ? TypeNamed(*arguments.type) : item.type;
    if (!type)
        return Complain(Misused, "There is no type " + *arguments.type + ".");
    if (!arguments.type && item.type == ORB_STRATA_TYPE_NONE)
    {
        type = GuessType(text);
        std::fprintf(stderr, "strata: \"%s\" is new; its value is taken as %s (--type says otherwise).\n", key.c_str(),
                     std::string(NameOf(*type)).c_str());
    }
    if (!ParseValue(*type, text, item, error))
        return Complain(Refused, error);
    return scope.Write({{key, item}}) ? Done : Complain(scope);
}

ExitCode List(StoreScope& scope, const Arguments& arguments)
{
    const Items items = scope.List(arguments.operands.empty() ? "" : arguments.operands[0]);
    if (scope.Result() != ORB_STRATA_SUCCESS)
        return Complain(scope);
    if (arguments.json)
        return Print(Export(items));
    std::string lines;
    for (const auto& [key, item] : items)
        lines += key + " = " + Describe(item) + "\n";
    return Print(lines);
}

ExitCode Remove(StoreScope& scope, const Arguments& arguments)
{
    if (scope.Remove(arguments.operands[0]))
        return Done;
    return scope.Result() == ORB_STRATA_NOT_FOUND ? NoValue(arguments.operands[0]) : Complain(scope);
}

bool ParseConstraints(const std::string& text, uint32_t& constraints)
{
    int64_t number = text == "enforced" ? ORB_STRATA_CONSTRAINT_ENFORCED : 0;
    Strata::JsonReader reader(text);
    const bool known = text == "enforced" || text == "none" || (reader.Integer(number) && reader.AtEnd());
    constraints = static_cast<uint32_t>(number);
    return known && number >= 0 && number <= std::numeric_limits<uint32_t>::max();
}

ExitCode Constrain(StoreScope& scope, const Arguments& arguments)
{
    uint32_t constraints = 0;
    if (!ParseConstraints(arguments.operands[1], constraints))
    {
        return Complain(Refused,
                        "\"" + arguments.operands[1] + "\" is neither enforced, none nor a number of 32 bits.");
    }
    return scope.Constrain(arguments.operands[0], constraints) ? Done : Complain(scope);
}

ExitCode WatchChanges(StoreScope& scope, const Arguments& arguments)
{
    return Watch(scope, arguments.operands.empty() ? "" : arguments.operands[0], arguments.json) ? Done
                                                                                                 : Complain(scope);
}

/// The file that the development host uses unless it is told otherwise, so that both meet in one store.
std::string StoreFile(const Arguments& arguments)
{
    std::wstring file = arguments.data ? Platform::JoinPath(Platform::FromUtf8(*arguments.data), L"store.db")
                                       : Platform::EnvironmentVariable(L"ORB_STRATA_STORE");
    if (file.empty())
        file = Platform::JoinPath(Platform::JoinPath(Platform::LocalAppData(), L"veridan"), L"store.db");
    return Platform::ToUtf8(file);
}

struct Command
{
    std::string_view name;
    std::size_t fewest; ///< operands
    std::size_t most;
    ExitCode (*run)(StoreScope& scope, const Arguments& arguments);
};

constexpr Command Commands[] = {
    {"get", 1, 1, Get},
    {"set", 2, 2, Set},
    {"list", 0, 1, List},
    {"remove", 1, 1, Remove},
    {"constrain", 2, 2, Constrain},
    {"watch", 0, 1, WatchChanges},
    {"export", 0, 1, ExportScope},
    {"import", 1, 1, ImportScope},
    {"seed", 0, 1, nullptr}, // opens its scopes itself
};

ExitCode Misuse(const std::string& sentence)
{
    return Complain(Misused, sentence + " See strata --help.");
}

} // namespace

ExitCode Run(const Arguments& arguments)
{
    if (arguments.help)
        return Print(std::string(HelpText));
    const auto command = std::find_if(std::begin(Commands), std::end(Commands),
                                      [&](const Command& each) { return each.name == arguments.command; });
    if (!arguments.error.empty() || arguments.command.empty())
        return Misuse(arguments.error.empty() ? "There is no command." : arguments.error);
    if (command == std::end(Commands))
        return Misuse("There is no command " + arguments.command + ".");
    if (arguments.operands.size() < command->fewest || arguments.operands.size() > command->most)
    {
        return Misuse("The command " + arguments.command + " does not go with " +
                      std::to_string(arguments.operands.size()) + " arguments.");
    }
    OrbStrataControl_SetStoreFile(StoreFile(arguments).c_str());
    if (command->run == nullptr)
        return SeedScopes(arguments);
    const std::string name = arguments.scope.value_or("user");
    StoreScope scope(name);
    if (scope.Result() == ORB_STRATA_INVALID_ARGUMENT)
        return Misuse("\"" + name + "\" is neither system, user nor a SID.");
    return scope.IsOpen() ? command->run(scope, arguments) : Complain(scope);
}

} // namespace StrataCli
