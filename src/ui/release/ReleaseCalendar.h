#pragma once

#include <QWidget>

class CalendarPane;
class CalendarView;
class EditHistory;
class QLabel;
class QSqlQuery;
class QToolButton;

namespace Stemhaven {
class TaskManager;
}

/// A window with a calendar of all released projects. One that is moved to another day gets another release
/// date, by an edit that can be undone.
class ReleaseCalendar : public QWidget {
    Q_OBJECT

public:
    /// All of them outlive the window.
    ReleaseCalendar(Stemhaven::TaskManager& tasks, EditHistory& history, QWidget* parent);

    /// Reads the releases again, if the window is visible; it reads them when it is shown. The newest request
    /// waits for the answer to the one before.
    void reload();
    void storeState() const;

signals:
    /// The user wants to see the release details of a project.
    void openRequested(qint64 project);
    /// The releases of the shown days have come.
    void loaded();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    QToolButton* makeSpanButton(const QString& text, const QKeySequence& shortcut);
    void restoreState();
    void load();
    void takeReleases(QSqlQuery& query);
    void endLoad();
    void showWeek(bool isWeek);
    void showCount(int releases);
    void moveRelease(qint64 project, QDate day);

    Stemhaven::TaskManager& m_tasks;
    EditHistory& m_history;
    CalendarPane* m_pane;
    CalendarView& m_view;
    QToolButton* m_month;
    QToolButton* m_week;
    QLabel* m_count;
    bool m_isLoading = false;
    bool m_again = false;
};
