#pragma once

#include <QWidget>

class CalendarView;
class QHBoxLayout;
class QLabel;
class ToolButton;

/// A calendar with a line above it that says what it shows and turns its pages.
class CalendarPane : public QWidget {
    Q_OBJECT

public:
    explicit CalendarPane(QWidget* parent = nullptr);

    CalendarView& view() const { return *m_view; }

    /// Into the line above the calendar.
    void addControl(QWidget* control);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showTexts();
    void showArrows();

    QHBoxLayout* m_line;
    QLabel* m_title;
    ToolButton* m_previous;
    ToolButton* m_next;
    CalendarView* m_view;
};
