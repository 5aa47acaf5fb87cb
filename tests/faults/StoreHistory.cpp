#include "tests/faults/StoreHistory.h"

#include "text/Utf.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iterator>
#include <utility>

void StoreHistory::Add(const std::string& sid, const Entries& entries)
{
    ++m_times[sid];
    for (const auto& [key, entry] : entries)
    {
        Past& past = m_scopes[sid][key];
        const std::set<std::string> elements = ElementsOf(entry);
        if (past.times++ == 0)
            past.steadyElements = elements;
        past.values.insert(StringOf(entry));
        past.constraints.insert(entry.constraints);
        past.elements.insert(elements.begin(), elements.end());
        std::set<std::string> steady;
        std::set_intersection(past.steadyElements.begin(), past.steadyElements.end(), elements.begin(), elements.end(),
                              std::inserter(steady, steady.end()));
        past.steadyElements = std::move(steady);
    }
}

std::vector<std::string> StoreHistory::WrongIn(const std::string& sid, const Entries& entries) const
{
    std::vector<std::string> wrong;
    const std::map<std::wstring, Past>& pasts = m_scopes.at(sid);
    for (const auto& [key, entry] : entries)
    {
        const auto past = pasts.find(key);
        if (past == pasts.end() || !MayHold(past->second, key, entry))
            wrong.push_back(Text::ToUtf8(key) + ": " + StringOf(entry));
    }
    for (const auto& [key, past] : pasts)
        if (past.times == m_times.at(sid) && entries.count(key) == 0)
            wrong.push_back(Text::ToUtf8(key) + ": nothing");
    return wrong;
}

std::string StoreHistory::StringOf(const StoreTest::Stored& entry)
{
    return std::to_string(entry.type) + ' ' + std::to_string(entry.number) + ' ' + entry.text;
}

std::set<std::string> StoreHistory::ElementsOf(const StoreTest::Stored& entry)
{
    std::set<std::string> elements;
    if (entry.type == ORB_STRATA_TYPE_OBJECT)
        for (const QJsonValue& element : QJsonDocument::fromJson(QByteArray::fromStdString(entry.text)).array())
            elements.insert(QJsonDocument(element.toObject()).toJson(QJsonDocument::Compact).toStdString());
    return elements;
}

bool StoreHistory::IsList(const std::wstring& key)
{
    constexpr std::wstring_view kList = L".sites.list";
    return key.size() > kList.size() && key.compare(key.size() - kList.size(), kList.size(), kList) == 0;
}

bool StoreHistory::MayHold(const Past& past, const std::wstring& key, const StoreTest::Stored& entry)
{
    if (past.constraints.count(entry.constraints) == 0)
        return false;
    if (!IsList(key))
        return past.values.count(StringOf(entry)) != 0;
    const std::set<std::string> elements = ElementsOf(entry);
    const auto holds = [](const std::set<std::string>& whole, const std::set<std::string>& part) {
        return std::includes(whole.begin(), whole.end(), part.begin(), part.end());
    };
    return entry.type == ORB_STRATA_TYPE_OBJECT && holds(past.elements, elements) &&
           holds(elements, past.steadyElements);
}
