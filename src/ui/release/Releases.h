#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class EditHistory;
class QAction;
class QWidget;
class ReleaseCalendar;
class ReleaseDialog;

namespace Stemhaven {
class ProjectMonitor;
class TaskManager;
} // namespace Stemhaven

/// The main window's way to releases: the dialog of a project, and the calendar of all.
class Releases : public QObject {
    Q_OBJECT

public:
    /// All of them outlive this object.
    Releases(
        Stemhaven::TaskManager& tasks, EditHistory& history, Stemhaven::ProjectMonitor& monitor,
        QWidget& window);

    /// Over the main window.
    void openDialog(qint64 project);
    /// Shows the calendar, or brings it forward. The shortcuts of the actions work in it, too.
    void showCalendar(const QList<QAction*>& actions);
    void storeState() const;

private:
    void openDialogOver(qint64 project, QWidget& window);
    void makeCalendar();

    Stemhaven::TaskManager& m_tasks;
    EditHistory& m_history;
    Stemhaven::ProjectMonitor& m_monitor;
    QWidget& m_window;
    QPointer<ReleaseDialog> m_dialog;
    ReleaseCalendar* m_calendar = nullptr;
};
