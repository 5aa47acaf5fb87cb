#pragma once

#include "settings/model/Group.h"

#include <array>

namespace Settings
{

/// How a category is named: in its settings key, and by callers such as the user interface and older data.
struct CategoryName
{
    const wchar_t* key;
    const char* legacyName;
    int group;
};

/// What a category's group number says.
enum CategoryGroupNumber : int
{
    NoGroup = 0,
    Disturbing = 1,
    Shopping = 2,
    Fallback = 3 ///< Stands for every unknown category.
};

// clang-format off
inline constexpr std::array kCategoryNames = {
    CategoryName{L"abortion",             "abortion",             Disturbing},
    CategoryName{L"adserving",            "adserving",            NoGroup},
    CategoryName{L"adult",                "adult",                NoGroup},
    CategoryName{L"alcohol_and_tobacco",  "alcohol and tobacco",  NoGroup},
    CategoryName{L"anonymizers",          "anonymizers",          NoGroup},
    CategoryName{L"auctions",             "auctions",             Shopping},
    CategoryName{L"banking",              "banking",              NoGroup},
    CategoryName{L"blogs",                "blogs",                NoGroup},
    CategoryName{L"chat",                 "chat",                 NoGroup},
    CategoryName{L"cults",                "cults",                Disturbing},
    CategoryName{L"dating",               "dating",               NoGroup},
    CategoryName{L"disturbing",           "disturbing",           Disturbing},
    CategoryName{L"drugs",                "drugs",                NoGroup},
    CategoryName{L"dynamic",              "dynamic",              NoGroup},
    CategoryName{L"entertainment",        "entertainment",        NoGroup},
    CategoryName{L"file_sharing",         "file sharing",         NoGroup},
    CategoryName{L"forum",                "forum",                NoGroup},
    CategoryName{L"gambling",             "gambling",             NoGroup},
    CategoryName{L"games",                "games",                NoGroup},
    CategoryName{L"hacking",              "hacking",              NoGroup},
    CategoryName{L"hate",                 "hate",                 NoGroup},
    CategoryName{L"hobbies",              "hobbies",              NoGroup},
    CategoryName{L"hunting_and_fishing",  "hunting and fishing",  NoGroup},
    CategoryName{L"illegal",              "illegal",              NoGroup},
    CategoryName{L"image_and_video",      "image and video",      NoGroup},
    CategoryName{L"internet_portals",     "internet portals",     NoGroup},
    CategoryName{L"job_search",           "job search",           NoGroup},
    CategoryName{L"lingerie",             "lingerie",             NoGroup},
    CategoryName{L"military",             "military",             NoGroup},
    CategoryName{L"music",                "music",                NoGroup},
    CategoryName{L"news",                 "news",                 NoGroup},
    CategoryName{L"occults",              "occults",              Disturbing},
    CategoryName{L"paymentservice",       "paymentservice",       NoGroup},
    CategoryName{L"potentially_unwanted", "potentially unwanted", NoGroup},
    CategoryName{L"redirect",             "redirect",             NoGroup},
    CategoryName{L"religion",             "religion",             NoGroup},
    CategoryName{L"scam",                 "scam",                 NoGroup},
    CategoryName{L"search_engines",       "search engines",       NoGroup},
    CategoryName{L"selfharm",             "selfharm",             Disturbing},
    CategoryName{L"shopping",             "shopping",             Shopping},
    CategoryName{L"social_networking",    "social networking",    NoGroup},
    CategoryName{L"software_download",    "software download",    NoGroup},
    CategoryName{L"spam",                 "spam",                 NoGroup},
    CategoryName{L"streaming_media",      "streaming media",      NoGroup},
    CategoryName{L"translation",          "translation",          NoGroup},
    CategoryName{L"travel",               "travel",               NoGroup},
    CategoryName{L"violence",             "violence",             NoGroup},
    CategoryName{L"warez",                "warez",                NoGroup},
    CategoryName{L"weapons",              "weapons",              NoGroup},
    CategoryName{L"webhosting",           "webhosting",           NoGroup},
    CategoryName{L"webmail",              "webmail",              NoGroup},
    CategoryName{L"unknown",              "nocat",                Fallback},
};
// clang-format on

/// Whether one category of websites is allowed.
class Category : public Group
{
public:
    Category(Model* parent, const CategoryName& categoryName)
        : Group(parent), name(categoryName),
          allowed(this, std::wstring(L"common.content.allowed_categories.") + name.key, true)
    {}

    const CategoryName& name;
    Property<bool> allowed;
};

/// Every category, in the order of the table.
using CategoryArray = std::array<Category, kCategoryNames.size()>;

} // namespace Settings
