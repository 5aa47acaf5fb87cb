#pragma once

#include "devkit/core/CommandTable.h"
#include "devkit/core/StoreAccess.h"
#include "devkit/core/Topic.h"

#include <QObject>
#include <QTimer>
#include <QVariantList>

#include <memory>
#include <optional>
#include <vector>

class Host;

/// Makes events of what happens in the host and hands them to the clients that watch; looks only where somebody does.
/// UI thread.
class Feeds : public QObject
{
    Q_OBJECT
public:
    explicit Feeds(Host& host);

    /// Begins and ends what the clients' watches ask for. Why a watch cannot be, as a sentence, else empty.
    QString OnWatchesChanged();

    /// Tells what has come to the lists and to the log since the last time.
    void Poll();

    void TellHost();

    /// Of a request that may change something, before it is carried out, and of its answer once all that it caused has
    /// been told. While somebody watches requests, each is followed by a time in which the store settles.
    void TellRequest(const Command& command, const QVariantMap& request) const;
    void TellAnswer(const Command& command, const Answer& answer) const;

private:
    void PollList(Topic topic, const char* event, QVariantList (*read)(), std::optional<QVariantList>& told);
    void PollFaults();
    void PollLog();
    QString WatchStore();
    void WatchWrites(bool on);

    Host& m_host;
    QTimer m_timer; // what other threads do shows without a command too
    std::vector<std::shared_ptr<StoreAccess::Watch>> m_store;
    std::optional<QVariantList> m_flyers; // what is told; nothing while nobody watches
    std::optional<QVariantList> m_metrics;
    std::optional<QVariantList> m_faults;
    qint64 m_logEnd = -1; // up to where the log is told; -1: nobody watches
};
