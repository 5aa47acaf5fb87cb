#include "devkit/terminal/MainPage.h"

#include "devkit/core/Printable.h"

#include <algorithm>
#include <iterator>

namespace
{

using MainPage::Switch;

constexpr Switch kSwitches[] = {
    {"browsing_protection", "Browsing protection", "@BrowsingProtection\\Data:browsing_protection_state",
     "@BrowsingProtection\\Data:browsing_protection_status",
     "@BrowsingProtection\\Data:browsing_protection_state_readonly"},
    {"banking_protection", "Banking protection", "@SafeBanking\\Data:banking_protection_state",
     "@SafeBanking\\Data:banking_protection_status", "@SafeBanking\\Data:banking_protection_state_readonly"},
    {"web_filter", "Web page filter", "@ContentControl\\Data:current_user_web_page_filter_switch_state",
     "@ContentControl\\Status:current_user_web_page_filter_status", nullptr},
    {"time_limit", "Time limit", "@TimeLimit\\Data:time_limit_state", "@TimeLimit\\Data:time_limit_status", nullptr},
    {"safe_search", "Safe search", "@SafeSearch\\Data:safe_search_state", "@SafeSearch\\Data:safe_search_status",
     nullptr},
};

struct Title
{
    const char* id;
    const char* title;
};

constexpr const char* kStatusLevel = "@ContentControl\\Status:status_level";
constexpr const char* kMainStatus = "@ContentControl\\Status:main_status";
constexpr const char* kSubStatus = "@ContentControl\\Status:sub_status";
constexpr const char* kExtensionDisabled = "@ContentControl\\Status:browser_extension_disabled";
constexpr const char* kDefaultBrowser = "@ContentControl\\Status:default_browser_type";

constexpr Title kTitles[] = {
    {kStatusLevel, "Status level"},
    {kMainStatus, "Main status"},
    {kSubStatus, "Sub status"},
    {kExtensionDisabled, "Browser extension disabled"},
    {kDefaultBrowser, "Default browser type"},
    {"@Veridan\\MainGUI:visible", "Main page visible"},
};

struct Phrase
{
    const char* value;
    const char* words;
};

constexpr Phrase kPhrases[] = {
    {"Ok", "OK"},
    {"UsersProtected", "Users are protected"},
    {"UsersNotProtected", "Users are not protected"},
    {"WfOn", "the web page filter or the time limit is on"},
    {"WfOff", "the web page filter and the time limit are off"},
    {"BpOff", "browsing protection is off"},
};

QString InWords(const QVariant& value)
{
    const QString text = value.toString();
    const auto* const found = std::find_if(std::begin(kPhrases), std::end(kPhrases), [&text](const Phrase& phrase) {
        return text == QLatin1String(phrase.value);
    });
    return found != std::end(kPhrases) ? QString::fromLatin1(found->words)
           : text.isEmpty()            ? QStringLiteral("unknown")
                                       : Printable(text);
}

QString Row(const QString& title, const QString& value)
{
    constexpr int kTitleColumns = 30;
    return QStringLiteral("   ") + title.leftJustified(kTitleColumns) + value + QLatin1Char('\n');
}

QString DrawStatus(const QVariantMap& values, const TextStyle& style)
{
    const bool good = values.value(QLatin1String(kStatusLevel)) == QLatin1String("Ok");
    const QString headline = style.Dot() + QLatin1Char(' ') + InWords(values.value(QLatin1String(kMainStatus)));
    return QLatin1Char(' ') + (good ? style.Good(headline) : style.Bad(headline)) +
           style.Faint(QStringLiteral("  (%1)").arg(InWords(values.value(QLatin1String(kSubStatus))))) +
           QLatin1Char('\n');
}

QString DrawSwitch(const QVariantMap& values, const TextStyle& style, const Switch& row)
{
    const QString state = values.value(QLatin1String(row.state)).toString();
    const QString shown = state.isEmpty() ? QStringLiteral("?") : Printable(state);
    const bool readOnly = row.readOnly && values.value(QLatin1String(row.readOnly)).toBool();
    const QString mark =
        readOnly ? QString(std::max(7 - shown.size(), 1), QLatin1Char(' ')) + style.Notice(QStringLiteral("read-only"))
                 : QString();
    const bool on = state == QLatin1String("On");
    return Row(QLatin1String(row.title), (on ? style.Good(shown) : style.Faint(shown)) + mark);
}

} // namespace

const Switch* MainPage::FindSwitch(const QString& name)
{
    const auto* const found = std::find_if(std::begin(kSwitches), std::end(kSwitches), [&name](const Switch& row) {
        return name == QLatin1String(row.name) || name == QLatin1String(row.state);
    });
    return found == std::end(kSwitches) ? nullptr : found;
}

QStringList MainPage::SwitchNames()
{
    QStringList names;
    std::transform(std::begin(kSwitches), std::end(kSwitches), std::back_inserter(names),
                   [](const Switch& row) { return QString::fromLatin1(row.name); });
    return names;
}

QString MainPage::TitleOf(const QString& id)
{
    for (const Switch& row : kSwitches)
    {
        QString title = QString::fromLatin1(row.title);
        if (id == QLatin1String(row.state))
            return title;
        if (id == QLatin1String(row.status))
            return title + QLatin1String(" (status)");
        if (row.readOnly && id == QLatin1String(row.readOnly))
            return title + QLatin1String(" (read-only)");
    }
    const auto* const found = std::find_if(std::begin(kTitles), std::end(kTitles),
                                           [&id](const Title& title) { return id == QLatin1String(title.id); });
    return found == std::end(kTitles) ? id : QString::fromLatin1(found->title);
}

QString MainPage::Draw(const QVariantMap& values, const TextStyle& style)
{
    QString page = DrawStatus(values, style) + QLatin1Char('\n');
    for (const Switch& row : kSwitches)
        page += DrawSwitch(values, style, row);
    const bool disabled = values.value(QLatin1String(kExtensionDisabled)).toBool();
    page += QLatin1Char('\n');
    page += Row(QStringLiteral("Browser extension"),
                disabled ? style.Bad(QStringLiteral("disabled")) : QStringLiteral("not disabled"));
    page +=
        Row(QStringLiteral("Default browser type"), Printable(values.value(QLatin1String(kDefaultBrowser)).toString()));
    return page;
}
