#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <functional>

/// Runs the event loop until condition holds. Returns whether it did within the bound, which is far above
/// what any machine needs.
inline bool waitUntil(const std::function<bool()>& condition, int seconds = 60) {
    const QDeadlineTimer deadline(seconds * 1000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QThread::usleep(200);
    }
    return true;
}
