#pragma once

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

/// An application that times its event loop: how long it was busy with what had come before it looked for
/// something new, such as a key or the pointer.
class EventLoopWatch : public QApplication {
public:
    using Delivered = std::function<void(const QObject* receiver, QEvent::Type)>;

    EventLoopWatch(int& argc, char** argv) : QApplication(argc, argv) {
        auto* dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { endStretch(); });
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { endStretch(); });
    }

    /// Called on the GUI thread after each event. The receiver may be gone by then.
    void setDelivered(Delivered delivered) { m_delivered = std::move(delivered); }

    /// Seconds of the longest stretch since the last call.
    double takeLongestStall() {
        endStretch();
        return std::chrono::duration<double>(std::exchange(m_longest, {})).count();
    }

    bool notify(QObject* receiver, QEvent* event) override {
        if (QThread::currentThread() != thread())
            return QApplication::notify(receiver, event);

        // Which dispatcher is there decides whether a signal comes before or after the events of a pass, so
        // a stretch is measured from event to event.
        if (m_depth++ == 0 && !m_inStretch) {
            m_inStretch = true;
            m_begin = Clock::now();
        }
        const auto type = event->type();
        const bool accepted = QApplication::notify(receiver, event);
        if (m_delivered)
            m_delivered(receiver, type);
        if (--m_depth == 0)
            m_end = Clock::now();
        return accepted;
    }

private:
    using Clock = std::chrono::steady_clock;

    void endStretch() {
        if (m_depth > 0)
            return;
        if (std::exchange(m_inStretch, false))
            m_longest = std::max(m_longest, m_end - m_begin);
    }

    Delivered m_delivered;
    Clock::time_point m_begin;
    Clock::time_point m_end;
    Clock::duration m_longest{};
    int m_depth = 0;
    bool m_inStretch = false;
};
