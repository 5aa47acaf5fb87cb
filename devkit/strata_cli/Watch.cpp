#include "devkit/strata_cli/Watch.h"

#include "devkit/strata_cli/Console.h"

#include "devkit/strata/json/JsonWriter.h"

#include "platform/Text.h"

#include <cstdio>

namespace StrataCli
{

namespace
{

std::string JsonLine(const std::string& key, const std::optional<Item>& item)
{
    std::string line = "{\"key\":";
    Strata::AppendJsonString(line, key);
    line += item ? ",\"change\":\"changed\"," : ",\"change\":\"removed\"}";
    // The item's own members, without its opening bracket.
    return item ? line + JsonItem(*item).substr(1) : line;
}

void NL_SUITE_CALL PrintChange(void* context, int32_t changeType, const OrbStrataEntry* entry)
{
    const std::string key = Platform::ToUtf8(entry->key);
    std::optional<Item> item;
    if (changeType == ORB_STRATA_CHANGED)
        item = {entry->type, entry->number, entry->text == nullptr ? "" : entry->text, entry->constraints};
    const std::string line = *static_cast<const bool*>(context) ? JsonLine(key, item)
                             : item                             ? key + " = " + Describe(*item)
                                                                : key + " removed";
    std::fprintf(stdout, "%s\n", line.c_str());
    std::fflush(stdout);
}

} // namespace

bool Watch(StoreScope& scope, const std::string& prefix, bool json)
{
    CatchInterrupts();
    OrbStrataResult result = ORB_STRATA_SUCCESS;
    const auto subscription =
        OrbStrataControl_Watch(scope.Handle(), Platform::FromUtf8(prefix).c_str(), PrintChange, &json, &result);
    if (result != ORB_STRATA_SUCCESS)
        return false;
    std::fputs("strata: watching; Ctrl-C ends it.\n", stderr);
    std::fflush(stderr); // some C libraries hold it back where it is not a terminal
    WaitForInterrupt();
    OrbStrata_Unsubscribe(scope.Handle(), subscription);
    return true;
}

} // namespace StrataCli
