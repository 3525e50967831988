#pragma once

#include "ui/calendar/CalendarEvents.h"
#include "ui/calendar/CalendarLayout.h"

#include <QAbstractScrollArea>
#include <QPoint>

#include <optional>

/// A month, in six weeks of days, or a week, with a section in a day for each of its events. The day where
/// the keyboard is, and an event of it, are current. An event goes to another day with the mouse, or with Alt
/// and an arrow key. What the user does is reported. GUI thread.
class CalendarView : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Span { Month, Week };

    explicit CalendarView(QWidget* parent = nullptr);

    void setSpan(Span span);

    Span span() const { return m_span; }

    /// An event that is gone is not current any more; where the current one has moved, its day is current.
    void setEvents(CalendarEvents events);

    const CalendarEvents& events() const { return m_events; }

    /// Shows the day. A day that is not valid changes nothing.
    void setCurrentDate(QDate day);

    QDate currentDate() const { return m_day; }

    /// 0 where no event is current.
    qint64 currentProject() const { return m_project; }

    const CalendarLayout& places() const { return m_places; }

    /// What the calendar is of: the month and year, or the days of the week.
    QString shownText() const;
    /// By so many months or weeks. The current day stays.
    void turnPage(int pages);
    void goToToday();

    /// For assistive technology.
    QString description(QDate day) const;
    QString description(const CalendarEvent& event) const;
    void makeCurrent(QDate day, qint64 project);
    void activate(qint64 project);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// Other days are shown.
    void shownChanged();
    /// The user has made another day current.
    void dateChosen(QDate day);
    void eventActivated(qint64 project);
    /// The user has moved an event, which stands on that day already.
    void eventMoved(qint64 project, QDate day);
    /// The user wants to see the events of a day that have no place.
    void moreRequested(QDate day);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    struct Drag {
        qint64 project;
        QPoint pressed;
        QPoint at;
        bool isUnderWay = false;
    };

    void arrange();
    void showPage(QDate day);
    QDate startOfWeek(QDate day) const;
    bool isDimmed(QDate day) const;
    QString dayName(int column) const;
    QString moreText(int count) const;
    void goTo(QDate day, qint64 project = 0);
    void goToEvent(bool forwards, QDate first, QDate last);
    void moveCurrent(int days);
    void moveEvent(qint64 project, QDate day);
    bool handleArrow(int key, Qt::KeyboardModifiers modifiers);
    bool handleKey(int key);
    bool activateCurrent();
    void cancelDrag();
    void drawDays(class CalendarPainter& painter) const;
    void announceCurrent();

    Span m_span = Span::Month;
    CalendarEvents m_events;
    QDate m_day; ///< current
    qint64 m_project = 0;
    QDate m_page; ///< a day of the month or week that is shown
    CalendarLayout m_places;
    std::optional<Drag> m_drag;
    int m_wheel = 0; ///< what was turned since the last page, in the unit of wheel events
};
