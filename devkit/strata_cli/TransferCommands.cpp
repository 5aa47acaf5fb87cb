#include "devkit/strata_cli/TransferCommands.h"

#include "devkit/strata_cli/Complaint.h"
#include "devkit/strata_cli/Console.h"
#include "devkit/strata_cli/Transfer.h"

#include <utility>

namespace StrataCli
{

namespace
{

/// Reads a file that Export has written. Done, or the code of what was complained of.
ExitCode ReadItems(const std::string& file, Items& items)
{
    std::string json;
    std::string error;
    if (!ReadInput(file, json, error))
        return Complain(Failed, error);
    return Import(json, items, error) ? Done : Complain(Refused, file + ": " + error + ". Nothing was written.");
}

/// Writes what has no value yet; constraints that are there stay.
ExitCode Seed(StoreScope& scope, Items items)
{
    const Items existing = scope.List("");
    if (scope.Result() != ORB_STRATA_SUCCESS)
        return Complain(scope);
    for (const auto& [key, item] : existing)
    {
        const auto at = items.find(key);
        if (at != items.end() && item.type != ORB_STRATA_TYPE_NONE)
            items.erase(at);
        else if (at != items.end())
            at->second.constraints = item.constraints;
    }
    return scope.Write(items) ? Done : Complain(scope);
}

} // namespace

ExitCode ExportScope(StoreScope& scope, const Arguments& arguments)
{
    const Items items = scope.List("");
    if (scope.Result() != ORB_STRATA_SUCCESS)
        return Complain(scope);
    std::string error;
    const std::string file = arguments.operands.empty() ? "-" : arguments.operands[0];
    return WriteOutput(file, Export(items), error) ? Done : Complain(Failed, error);
}

ExitCode ImportScope(StoreScope& scope, const Arguments& arguments)
{
    Items items;
    const ExitCode read = ReadItems(arguments.operands[0], items);
    if (read != Done)
        return read;
    return scope.Write(items) ? Done : Complain(scope);
}

/// The defaults serve every scope alike; a file is for one.
ExitCode SeedScopes(const Arguments& arguments)
{
    const bool fromFile = !arguments.operands.empty();
    Items items;
    const ExitCode read = ReadItems(fromFile ? arguments.operands[0] : ProgramFolder() + "/defaults.json", items);
    if (read != Done)
        return read;
    std::vector<std::string> scopes = {arguments.scope.value_or("user")};
    if (!fromFile && !arguments.scope)
        scopes.emplace_back("system");
    for (const std::string& name : scopes)
    {
        StoreScope scope(name);
        const ExitCode code = scope.IsOpen() ? Seed(scope, items) : Complain(scope);
        if (code != Done)
            return code;
    }
    return Done;
}

} // namespace StrataCli
