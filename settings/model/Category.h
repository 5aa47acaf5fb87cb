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
    kNoGroup = 0,
    kDisturbing = 1,
    kShopping = 2,
    kFallback = 3 ///< Stands for every unknown category.
};

// clang-format off
inline constexpr std::array kCategoryNames = {
    CategoryName{L"abortion",             "abortion",             kDisturbing},
    CategoryName{L"adserving",            "adserving",            kNoGroup},
    CategoryName{L"adult",                "adult",                kNoGroup},
    CategoryName{L"alcohol_and_tobacco",  "alcohol and tobacco",  kNoGroup},
    CategoryName{L"anonymizers",          "anonymizers",          kNoGroup},
    CategoryName{L"auctions",             "auctions",             kShopping},
    CategoryName{L"banking",              "banking",              kNoGroup},
    CategoryName{L"blogs",                "blogs",                kNoGroup},
    CategoryName{L"chat",                 "chat",                 kNoGroup},
    CategoryName{L"cults",                "cults",                kDisturbing},
    CategoryName{L"dating",               "dating",               kNoGroup},
    CategoryName{L"disturbing",           "disturbing",           kDisturbing},
    CategoryName{L"drugs",                "drugs",                kNoGroup},
    CategoryName{L"dynamic",              "dynamic",              kNoGroup},
    CategoryName{L"entertainment",        "entertainment",        kNoGroup},
    CategoryName{L"file_sharing",         "file sharing",         kNoGroup},
    CategoryName{L"forum",                "forum",                kNoGroup},
    CategoryName{L"gambling",             "gambling",             kNoGroup},
    CategoryName{L"games",                "games",                kNoGroup},
    CategoryName{L"hacking",              "hacking",              kNoGroup},
    CategoryName{L"hate",                 "hate",                 kNoGroup},
    CategoryName{L"hobbies",              "hobbies",              kNoGroup},
    CategoryName{L"hunting_and_fishing",  "hunting and fishing",  kNoGroup},
    CategoryName{L"illegal",              "illegal",              kNoGroup},
    CategoryName{L"image_and_video",      "image and video",      kNoGroup},
    CategoryName{L"internet_portals",     "internet portals",     kNoGroup},
    CategoryName{L"job_search",           "job search",           kNoGroup},
    CategoryName{L"lingerie",             "lingerie",             kNoGroup},
    CategoryName{L"military",             "military",             kNoGroup},
    CategoryName{L"music",                "music",                kNoGroup},
    CategoryName{L"news",                 "news",                 kNoGroup},
    CategoryName{L"occults",              "occults",              kDisturbing},
    CategoryName{L"paymentservice",       "paymentservice",       kNoGroup},
    CategoryName{L"potentially_unwanted", "potentially unwanted", kNoGroup},
    CategoryName{L"redirect",             "redirect",             kNoGroup},
    CategoryName{L"religion",             "religion",             kNoGroup},
    CategoryName{L"scam",                 "scam",                 kNoGroup},
    CategoryName{L"search_engines",       "search engines",       kNoGroup},
    CategoryName{L"selfharm",             "selfharm",             kDisturbing},
    CategoryName{L"shopping",             "shopping",             kShopping},
    CategoryName{L"social_networking",    "social networking",    kNoGroup},
    CategoryName{L"software_download",    "software download",    kNoGroup},
    CategoryName{L"spam",                 "spam",                 kNoGroup},
    CategoryName{L"streaming_media",      "streaming media",      kNoGroup},
    CategoryName{L"translation",          "translation",          kNoGroup},
    CategoryName{L"travel",               "travel",               kNoGroup},
    CategoryName{L"violence",             "violence",             kNoGroup},
    CategoryName{L"warez",                "warez",                kNoGroup},
    CategoryName{L"weapons",              "weapons",              kNoGroup},
    CategoryName{L"webhosting",           "webhosting",           kNoGroup},
    CategoryName{L"webmail",              "webmail",              kNoGroup},
    CategoryName{L"unknown",              "nocat",                kFallback},
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
