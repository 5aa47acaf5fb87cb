#pragma once

#include "platform/Clock.h"
#include "tests/support/PlatformFakes.h"

#include <QDateTime>
#include <QMap>

/// A clock in the test's hands, with a fixed or a changing offset from UTC; in place as long as it lives.
class FakeClock : public FakeService<Platform::Clock>
{
public:
    /// Now, as UTC, for example 2026-03-05T14:07:00.
    void Set(const char* utc) { m_now = Utc(utc); }
    void Advance(qint64 seconds) { m_now = m_now.addSecs(seconds); }

    /// From this point in time on local time is so many minutes ahead of UTC; a second call adds a later change.
    void SetOffset(int minutes, const char* fromUtc = "1970-01-01T00:00:00")
    {
        m_offsets[Utc(fromUtc).toSecsSinceEpoch()] = minutes;
    }

    bool m_hasZone = true;     // what UtcOffset() answers
    std::uint32_t m_error = 0; // what ToLocal() answers

    static qint64 Seconds(const char* utc) { return Utc(utc).toSecsSinceEpoch(); }

    Platform::CalendarTime UtcTime() override { return Calendar(m_now); }
    Platform::CalendarTime LocalTime() override { return Calendar(Local(m_now)); }
    bool UtcOffset(int& minutes) override
    {
        minutes = m_hasZone ? OffsetAt(m_now.toSecsSinceEpoch()) : minutes;
        return m_hasZone;
    }
    std::uint32_t ToLocal(std::int64_t secondsSinceEpoch, Platform::CalendarTime& local) override
    {
        local = Calendar(Local(QDateTime::fromSecsSinceEpoch(secondsSinceEpoch, Qt::UTC)));
        return m_error;
    }

private:
    static QDateTime Utc(const char* text)
    {
        QDateTime time = QDateTime::fromString(QString::fromLatin1(text), Qt::ISODateWithMs);
        time.setTimeSpec(Qt::UTC);
        return time;
    }

    int OffsetAt(qint64 seconds) const
    {
        const auto next = m_offsets.upperBound(seconds);
        return next == m_offsets.begin() ? 0 : std::prev(next).value();
    }

    QDateTime Local(const QDateTime& utc) const { return utc.addSecs(60 * OffsetAt(utc.toSecsSinceEpoch())); }

    static Platform::CalendarTime Calendar(const QDateTime& time)
    {
        const QDate date = time.date();
        const QTime clock = time.time();
        return {date.year(), date.month(), date.day(), clock.hour(), clock.minute(), clock.second(), clock.msec()};
    }

    QDateTime m_now = Utc("2026-03-05T12:00:00");
    QMap<qint64, int> m_offsets;
};
