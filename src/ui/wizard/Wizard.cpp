#include "ui/wizard/Wizard.h"

#include "app/SettingsKeys.h"
#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/Backups.h"
#include "ui/dialogs/Alert.h"
#include "ui/folders/WatchedFoldersEditor.h"
#include "ui/widgets/PageHeading.h"
#include "ui/widgets/ScreenFitting.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

using Stemhaven::Exception;
using Stemhaven::guarded;
using Stemhaven::ProjectMonitor;

namespace {

constexpr QSize initialSize{680, 440};
constexpr int progressWidth = 120;

QVBoxLayout* layOutPage(QWidget& page) {
    auto* layout = new QVBoxLayout(&page);
    layout->setContentsMargins({});
    layout->setSpacing(12);
    return layout;
}

} // namespace

Wizard::Wizard(QWidget* parent)
    : Wizard(
          Stemhaven::TaskManager::instance(), ProjectMonitor::instance(), installedAgreementPath(), parent) {}

Wizard::Wizard(
    Stemhaven::TaskManager& tasks, ProjectMonitor& monitor, const QString& agreementPath, QWidget* parent)
    : QDialog(parent),
      m_monitor(monitor),
      m_pages(new QTabWidget(this)),
      m_agreement(new QTextBrowser),
      m_importButton(new QPushButton(tr("&Import Backup"))),
      m_backupFile(new QLineEdit),
      m_folders(new WatchedFoldersEditor(
          tasks, monitor,
          {tr("Could not load project folders to monitor"), tr("Wizard: Failed to load root paths"),
           tr("Wizard: Could not add folder for monitoring"),
           tr("Wizard: Selecting monitored project search path failed."), QStringLiteral("addPathButton"),
           QStringLiteral("removePathButton")})),
      m_backups(new Backups(tasks, monitor, nullptr, *this, Backups::Monitoring::Waits)),
      m_progress(new QProgressBar(this)),
      m_progressLabel(new QLabel(this)),
      m_previousButton(new QPushButton(this)),
      m_nextButton(new QPushButton(this)) {
    setWindowTitle(tr("Stemhaven Setup"));
    layOut();
    setUpEvents();
    keepMonitorStopped();
    loadAgreement(agreementPath);
    showPage(WizardTab::Agreement);
    resize(initialSize);
    fitToScreen(*this);
}

QString Wizard::installedAgreementPath() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../Resources/eula.txt"));
}

void Wizard::layOut() {
    m_pages->setObjectName(QStringLiteral("stepsTabWidget"));
    m_progress->setObjectName(QStringLiteral("progressBar"));
    m_progressLabel->setObjectName(QStringLiteral("progressLabel"));
    m_previousButton->setObjectName(QStringLiteral("previousButton"));
    m_nextButton->setObjectName(QStringLiteral("nextButton"));

    m_pages->addTab(makeAgreementPage(), tr("EULA"));
    m_pages->addTab(makeMonitorPage(), tr("Monitor"));
    m_pages->setDocumentMode(true);
    for (int page = 0; page < m_pages->count(); ++page)
        m_pages->setTabVisible(page, false);
    m_pages->tabBar()->hide();

    m_progress->setRange(0, m_pages->count());
    m_progress->setTextVisible(false);
    m_progress->setFixedWidth(progressWidth);
    m_progress->setAccessibleName(tr("Step"));
    m_previousButton->setAutoDefault(false);
    m_nextButton->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_progress);
    buttons->addWidget(m_progressLabel);
    buttons->addStretch();
    buttons->addWidget(m_previousButton);
    buttons->addWidget(m_nextButton);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(m_pages, 1);
    layout->addLayout(buttons);
}

QWidget* Wizard::makeAgreementPage() {
    m_agreement->setObjectName(QStringLiteral("eulaBrowser"));
    m_agreement->setAccessibleName(tr("EULA"));
    m_agreement->document()->setDocumentMargin(12);
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("eulaTab"));
    auto* layout = layOutPage(*page);
    layout->addWidget(new PageHeading(tr("EULA")));
    layout->addWidget(m_agreement, 1);
    return page;
}

QWidget* Wizard::makeMonitorPage() {
    m_importButton->setObjectName(QStringLiteral("importBackupButton"));
    m_importButton->setAutoDefault(false);
    m_backupFile->setObjectName(QStringLiteral("backupFileEdit"));
    m_backupFile->setAccessibleName(tr("Backup file"));
    m_backupFile->setReadOnly(true);
    auto* backup = new QHBoxLayout;
    backup->addWidget(m_importButton);
    backup->addWidget(m_backupFile, 1);

    auto* page = new QWidget;
    auto* layout = layOutPage(*page);
    layout->addWidget(new PageHeading(
        tr("Monitor"),
        tr("Stemhaven will watch these folders to look for new project files and update its records if any "
           "of them change. If you're migrating from a previous install, click Import Backup. Otherwise, add "
           "the folders where your project files are located.")));
    layout->addLayout(backup);
    layout->addWidget(m_folders, 1);
    return page;
}

