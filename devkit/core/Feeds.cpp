#include "devkit/core/Feeds.h"

#include "devkit/core/Host.h"
#include "devkit/core/LogTail.h"
#include "devkit/core/SuiteLists.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

constexpr int kIntervalMs = 100;

QVariantMap Event(const char* name, QVariantMap members)
{
    members.insert(QStringLiteral("event"), QLatin1String(name));
    return members;
}

} // namespace

Feeds::Feeds(Host& host) : m_host(host)
{
    QObject::connect(&m_timer, &QTimer::timeout, this, &Feeds::Poll);
    host.hub.SetObserver([&host](const VariableChange& change) {
        if (host.sessions.Watched(Topic::Variables, change.name))
            host.sessions.Publish(Topic::Variables, change.name, Event("variable", change.Describe()));
    });
    host.urls.SetObserver([&host](const QString& url) {
        host.sessions.Publish(Topic::Urls, {}, Event("url", {{QStringLiteral("url"), url}}));
    });
}

QString Feeds::OnWatchesChanged()
{
    const Sessions& sessions = m_host.sessions;
    Poll(); // who watches now learns of what comes from now on
    constexpr Topic kPolled[] = {Topic::Flyers, Topic::Metrics, Topic::Faults, Topic::Log};
    if (std::none_of(std::begin(kPolled), std::end(kPolled), [&](Topic topic) { return sessions.WatchedAny(topic); }))
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(kIntervalMs);
    WatchWrites(sessions.WatchedAny(Topic::Writes));
    if (!sessions.WatchedAny(Topic::Store))
        m_store.clear();
    return sessions.WatchedAny(Topic::Store) && m_store.empty() ? WatchStore() : QString();
}

QString Feeds::WatchStore()
{
    for (const char* const scope : {"system", "user"})
    {
        const QString name = QLatin1String(scope);
        // Told on a thread of the store's.
        const auto tell = [this, name](const QString& key, bool removed, const StoreEntry& entry) {
            const auto publish = [this, name, key, removed, entry] {
                QVariantMap members = entry.Describe();
                members.insert(QStringLiteral("scope"), name);
                members.insert(QStringLiteral("key"), key);
                members.insert(QStringLiteral("kind"), removed ? QStringLiteral("removed") : QStringLiteral("changed"));
                m_host.sessions.Publish(Topic::Store, key, Event("store", members));
            };
            QMetaObject::invokeMethod(this, publish, Qt::QueuedConnection);
        };
        const auto watch = m_host.store.WatchChanges(name, {}, tell);
        if (!watch.Ok())
        {
            m_store.clear();
            return watch.error;
        }
        m_store.push_back(watch.value);
    }
    return {};
}

void Feeds::WatchWrites(bool on)
{
    static constexpr const char* kWriters[] = {"plugin", "background", "product", "other"};
    if (!on)
        return m_host.storeWrites.SetObserver(nullptr);
    m_host.storeWrites.SetObserver([this](const StoreWrites::Change& write) {
        QVariantMap members = write.entry.Describe();
        members.insert(QStringLiteral("scope"), write.scope);
        members.insert(QStringLiteral("key"), write.key);
        members.insert(QStringLiteral("of"), write.ofValue ? QStringLiteral("value") : QStringLiteral("constraints"));
        members.insert(QStringLiteral("by"), QLatin1String(kWriters[write.by]));
        const auto publish = [this, key = write.key, members] {
            m_host.sessions.Publish(Topic::Writes, key, Event("write", members));
        };
        QMetaObject::invokeMethod(this, publish, Qt::QueuedConnection);
    });
}

void Feeds::Poll()
{
    PollList(Topic::Flyers, "flyer", &SuiteLists::Flyers, m_flyers);
    PollList(Topic::Metrics, "metric", &SuiteLists::Metrics, m_metrics);
    PollFaults();
    PollLog();
}

void Feeds::PollList(Topic topic, const char* event, QVariantList (*read)(), std::optional<QVariantList>& told)
{
    if (!m_host.sessions.WatchedAny(topic))
    {
        told.reset();
        return;
    }
    const QVariantList rows = read();
    const QVariantList before = std::exchange(told, rows).value_or(rows); // who begins to watch is told what comes
    for (int i = 0; i < rows.size(); ++i)
        if (i >= before.size() || rows[i] != before[i])
            m_host.sessions.Publish(topic, {}, Event(event, rows[i].toMap()));
}

/// Each event has all of them: they count down and go.
void Feeds::PollFaults()
{
    if (!m_host.sessions.WatchedAny(Topic::Faults))
    {
        m_faults.reset();
        return;
    }
    const QVariantList rows = SuiteLists::Faults();
    if (std::exchange(m_faults, rows).value_or(rows) != rows)
        m_host.sessions.Publish(Topic::Faults, {}, Event("faults", {{QStringLiteral("active"), rows}}));
}

void Feeds::PollLog()
{
    if (!m_host.sessions.WatchedAny(Topic::Log))
    {
        m_logEnd = -1;
        return;
    }
    const QStringList lines = ReadLogFrom(m_host.folder.LogFile(), m_logEnd);
    for (const QString& line : lines)
        m_host.sessions.Publish(Topic::Log, {}, Event("log", {{QStringLiteral("line"), line}}));
}

void Feeds::TellHost()
{
    m_host.sessions.Publish(Topic::Host, {},
                            Event("host", {{QStringLiteral("loaded"), m_host.plugIn.IsLoaded()},
                                           {QStringLiteral("initialized"), m_host.plugIn.IsInitialized()},
                                           {QStringLiteral("recording"), m_host.recording.IsOn()}}));
}

void Feeds::TellRequest(const Command& command, const QVariantMap& request) const
{
    QVariantMap told = request;
    told.remove(QStringLiteral("id"));
    if (command.turn != Command::Turn::Any)
        m_host.sessions.Publish(Topic::Requests, QLatin1String(command.op),
                                Event("request", {{QStringLiteral("request"), told}}));
}

void Feeds::TellAnswer(const Command& command, const Answer& answer) const
{
    const QString op = QLatin1String(command.op);
    QVariantMap members = ToMessage(answer);
    members.insert(QStringLiteral("op"), op);
    if (command.turn != Command::Turn::Any)
        m_host.sessions.Publish(Topic::Requests, op, Event("answer", members));
}
