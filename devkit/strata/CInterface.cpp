#include "devkit/strata/CInterface.h"

#include "devkit/strata/Object.h"
#include "devkit/strata/Utf8.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <utility>

namespace Strata
{

namespace
{

void* CopyBytes(const void* text, std::size_t size)
{
    void* copy = std::malloc(size);
    return copy ? std::memcpy(copy, text, size) : nullptr;
}

} // namespace

char* CopyString(const char* text)
{
    return text ? static_cast<char*>(CopyBytes(text, std::strlen(text) + 1)) : nullptr;
}

wchar_t* CopyString(const wchar_t* text)
{
    return !text ? nullptr : static_cast<wchar_t*>(CopyBytes(text, (std::wcslen(text) + 1) * sizeof(wchar_t)));
}

OrbStrataResult MakeStringEntry(OrbStrataType type, const char* text, Entry& entry)
{
    entry.type = type;
    if (!text || !IsUtf8(text))
        return ORB_STRATA_INVALID_ARGUMENT;
    if (type != ORB_STRATA_TYPE_OBJECT)
    {
        entry.text = std::make_shared<const std::string>(text);
        return kSuccess;
    }
    const auto object = ParseObject(text);
    if (!object)
        return ORB_STRATA_INVALID_ARGUMENT;
    entry.text = std::make_shared<const std::string>(PrintObject(*object));
    return kSuccess;
}

OrbStrataResult ApplyEdit(OrbStrataHandle handle, const wchar_t* key, Edit::Kind kind, Entry entry)
{
    auto utf8 = ToUtf8Strict(key);
    if (!utf8 || utf8->empty())
        return ORB_STRATA_INVALID_ARGUMENT;
    std::vector<Edit> edits;
    edits.push_back({kind, std::move(*utf8), std::move(entry)});
    return Store::Instance().Apply(handle, edits);
}

} // namespace Strata
