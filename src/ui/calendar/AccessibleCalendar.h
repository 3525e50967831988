#pragma once

#include <QAccessibleWidget>

#include <map>
#include <utility>

class CalendarView;

/// Shows a calendar to assistive technology: as its children first the days that it shows, then the events on
/// them that are seen.
class AccessibleCalendar : public QAccessibleWidget {
public:
    explicit AccessibleCalendar(CalendarView& view);
    ~AccessibleCalendar() override;
    Q_DISABLE_COPY(AccessibleCalendar)

    /// Lets all calendars be shown so. Does nothing but once.
    static void install();

    CalendarView& view() const;

    /// Of the current event, or else of the current day; -1 where it is not shown.
    int currentChild() const;

    QString text(QAccessible::Text kind) const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    mutable std::map<int, QAccessible::Id> m_children;
};
