#pragma once

#include <QDate>
#include <QString>

#include <optional>
#include <span>
#include <vector>

/// What stands on one day of a calendar.
struct CalendarEvent {
    enum class Kind {
        Firm,
        Tentative, ///< drawn as an outline
    };

    qint64 project = 0; ///< no two events are of one
    QDate date;
    QString title;
    QString details; ///< a second line, where there is room for one
    Kind kind = Kind::Firm;
};

/// Events in the order of their days, and of their titles within a day.
class CalendarEvents {
public:
    CalendarEvents() = default;
    explicit CalendarEvents(std::vector<CalendarEvent> events);

    /// Valid until one is moved.
    std::span<const CalendarEvent> on(QDate day) const;

    int countOn(QDate day) const { return static_cast<int>(on(day).size()); }

    /// Null where the project has none.
    const CalendarEvent* find(qint64 project) const;
    /// Of its day; -1 where the project has none.
    int indexOnDay(qint64 project) const;

    /// The next in the order behind the event of a project, or before it, within these days. Without a
    /// project, the first one from a day on, or the last one up to it.
    const CalendarEvent* next(qint64 project, QDate day, bool forwards, QDate first, QDate last) const;

    void move(qint64 project, QDate day);

private:
    std::vector<CalendarEvent> m_events;
};
