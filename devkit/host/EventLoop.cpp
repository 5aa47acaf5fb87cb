#include "devkit/host/EventLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

void RunUntilIdle()
{
    constexpr qint64 PatienceMs = 1000;
    QElapsedTimer timer;
    timer.start();
    do
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (QAbstractEventDispatcher::instance()->hasPendingEvents() && timer.elapsed() < PatienceMs);
}

void RunFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
