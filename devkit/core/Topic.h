#pragma once

#include <QStringList>

/// What a client can watch.
enum class Topic
{
    Variables,
    Store,
    Flyers,
    Metrics,
    Urls,
    Log,
    Elevation,
    Host,
    Faults,
    Requests,
    Writes
};

/// The names, in the order of the enumeration.
constexpr const char* kTopicNames = "variables|store|flyers|metrics|urls|log|elevation|host|faults|requests|writes";

inline Topic TopicNamed(const QString& name)
{
    return static_cast<Topic>(QString::fromLatin1(kTopicNames).split(QLatin1Char('|')).indexOf(name));
}
