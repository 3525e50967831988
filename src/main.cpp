// The start of the program: its order, its profile's lock and the signals that end it.

#include "BackupCommands.h"
#include "CommandLine.h"
#include "RecoverCommand.h"
#include "app/Paths.h"
#include "app/SettingsKeys.h"
#include "app/Shutdown.h"
#include "app/errors/ErrorHandler.h"
#include "app/errors/Guarded.h"
#include "app/logging/Log.h"
#include "app/logging/PrintableText.h"
#include "backup/DailyCopy.h"
#include "backup/StartCheck.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "platform/ActivationSocket.h"
#include "platform/PrivateFiles.h"
#include "platform/ProfileLock.h"
#include "platform/TerminationSignals.h"
#include "ui/MainWindow.h"
#include "ui/Screenshot.h"
#include "ui/Translation.h"
#include "ui/dialogs/AlertQueue.h"
#include "ui/widgets/FontIcons.h"
#include "ui/widgets/ScreenFitting.h"
#include "ui/widgets/Theme.h"
#include "ui/wizard/Wizard.h"

#include <QApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>
#include <QTranslator>

#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>

namespace {

void startLog(const QSettings& settings) {
    const auto stored = settings.value(Stemhaven::SettingsKeys::logLevel);
    const auto level = Logging::Log::levelOf(stored);
    if (stored.isValid())
        qInfo() << "Starting Stemhaven! LogLevel: " << level;
    Logging::Log::setLevel(level);
}

void installTranslation(QTranslator& translator) {
    if (loadTranslation(translator, QLocale::system().uiLanguages()))
        QCoreApplication::installTranslator(&translator);
}

QString profileFolder() {
    return QFileInfo(Stemhaven::mainDatabasePath()).absolutePath();
}

QString lockPath() {
    return profileFolder() + QStringLiteral("/stemhaven.lock");
}

QString activationSocketPath() {
    return profileFolder() + QStringLiteral("/stemhaven.socket");
}

/// Makes the folder of the databases and the log where it is missing, and sees to it that the profile is its
/// user's alone. Returns whether others could look into it until now.
bool makeProfile(const QString& settingsFile) {
    const auto folder = profileFolder();
    for (const auto& path : {folder, settingsFile})
        QDir().mkpath(QFileInfo(path).absolutePath());
    QDir().mkdir(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    const bool wasOpen = Stemhaven::makePrivate(folder);
    for (const auto& file : {Logging::Log::filepath(), settingsFile}) {
        Stemhaven::makePrivateFile(file);
        Stemhaven::makePrivate(file);
    }
    return wasOpen;
}

enum class ProfileAccess {
    Granted,
    /// Another process uses the profile and has brought its window forward.
    HandedOver,
    /// Another process uses the profile and does not answer.
    Refused,
};

/// A process that is only just starting, or ending, is waited for. To a start that is to make a picture the
/// other process's window is no use.
ProfileAccess
openProfile(Stemhaven::ProfileLock& lock, const CommandLine& commandLine, const QByteArray& activationToken) {
    constexpr std::chrono::seconds patience(2);
    constexpr unsigned long betweenLooks = 20;
    const QDeadlineTimer deadline(patience);
    while (!lock.tryToTake()) {
        const std::chrono::milliseconds remaining(deadline.remainingTime());
        if (commandLine.screenshot.isEmpty() &&
            Stemhaven::ActivationSocket::request(activationSocketPath(), activationToken, remaining))
            return ProfileAccess::HandedOver;
        if (deadline.hasExpired())
            return ProfileAccess::Refused;
        QThread::msleep(betweenLooks);
    }
    return ProfileAccess::Granted;
}

/// What the desktop has given to this process for taking the focus. The application object uses it up.
QByteArray activationTokenOfThisProcess() {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

void bringForward(QWidget& window, const QByteArray& activationToken) {
    qInfo() << "Bringing the window forward for a second start.";
    // Wayland lets only the holder of a token take the focus; Qt takes it from here.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken);
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void bringForwardOnRequest(QWidget& window, const Stemhaven::ActivationSocket& activation) {
    QObject::connect(
        &activation, &Stemhaven::ActivationSocket::activationRequested, &window,
        [&window](const QByteArray& token) { bringForward(window, token); });
}

/// Whether the user has been through the wizard, now or at an earlier start.
bool isSetUp(const Stemhaven::ActivationSocket& activation) {
    if (QSettings().value(Stemhaven::SettingsKeys::completedWizard).toBool())
        return true;
    qInfo() << "Opening the setup wizard...";
    Wizard wizard;
    bringForwardOnRequest(wizard, activation);
    if (wizard.exec() != QDialog::Rejected)
        return true;
    qWarning() << "Setup wizard must be completed to start!";
    return false;
}

void endOnSignals(const Stemhaven::TerminationSignals& termination) {
    QObject::connect(&termination, &Stemhaven::TerminationSignals::terminationRequested, [] {
        QApplication::closeAllWindows();
        QCoreApplication::quit();
    });
}

/// Starts the monitor, and ends its threads with its scope.
class MonitorGuard {
public:
    MonitorGuard() { Stemhaven::ProjectMonitor::instance(); }

    ~MonitorGuard() { Stemhaven::ProjectMonitor::instance().shutDown(); }

    MonitorGuard(const MonitorGuard&) = delete;
    MonitorGuard& operator=(const MonitorGuard&) = delete;
};

/// Ends all work on the databases with its scope.
class DatabaseGuard {
public:
    DatabaseGuard() = default;

    ~DatabaseGuard() { Stemhaven::TaskManager::instance().shutDown(); }

    DatabaseGuard(const DatabaseGuard&) = delete;
    DatabaseGuard& operator=(const DatabaseGuard&) = delete;
};

bool isCatalogueAtRest() {
    const auto& monitor = Stemhaven::ProjectMonitor::instance();
    return !monitor.isSearching() && !monitor.isChecking() && !monitor.isSuspended();
}

void sayAlreadyRunning(bool inWindow) {
    const auto text = QCoreApplication::translate("main", "Stemhaven is already running.");
    Logging::printLine(stderr, text);
    if (inWindow && QGuiApplication::platformName() != QLatin1String("offscreen"))
        QMessageBox::information(nullptr, QStringLiteral("Stemhaven"), text);
}

/// Puts right what the last run left. False where that cannot be done, and the databases may not be opened.
bool prepareProfile() {
    using namespace Stemhaven;
    const auto report = checkAtStart(LiveFiles::ofProgram(), QDateTime::currentDateTime());
    if (!report.isRemarkable())
        return true;
    const QString text = textOf(report);
    if (!report.mayStart()) {
        Logging::printLine(stderr, text);
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            QMessageBox::critical(nullptr, QStringLiteral("Stemhaven"), text);
        return false;
    }
    ErrorHandler::instance().reportError(
        QCoreApplication::translate("main", "A database was damaged"), Exception(text), QtWarningMsg);
    return true;
}

int runWithoutWindow(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto commandLine = CommandLine::parse();
    if (!commandLine)
        return 1;
    QTranslator translator;
    installTranslation(translator);
    Stemhaven::ProfileLock lock(lockPath());
    if (!lock.tryToTake()) {
        sayAlreadyRunning(false);
        return 1;
    }
    const bool isDone =
        commandLine->recover ? runRecoverCommand(*commandLine) : runBackupCommand(*commandLine);
    return isDone ? 0 : 1;
}

int run(int argc, char** argv) {
    QCoreApplication::setOrganizationDomain(QStringLiteral("stemhaven.app"));
    QCoreApplication::setApplicationName(QStringLiteral("Stemhaven"));
    QCoreApplication::setApplicationVersion(QStringLiteral(STEMHAVEN_VERSION));
    if (CommandLine::printText(argc, argv))
        return 0;

    const QSettings settings;
    Logging::Log::setPrefix(QStringLiteral("stemhaven"));
    const bool wasOpenToOthers = makeProfile(settings.fileName());
    Logging::Log::setDirectory(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    startLog(settings);
    if (wasOpenToOthers)
        qInfo() << "Others could look into the folder of the catalogue. It is its user's alone now:"
                << profileFolder();

    if (CommandLine::asksForNoWindow(argc, argv))
        return runWithoutWindow(argc, argv);

    const QByteArray activationToken = activationTokenOfThisProcess();
    const QApplication application(argc, argv);
    // Outlives the databases: a second signal must not end the process while edits are still being written.
    std::optional<Stemhaven::TerminationSignals> termination;
    const DatabaseGuard databases;
    const Stemhaven::ShutdownGuard shutdown;
    const auto commandLine = CommandLine::parse();
    if (!commandLine)
        return 1;

    registerFonts();
    QTranslator translator;
    installTranslation(translator);
    const Theme theme(commandLine->colorScheme);

    // Static, to be given up only after the singletons have closed the databases.
    static Stemhaven::ProfileLock lock(lockPath());
    const auto access = openProfile(lock, *commandLine, activationToken);
    if (access == ProfileAccess::Refused)
        sayAlreadyRunning(commandLine->screenshot.isEmpty());
    if (access != ProfileAccess::Granted)
        return access == ProfileAccess::HandedOver ? 0 : 1;
    const Stemhaven::ActivationSocket activation(activationSocketPath());

    AlertQueue alerts;
    Stemhaven::ErrorHandler::instance().setPresenter(alerts.presenter());

    if (!prepareProfile())
        return 1;
    // Not before: the check of a large database may be killed, an edit may not.
    endOnSignals(termination.emplace());
    const MonitorGuard monitor;
    // A size that is asked for holds on any screen.
    std::optional<ScreenFitting> screens;
    if (!commandLine->size)
        screens.emplace();
    if (commandLine->screenshot.isEmpty() && !isSetUp(activation))
        return 1;

    const Stemhaven::DailyCopy dailyCopy(
        Stemhaven::LiveFiles::ofProgram(), isCatalogueAtRest, std::chrono::minutes(1));
    MainWindow window;
    bringForwardOnRequest(window, activation);
    std::optional<Screenshot> screenshot;
    if (commandLine->size)
        window.resize(*commandLine->size);
    if (!commandLine->screenshot.isEmpty())
        screenshot.emplace(window, commandLine->screenshot);
    window.show();
    const int status = QApplication::exec();
    Stemhaven::ProjectMonitor::stop();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    int status = 1;
    const bool ended =
        Stemhaven::loggingFailures(QStringLiteral("Fatal error."), [&] { status = run(argc, argv); });
    return ended ? status : 1;
}
