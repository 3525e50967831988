#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class BackupDialog;
class EditHistory;
class QDialog;
class QWidget;

namespace Stemhaven {
class ProjectMonitor;
class TaskManager;
} // namespace Stemhaven

/// A window's way to backups: brings what could write into the catalogue or the settings to rest before an
/// import, and has everything read anew after it. GUI thread.
class Backups : public QObject {
    Q_OBJECT

public:
    /// What the monitor does with an imported catalogue.
    enum class Monitoring { Begins, Waits };

    /// All of them outlive this object; history is that of the edits that are made in the window, if there is
    /// one.
    Backups(
        Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, EditHistory* history,
        QWidget& window, Monitoring monitoring = Monitoring::Begins);

    /// Both ask for a path, and come back when the dialog has been closed.
    void exportBackup();
    void importBackup();

signals:
    /// The databases are closed from about now on, because of what notice says; what is shown of them stays.
    void begun(const QString& notice);
    /// An import begins: what the user has entered is to be saved or given up.
    void aboutToImport(const QString& file);
    /// The settings are those of the backup; the catalogue, which is too, is being read.
    void imported();
    /// The databases can be used again, whatever came of it.
    void ended();

private:
    void run(BackupDialog& dialog);
    void prepareImport(const QString& file, const std::function<void()>& whenAtRest);
    void endImport(bool succeeded);
    void hideDialogs();

    Stemhaven::TaskManager& m_tasks;
    Stemhaven::ProjectMonitor& m_monitor;
    EditHistory* m_history;
    QWidget& m_window;
    const Monitoring m_monitoring;
    QPointer<BackupDialog> m_dialog;
    QList<QPointer<QDialog>> m_hidden; ///< from the beginning of an import to its end
    QTimer m_untilRest;
};