void Wizard::setUpEvents() {
    connect(m_previousButton, &QPushButton::clicked, this, &Wizard::previous);
    connect(m_nextButton, &QPushButton::clicked, this, &Wizard::next);
    connect(m_importButton, &QPushButton::clicked, this, [this] {
        guarded(tr("Wizard: Import backup failed."), [this] { m_backups->importBackup(); });
    });
    connect(m_backups, &Backups::aboutToImport, m_backupFile, [this](const QString& file) {
        m_backupFile->setText(QDir::toNativeSeparators(file));
    });
    connect(m_backups, &Backups::ended, m_folders, &WatchedFoldersEditor::reload);
}

/// The chain that begins with the program's start may come to starting it only now.
void Wizard::keepMonitorStopped() {
    m_monitor.stopMonitoring();
    connect(&m_monitor, &ProjectMonitor::wasStarted, this, [this] {
        Stemhaven::loggingFailures(
            QStringLiteral("Could not stop project monitor!"), [this] { m_monitor.stopMonitoring(); });
    });
}

void Wizard::loadAgreement(const QString& path) {
    QFile file(path);
    const bool isThere = file.exists();
    m_hasAgreement = isThere && file.open(QIODevice::ReadOnly);
    if (m_hasAgreement) {
        m_agreement->setPlainText(QString::fromUtf8(file.readAll()));
        return;
    }
    const QString shown = QDir::toNativeSeparators(path);
    const QString title =
        isThere ? tr("Could not read EULA file: ") + shown : tr("Missing EULA file! Cannot proceed...");
    const QString message = isThere ? tr("Cannot proceed...") : shown;
    qCritical().noquote() << title << shown;
    m_agreement->setPlainText(title + QStringLiteral("\n\n") + message);
    Stemhaven::ErrorHandler::instance().reportError(title, Exception(message), QtCriticalMsg);
}

WizardTab Wizard::currentPage() const {
    return static_cast<WizardTab>(m_pages->currentIndex());
}

void Wizard::showPage(WizardTab page) {
    const int index = static_cast<int>(page);
    // Ctrl and Tab would go past the agreement.
    for (int other = 0; other < m_pages->count(); ++other)
        m_pages->setTabEnabled(other, other == index);
    m_pages->setCurrentIndex(index);
    setupButtonsAndProgressForTab(page);
    if (page == WizardTab::Agreement)
        m_agreement->setFocus();
    else
        m_folders->setFocus();
}

void Wizard::setupButtonsAndProgressForTab(WizardTab page) {
    const bool isFirst = page == WizardTab::Agreement;
    m_previousButton->setText(isFirst ? tr("&Close") : tr("&Previous"));
    m_nextButton->setText(isFirst ? tr("A&gree") : tr("&Finish"));
    m_nextButton->setEnabled(m_hasAgreement);
    const int number = static_cast<int>(page) + 1;
    m_progress->setValue(number);
    m_progressLabel->setText(tr("%1/%2").arg(number).arg(m_pages->count()));
}

void Wizard::previous() {
    guarded(tr("Wizard: navigation to previous page failed"), [this] {
        if (currentPage() == WizardTab::Agreement)
            reject();
        else
            showPage(WizardTab::Agreement);
    });
}

void Wizard::next() {
    guarded(tr("Wizard: Navigating to next page / close failed."), [this] {
        if (!m_hasAgreement)
            return;
        if (currentPage() == WizardTab::Agreement)
            showPage(WizardTab::Monitor);
        else if (m_folders->isEmpty())
            askWhetherToGoOnWithoutFolders();
        else
            finish();
    });
}

void Wizard::askWhetherToGoOnWithoutFolders() {
    auto* question = makeQuestion(
        this,
        tr("Stemhaven isn't setup with any paths to look for project files in. Are you sure you want to "
           "continue?"),
        tr("You can set these paths up later in the Monitor tab in Settings. Stemhaven won't show any "
           "projects until this is done!"));
    connect(question, &QMessageBox::finished, this, [this](int answer) {
        if (answer == QMessageBox::Yes)
            guarded(tr("Wizard: Navigating to next page / close failed."), [this] { finish(); });
    });
    question->open();
}

void Wizard::finish() {
    QSettings().setValue(Stemhaven::SettingsKeys::completedWizard, true);
    m_monitor.disconnect(this);
    m_monitor.requestUpdateWatchedDirs();
    m_monitor.restartMonitoring();
    accept();
}
