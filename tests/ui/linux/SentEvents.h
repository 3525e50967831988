#pragma once

#include <QAccessible>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

/// Assistive technology, as far as the program knows, while this lives: what goes out to it. One at a time.
///
/// The platform that the tests run on has none and gives no public way to say otherwise, so the two functions
/// of QAccessible that decide are replaced in the test program.
class SentEvents {
public:
    /// onEvent is called with each event, as a bridge asks for what the event is about.
    explicit SentEvents(std::function<void()> onEvent = {});
    ~SentEvents();
    Q_DISABLE_COPY(SentEvents)

    /// The accessible names of those that events of the type were about, the oldest first.
    QStringList names(QAccessible::Event type) const;

    void clear() { m_events.clear(); }

    static SentEvents* active();

    void take(QAccessibleEvent& event);

private:
    std::function<void()> m_onEvent;
    QList<std::pair<QAccessible::Event, QString>> m_events;
};
