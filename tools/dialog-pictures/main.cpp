// Makes pictures of the program's dialogs, over the profile that the environment names.

#include "app/Shutdown.h"
#include "app/logging/Log.h"
#include "backup/BackupDialog.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "project/RecoverySearch.h"
#include "ui/MainWindow.h"
#include "ui/Translation.h"
#include "ui/actions/WindowActions.h"
#include "ui/preferences/PreferencesDialog.h"
#include "ui/recovery/RecoverDialog.h"
#include "ui/release/ReleaseCalendar.h"
#include "ui/release/ReleaseDialog.h"
#include "ui/widgets/FontIcons.h"
#include "ui/widgets/Theme.h"
#include "ui/wizard/Wizard.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

#include <cstdio>
#include <functional>
#include <utility>

using Stemhaven::ColorScheme;
using Stemhaven::ProjectMonitor;
using Stemhaven::TaskManager;

namespace {

void waitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(30'000);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QThread::msleep(1);
    }
}

/// Until what the widgets have asked the worker for is shown.
void settle() {
    bool done = false;
    auto task = std::make_shared<Stemhaven::SimpleTask>([] {});
    task->setSuccessCallback([&](const std::shared_ptr<Stemhaven::Task>&) { done = true; });
    TaskManager::instance().addTask(task);
    waitUntil([&] { return done; });
    const QDeadlineTimer painted(200);
    waitUntil([&] { return painted.hasExpired(); });
}

class Pictures {
public:
    Pictures(QString folder, QString suffix) : m_folder(std::move(folder)), m_suffix(std::move(suffix)) {}

    void take(QWidget& window, const QString& name) {
        QApplication::setActiveWindow(&window);
        settle();
        takeAtOnce(window, name);
    }

    /// What is gone a moment later.
    void takeAtOnce(QWidget& window, const QString& name) {
        const QString file = m_folder + QLatin1Char('/') + name + m_suffix + QStringLiteral(".png");
        m_areWritten = window.grab().save(file) && m_areWritten;
    }

    bool areWritten() const { return m_areWritten; }

private:
    QString m_folder;
    QString m_suffix;
    bool m_areWritten = true;
};

void takeWizard(Pictures& pictures) {
    Wizard wizard;
    wizard.show();
    pictures.take(wizard, QStringLiteral("setup-agreement"));
    wizard.next();
    pictures.take(wizard, QStringLiteral("setup-folders"));
    wizard.disconnect(&ProjectMonitor::instance());
}

void takePreferences(Pictures& pictures, MainWindow& window) {
    window.findChild<WindowActions*>()->settings->trigger();
    auto* preferences = window.findChild<PreferencesDialog*>();
    for (const char* page : {"monitor", "columns", "status", "advanced"}) {
        const QString name = QString::fromLatin1(page);
        auto* button = preferences->findChild<QToolButton*>(name + QStringLiteral("TabButton"));
        button->click();
        QWidget* shown = preferences->findChild<QTabWidget*>()->currentWidget();
        shown->setFocus();
        pictures.take(*preferences, QStringLiteral("preferences-") + name);
    }
    preferences->close();
}

/// Of the first project, and the calendar with all that are released.
void takeReleases(Pictures& pictures, MainWindow& window) {
    const auto& actions = *window.findChild<WindowActions*>();
    window.selectFirstProject();
    waitUntil([&] { return actions.release->isEnabled(); });
    actions.release->trigger();
    auto* details = window.findChild<ReleaseDialog*>();
    pictures.take(*details, QStringLiteral("release-details"));
    details->reject();
    actions.releaseCalendar->trigger();
    auto* calendar = window.findChild<ReleaseCalendar*>();
    for (auto* button : calendar->findChildren<QToolButton*>()) {
        if (!button->isCheckable())
            continue;
        button->click();
        const bool isWeek = button->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_2);
        pictures.take(
            *calendar, isWeek ? QStringLiteral("release-calendar-week") : QStringLiteral("release-calendar"));
    }
    calendar->close();
}

void choose(QFileDialog& dialog, const QString& path) {
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
    QMetaObject::invokeMethod(&dialog, "accept");
}

/// Opens the dialog by the action, answers what it asks, and takes it at work and at its end.
void takeBackup(Pictures& pictures, QAction& action, const QString& path, const QString& name) {
    QTimer timer;
    bool isTakenAtWork = false;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* files = qobject_cast<QFileDialog*>(modal)) {
            choose(*files, path);
        } else if (auto* question = qobject_cast<QMessageBox*>(modal)) {
            pictures.takeAtOnce(*question, name + QStringLiteral("-question"));
            question->button(QMessageBox::Yes)->click();
        } else if (auto* dialog = qobject_cast<BackupDialog*>(modal)) {
            auto* done = dialog->findChild<QPushButton*>(QStringLiteral("doneButton"));
            const auto* progress = dialog->findChild<QProgressBar*>();
            if (done->isEnabled()) {
                pictures.takeAtOnce(*dialog, name + QStringLiteral("-end"));
                done->click();
            } else if (progress->value() > 0 && !std::exchange(isTakenAtWork, true)) {
                pictures.takeAtOnce(*dialog, name + QStringLiteral("-working"));
            }
        }
    });
    timer.start(1);
    action.trigger();
}

