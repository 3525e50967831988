#pragma once

#include <QDialog>

class Backups;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QTextBrowser;
class WatchedFoldersEditor;

namespace Stemhaven {
class ProjectMonitor;
class TaskManager;
} // namespace Stemhaven

/// The order of the wizard's pages.
enum class WizardTab : int { Agreement, Monitor };

/// Leads through the first start: the agreement, then the folders with projects. While it is open the monitor
/// stays stopped; at its end the folders are searched. Accepted once the user has been through it all, which
/// the settings say from then on.
class Wizard : public QDialog {
    Q_OBJECT

public:
    /// Over the program's own databases, with the agreement that was installed beside the program.
    explicit Wizard(QWidget* parent = nullptr);
    /// tasks and monitor outlive the wizard. Without a readable agreement it goes no further than that.
    Wizard(
        Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, const QString& agreementPath,
        QWidget* parent = nullptr);

    static QString installedAgreementPath();

    WizardTab currentPage() const;

    void previous();
    void next();

private:
    void layOut();
    QWidget* makeAgreementPage();
    QWidget* makeMonitorPage();
    void setUpEvents();
    void keepMonitorStopped();
    void loadAgreement(const QString& path);
    void showPage(WizardTab page);
    void setupButtonsAndProgressForTab(WizardTab page);
    void askWhetherToGoOnWithoutFolders();
    void finish();

    Stemhaven::ProjectMonitor& m_monitor;
    QTabWidget* m_pages;
    QTextBrowser* m_agreement;
    QPushButton* m_importButton;
    QLineEdit* m_backupFile;
    WatchedFoldersEditor* m_folders;
    Backups* m_backups;
    QProgressBar* m_progress;
    QLabel* m_progressLabel;
    QPushButton* m_previousButton;
    QPushButton* m_nextButton;
    bool m_hasAgreement = false;
};
