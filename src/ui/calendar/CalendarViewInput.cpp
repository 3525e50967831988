// What the mouse and the keys do in a calendar.

#include "ui/calendar/CalendarView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cstdlib>

// --- Mouse -------------------------------------------------------------------------------------------------

void CalendarView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        cancelDrag();
        return;
    }
    const QPoint position = event->position().toPoint();
    const QDate day = m_places.dayAt(position);
    if (!day.isValid())
        return;
    const auto section = m_places.sectionAt(position);
    const bool isEvent = section.day.isValid() && section.index != CalendarLayout::Section::none;
    const qint64 project = isEvent ? m_events.on(day)[static_cast<std::size_t>(section.index)].project : 0;
    if (isEvent)
        m_drag = Drag{project, position, position};
    goTo(day, project);
    if (section.more > 0)
        emit moreRequested(day);
}

void CalendarView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_drag)
        return;
    m_drag->at = event->position().toPoint();
    const int distance = (m_drag->at - m_drag->pressed).manhattanLength();
    if (!m_drag->isUnderWay && distance < QApplication::startDragDistance())
        return;
    m_drag->isUnderWay = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
    viewport()->update();
}

void CalendarView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_drag)
        return;
    const Drag drag = *m_drag;
    cancelDrag();
    const QDate day = m_places.dayAt(event->position().toPoint());
    if (drag.isUnderWay && day.isValid())
        moveEvent(drag.project, day);
}

void CalendarView::mouseDoubleClickEvent(QMouseEvent* event) {
    // A slip of the mouse in it is no drag.
    cancelDrag();
    const auto section = m_places.sectionAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && section.day.isValid() && m_project != 0)
        emit eventActivated(m_project);
}

void CalendarView::cancelDrag() {
    m_drag.reset();
    viewport()->unsetCursor();
    viewport()->update();
}

void CalendarView::wheelEvent(QWheelEvent* event) {
    constexpr int perPage = 120;
    if (m_span == Span::Week) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    m_wheel += event->angleDelta().y();
    const int pages = m_wheel / perPage;
    m_wheel -= pages * perPage;
    if (pages != 0)
        turnPage(-pages);
    event->accept();
}

// --- Keys --------------------------------------------------------------------------------------------------

bool CalendarView::handleArrow(int key, Qt::KeyboardModifiers modifiers) {
    constexpr int week = CalendarLayout::daysPerWeek;
    const bool isUpright = key == Qt::Key_Up || key == Qt::Key_Down;
    const bool isForwards = isUpright ? key == Qt::Key_Down : isRightToLeft() != (key == Qt::Key_Right);
    const int days = (isForwards ? 1 : -1) * (isUpright ? week : 1);
    if (modifiers == Qt::AltModifier)
        moveCurrent(days);
    else if (modifiers == Qt::ControlModifier)
        goToEvent(isForwards, m_places.first(), m_places.last());
    else if (modifiers != Qt::NoModifier)
        return false;
    else if (isUpright && m_span == Span::Week)
        goToEvent(isForwards, m_day, m_day);
    else
        goTo(m_day.addDays(days));
    return true;
}

bool CalendarView::handleKey(int key) {
    const auto pageAway = [this](int pages) {
        return m_span == Span::Month ? m_day.addMonths(pages)
                                     : m_day.addDays(pages * CalendarLayout::daysPerWeek);
    };
    switch (key) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const QDate day = pageAway(key == Qt::Key_PageDown ? 1 : -1);
        showPage(day);
        goTo(day);
        return true;
    }
    case Qt::Key_Home:
        goTo(startOfWeek(m_day));
        return true;
    case Qt::Key_End:
        goTo(startOfWeek(m_day).addDays(CalendarLayout::daysPerWeek - 1));
        return true;
    case Qt::Key_T:
        goToToday();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return activateCurrent();
    case Qt::Key_Escape:
        if (!m_drag || !m_drag->isUnderWay)
            return false;
        cancelDrag();
        return true;
    default:
        return false;
    }
}

/// A day with several events first lets one of them be chosen.
bool CalendarView::activateCurrent() {
    const auto events = m_events.on(m_day);
    if (m_project != 0)
        emit eventActivated(m_project);
    else if (events.size() == 1)
        emit eventActivated(events.front().project);
    else if (!events.empty())
        goTo(m_day, events.front().project);
    else
        return false;
    return true;
}

void CalendarView::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool isArrow =
        key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
    const bool isHandled =
        isArrow ? handleArrow(key, modifiers) : modifiers == Qt::NoModifier && handleKey(key);
    event->setAccepted(isHandled);
}

/// The Tab key goes through the events of the current day before it leaves.
bool CalendarView::focusNextPrevChild(bool next) {
    const qint64 before = m_project;
    if (next || before != 0)
        goToEvent(next, m_day, m_day);
    if (m_project != before)
        return true;
    m_project = 0;
    arrange();
    // From the first event back to the day as a whole.
    return (!next && before != 0) || QAbstractScrollArea::focusNextPrevChild(next);
}

void CalendarView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    announceCurrent();
    viewport()->update();
}

void CalendarView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    cancelDrag();
}

void CalendarView::hideEvent(QHideEvent* event) {
    cancelDrag();
    QAbstractScrollArea::hideEvent(event);
}