void takeBackups(Pictures& pictures, MainWindow& window) {
    const auto& actions = *window.findChild<WindowActions*>();
    const QTemporaryDir folder;
    takeBackup(pictures, *actions.backup, folder.path(), QStringLiteral("backup"));
    const auto archives = QDir(folder.path()).entryList({QStringLiteral("*.hvbk")});
    const QString archive = folder.filePath(archives.value(0));
    takeBackup(pictures, *actions.importBackup, archive, QStringLiteral("import"));
    QFile::resize(archive, 100);
    takeBackup(pictures, *actions.importBackup, archive, QStringLiteral("import-failed"));
}

void write(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("made up");
}

/// A bundle without its information file, and with nothing but a backup in its alternative. A repairable one
/// has nothing in the place of the file that is to be restored.
void writeDamagedBundle(const QString& path, bool isRepairable) {
    const QString alternative = path + QStringLiteral("/Alternatives/000");
    for (const char* file : {"/MetaData.plist", "/ProjectData"})
        write(alternative + QStringLiteral("/Project File Backups/03") + QLatin1String(file));
    if (!isRepairable)
        QDir().mkpath(alternative + QStringLiteral("/ProjectData"));
}

void answerYes(RecoverDialog& dialog) {
    for (auto* question : dialog.findChildren<QMessageBox*>())
        question->button(QMessageBox::Yes)->click();
}

/// The search is that of the profile; what is repaired is in a folder of its own.
void takeRecovery(Pictures& pictures, MainWindow& window) {
    auto& dialog = RecoverDialog::showOver(ProjectMonitor::instance(), window);
    pictures.take(dialog, QStringLiteral("recovery"));
    bool isDone = false;
    QObject::connect(&dialog, &RecoverDialog::workEnded, [&] { isDone = true; });
    dialog.findRecoverable();
    pictures.takeAtOnce(dialog, QStringLiteral("recovery-searching"));
    waitUntil([&] { return isDone; });
    pictures.take(dialog, QStringLiteral("recovery-none-found"));

    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/Music-XXXXXX"));
    for (const char* song : {"Night Drive", "Paper Lanterns", "Slow Tide", "Late Bloom"}) {
        const QString name = QString::fromLatin1(song);
        writeDamagedBundle(
            folder.filePath(name) + QStringLiteral(".logicx"), name != QLatin1String("Paper Lanterns"));
    }
    dialog.setRecoverableProjects(Stemhaven::findRecoverableProjects({folder.path()}));
    pictures.take(dialog, QStringLiteral("recovery-found"));
    dialog.findChild<QCheckBox*>()->click();
    isDone = false;
    dialog.recover();
    pictures.take(*dialog.findChild<QMessageBox*>(), QStringLiteral("recovery-question"));
    answerYes(dialog);
    waitUntil([&] { return isDone; });
    pictures.take(dialog, QStringLiteral("recovery-done"));
    const auto messages = dialog.findChildren<QMessageBox*>();
    pictures.take(*messages.constLast(), QStringLiteral("recovery-message"));
    dialog.cancel();
}

void takeWindow(Pictures& pictures) {
    MainWindow window;
    window.show();
    auto& monitor = ProjectMonitor::instance();
    monitor.restartMonitoring();
    waitUntil([&] { return monitor.isWatching() && !monitor.isSearching(); });
    takePreferences(pictures, window);
    takeReleases(pictures, window);
    takeBackups(pictures, window);
    takeRecovery(pictures, window);
}

int run(int argc, char** argv) {
    QCoreApplication::setOrganizationDomain(QStringLiteral("stemhaven.app"));
    QCoreApplication::setApplicationName(QStringLiteral("Stemhaven"));
    Logging::Log::setPrefix(QStringLiteral("stemhaven"));
    const QApplication application(argc, argv);
    const Stemhaven::ShutdownGuard shutdown;
    const auto arguments = QCoreApplication::arguments();
    const bool isDark = arguments.value(2) == QLatin1String("dark");
    if (arguments.size() != 3 || (!isDark && arguments[2] != QLatin1String("light"))) {
        std::fputs("Usage: stemhaven-dialog-pictures FOLDER light|dark\n", stderr);
        return 2;
    }
    registerFonts();
    QTranslator translator;
    if (loadTranslation(translator, QLocale::system().uiLanguages()))
        QCoreApplication::installTranslator(&translator);
    const Theme theme(isDark ? ColorScheme::Dark : ColorScheme::Light);

    QDir().mkpath(arguments[1]);
    Pictures pictures(arguments[1], isDark ? QStringLiteral("-dark") : QString());
    ProjectMonitor::instance();
    takeWizard(pictures);
    takeWindow(pictures);
    ProjectMonitor::instance().shutDown();
    return pictures.areWritten() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const int status = run(argc, argv);
    TaskManager::instance().shutDown();
    return status;
}
