#pragma once

#include "project/RecoveryRun.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class RecoverableList;
class RecoveryProgress;
class RecoveryWork;

namespace Stemhaven {
class ProjectMonitor;
}

/// Finds damaged projects in the watched folders, and repairs those that the user chooses. Closing it ends
/// what goes on: a search at once, a repair after the project that it is at.
class RecoverDialog : public QDialog {
    Q_OBJECT

public:
    /// Over the program's own monitor.
    explicit RecoverDialog(QWidget* parent = nullptr);
    /// monitor outlives the dialog.
    explicit RecoverDialog(Stemhaven::ProjectMonitor& monitor, QWidget* parent = nullptr);
    ~RecoverDialog() override;
    Q_DISABLE_COPY(RecoverDialog)

    /// Shows the window's dialog, which frees itself after it has been closed. One that was closed while it
    /// repairs is shown again, so that there are never two that repair.
    static RecoverDialog& showOver(Stemhaven::ProjectMonitor& monitor, QWidget& window);

    bool isWorking() const;

    void done(int result) override;

public slots:
    void findRecoverable();
    /// Asks, and repairs what is checked if the answer is yes. Waits for neither.
    void recover();
    void cancel();
    void setRecoverableProjects(const QList<Stemhaven::RecoverableProject>& projects);

signals:
    /// After a search, or after a repair, the end of which is said by then.
    void workEnded();

private:
    void layOut();
    QLayout* makeListHeading();
    QLayout* makeButtons();
    void setUpEvents();
    void setUpWork();

    void beginWork();
    void endWork();
    void stopWork();
    void takeResult(const Stemhaven::RecoverySearch::Result& result);
    void repair(const QList<int>& rows);
    void takeOutcome(int position, const Stemhaven::RecoveryOutcome& outcome);
    void endRepair();
    void setAllChecked();
    void updateChoice();

    Stemhaven::ProjectMonitor& m_monitor;
    RecoveryWork* m_work;
    RecoverableList* m_list;
    QCheckBox* m_selectAll;
    QLabel* m_details;
    RecoveryProgress* m_progress;
    QPushButton* m_find;
    QPushButton* m_recover;
    QPushButton* m_close;
    /// Rows that are being repaired.
    QList<int> m_chosen;
    int m_recovered = 0;
    int m_failed = 0;
    bool m_freesItself = false;
};
