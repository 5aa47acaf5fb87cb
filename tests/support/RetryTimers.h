#pragma once

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimerEvent>

#include <algorithm>
#include <vector>

/// Finds the objects that try again what is missing, and has the time pass for them that they wait.
class RetryTimers : public QObject
{
public:
    static constexpr int kInterval = 3000; // ms

    RetryTimers() { QCoreApplication::instance()->installEventFilter(this); }

    /// False when nobody waits.
    bool Elapse()
    {
        QCoreApplication::sendPostedEvents();
        bool waited = false;
        for (std::size_t i = 0; i < m_objects.size(); ++i)
            if (const QPointer<QObject> object = m_objects[i])
                for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object))
                    if (timer.interval == kInterval)
                    {
                        waited = true;
                        QTimerEvent event(timer.timerId);
                        QCoreApplication::sendEvent(object, &event);
                    }
        QCoreApplication::sendPostedEvents();
        return waited;
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() >= QEvent::User && std::find(m_objects.begin(), m_objects.end(), object) == m_objects.end())
            m_objects.emplace_back(object);
        return false;
    }

private:
    std::vector<QPointer<QObject>> m_objects;
};
