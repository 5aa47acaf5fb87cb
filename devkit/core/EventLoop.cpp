#include "devkit/core/EventLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

void RunUntilIdle()
{
    constexpr qint64 kPatienceMs = 1000;
    QElapsedTimer timer;
    timer.start();
    do
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (QAbstractEventDispatcher::instance()->hasPendingEvents() && timer.elapsed() < kPatienceMs);
    // The outer loop may have been told to end meanwhile, and what was processed here has used up its notice.
    QAbstractEventDispatcher::instance()->interrupt();
}

void RunFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
