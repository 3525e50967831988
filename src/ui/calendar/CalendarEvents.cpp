#include "ui/calendar/CalendarEvents.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace {

bool isBefore(const CalendarEvent& one, const CalendarEvent& other) {
    if (one.date != other.date)
        return one.date < other.date;
    const int order = QString::localeAwareCompare(one.title, other.title);
    return order != 0 ? order < 0 : one.project < other.project;
}

} // namespace

CalendarEvents::CalendarEvents(std::vector<CalendarEvent> events) : m_events(std::move(events)) {
    std::sort(m_events.begin(), m_events.end(), isBefore);
}

std::span<const CalendarEvent> CalendarEvents::on(QDate day) const {
    const auto [first, last] = std::ranges::equal_range(m_events, day, {}, &CalendarEvent::date);
    return {first, last};
}

const CalendarEvent* CalendarEvents::find(qint64 project) const {
    const auto found = std::ranges::find(m_events, project, &CalendarEvent::project);
    return found != m_events.end() ? &*found : nullptr;
}

int CalendarEvents::indexOnDay(qint64 project) const {
    const CalendarEvent* event = find(project);
    return event ? static_cast<int>(event - on(event->date).data()) : -1;
}

const CalendarEvent*
CalendarEvents::next(qint64 project, QDate day, bool forwards, QDate first, QDate last) const {
    const CalendarEvent* current = find(project);
    auto position =
        std::ranges::lower_bound(m_events, forwards ? day : day.addDays(1), {}, &CalendarEvent::date);
    if (current)
        position = m_events.begin() + (current - m_events.data()) + (forwards ? 1 : 0);
    if (!forwards && position == m_events.begin())
        return nullptr;
    if (!forwards)
        --position;
    const bool isThere = position != m_events.end() && position->date >= first && position->date <= last;
    return isThere ? &*position : nullptr;
}

void CalendarEvents::move(qint64 project, QDate day) {
    const auto found = std::ranges::find(m_events, project, &CalendarEvent::project);
    if (found == m_events.end())
        return;
    CalendarEvent event = std::move(*found);
    m_events.erase(found);
    event.date = day;
    m_events.insert(std::upper_bound(m_events.begin(), m_events.end(), event, isBefore), std::move(event));
}
