#pragma once

#include "backup/LiveFiles.h"

#include <QFuture>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <functional>

namespace Stemhaven {

/// Copies the databases aside once a day while the program runs, at a quiet moment and on another thread.
class DailyCopy {
public:
    /// isQuiet says whether the catalogue is at rest; it is asked at each interval, on the thread of this
    /// object.
    DailyCopy(LiveFiles live, std::function<bool()> isQuiet, std::chrono::milliseconds interval);
    /// Gives up a copy that is being made, and waits for its end.
    ~DailyCopy();
    Q_DISABLE_COPY_MOVE(DailyCopy)

private:
    void copyIfDue();

    const LiveFiles m_live;
    const std::function<bool()> m_isQuiet;
    std::atomic<bool> m_isEnding = false;
    QTimer m_timer;
    QFuture<void> m_copying;
};

} // namespace Stemhaven
