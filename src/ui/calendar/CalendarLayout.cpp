#include "ui/calendar/CalendarLayout.h"

#include <algorithm>
#include <utility>

CalendarLayout::CalendarLayout(const Frame& frame, CountOn countOn)
    : m_frame(frame),
      m_countOn(std::move(countOn)) {}

int CalendarLayout::columnLeft(int visualColumn) const {
    return m_frame.area.left() + m_frame.area.width() * visualColumn / daysPerWeek;
}

int CalendarLayout::rowTop(int row) const {
    const int height = m_frame.area.height() - m_frame.headerHeight;
    return m_frame.area.top() + m_frame.headerHeight + height * row / std::max(1, m_frame.weeks);
}

QRect CalendarLayout::header(int column) const {
    const int visual = m_frame.direction == Qt::RightToLeft ? daysPerWeek - 1 - column : column;
    const int left = columnLeft(visual);
    return {left, m_frame.area.top(), columnLeft(visual + 1) - left, m_frame.headerHeight};
}

QRect CalendarLayout::cell(QDate day) const {
    if (!contains(day))
        return {};
    const int index = static_cast<int>(first().daysTo(day));
    const QRect column = header(index % daysPerWeek);
    const int row = index / daysPerWeek;
    return {column.left(), rowTop(row), column.width(), rowTop(row + 1) - rowTop(row)};
}

QRect CalendarLayout::dayLine(QDate day) const {
    QRect line = cell(day);
    line.setHeight(std::min(line.height(), m_frame.dayLineHeight));
    return line;
}

QRect CalendarLayout::body(QDate day) const {
    const int margin = m_frame.margin;
    return cell(day).adjusted(margin, m_frame.dayLineHeight, -margin, -margin);
}

QRect CalendarLayout::sectionRect(const QRect& body, int index) const {
    constexpr int gap = 2;
    const int top = body.top() + index * m_frame.sectionHeight - m_frame.scrolled;
    return {body.left(), top, body.width(), m_frame.sectionHeight - gap};
}

std::vector<CalendarLayout::Section> CalendarLayout::sections(QDate day) const {
    std::vector<Section> result;
    const QRect inside = body(day);
    const int count = contains(day) ? m_countOn(day) : 0;
    if (count == 0 || inside.height() <= 0 || m_frame.sectionHeight <= 0)
        return result;

    const int places = inside.height() / m_frame.sectionHeight;
    if (m_frame.scrolls) {
        const int begin = std::min(count, m_frame.scrolled / m_frame.sectionHeight);
        const int end = std::min(count, begin + places + 2);
        for (int index = begin; index < end; ++index)
            result.push_back({sectionRect(inside, index), day, index, 0});
        return result;
    }
    const int shown = count <= places ? count : std::max(0, places - 1);
    const int begin = day == m_frame.keptDay ? std::max(0, m_frame.keptIndex - shown + 1) : 0;
    for (int place = 0; place < shown; ++place)
        result.push_back({sectionRect(inside, place), day, begin + place, 0});
    if (shown < count && places > 0)
        result.push_back({sectionRect(inside, shown), day, Section::none, count - shown});
    return result;
}

QDate CalendarLayout::dayAt(QPoint position) const {
    for (int index = 0; index < days(); ++index) {
        const QDate day = first().addDays(index);
        if (cell(day).contains(position))
            return day;
    }
    return {};
}

CalendarLayout::Section CalendarLayout::sectionAt(QPoint position) const {
    const QDate day = dayAt(position);
    if (!day.isValid() || !body(day).contains(position))
        return {};
    for (const Section& section : sections(day)) {
        if (section.rect.contains(position))
            return section;
    }
    return {};
}

int CalendarLayout::scrollRange() const {
    if (!m_frame.scrolls)
        return 0;
    int most = 0;
    for (int index = 0; index < days(); ++index)
        most = std::max(most, m_countOn(first().addDays(index)));
    return std::max(0, most * m_frame.sectionHeight - body(first()).height());
}

int CalendarLayout::scrolledTo(int index) const {
    if (!m_frame.scrolls)
        return 0;
    const int top = index * m_frame.sectionHeight;
    const int bottom = top + m_frame.sectionHeight - body(first()).height();
    return std::clamp(m_frame.scrolled, std::min(top, bottom), top);
}
