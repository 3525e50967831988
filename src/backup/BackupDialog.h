#pragma once

#include "backup/BackupSteps.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <utility>

class QLabel;
class QProgressBar;
class QPushButton;

namespace Stemhaven {
class BackupRun;
class TaskManager;
} // namespace Stemhaven

/// Writes the user's whole state into a backup, or replaces it by that of one. The work goes on beside the
/// GUI thread, with the task manager stopped; the dialog cannot be closed until its end.
class BackupDialog : public QDialog {
    Q_OBJECT

public:
    enum class Type : int { Import = 0, Export = 1 };

    /// Over the program's own databases.
    explicit BackupDialog(Type type, QWidget* parent = nullptr);
    /// tasks outlives the dialog. The settings are those of the application.
    BackupDialog(Type type, Stemhaven::TaskManager& tasks, QWidget* parent = nullptr);
    ~BackupDialog() override;

    Type getType() const { return m_type; }

    /// What is to come to an end before the task manager is stopped; it calls done then, on the GUI thread.
    using Preparation = std::function<void(const std::function<void()>& done)>;

    void setPreparation(Preparation preparation) { m_preparation = std::move(preparation); }

    /// Asks for the backup, or the folder for one, and does the rest where the user names one. Returns 0
    /// otherwise.
    int exec() override;

    /// What the user has named; empty for nothing.
    QString path() const { return m_path; }

    /// Whether the program, and not the user, has asked for the dialog's end while it could not be closed.
    bool wasToBeClosed() const { return m_wasToBeClosed; }

    void reject() override;

signals:
    /// The user has named a path, and the dialog is about to be shown.
    void begun();
    /// The task manager runs again. succeeded: the backup was written, or all files are those of the backup.
    void ended(bool succeeded);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void setupEvents();
    QString chooseBackup();
    QString chooseFolder();

    void attempt(const std::function<void()>& body);
    void cancel();
    void taskManagerStopped();
    void exportBackup();
    void importBackup();
    void runImport();
    void giveUpImport();
    void say(const QString& status, const QString& step = {});
    void showProgress(const Stemhaven::BackupProgress& progress);
    void takeResult(const Stemhaven::BackupResult& result);
    void backupError(const QString& text);
    void end(bool succeeded);

    bool isWorking() const { return m_run != nullptr; }

    void colorError();

    const Type m_type;
    Stemhaven::TaskManager& m_tasks;
    Preparation m_preparation;
    QString m_path;
    std::unique_ptr<Stemhaven::BackupRun> m_run; ///< until its end
    bool m_isPrepared = false;
    bool m_hasFailed = false;
    bool m_wasToBeClosed = false;
    QLabel* m_status;
    QLabel* m_step;
    QProgressBar* m_progress;
    QPushButton* m_cancelButton;
    QPushButton* m_doneButton;
};
