// The start of the program: its order, its command line and the signals that end it.

#include "app/Paths.h"
#include "app/SettingsKeys.h"
#include "app/Shutdown.h"
#include "app/errors/ErrorHandler.h"
#include "app/errors/Guarded.h"
#include "app/logging/Log.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "platform/ColorScheme.h"
#include "platform/TerminationSignals.h"
#include "ui/MainWindow.h"
#include "ui/Screenshot.h"
#include "ui/dialogs/AlertQueue.h"
#include "ui/widgets/FontIcons.h"
#include "ui/widgets/Theme.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QLockFile>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTranslator>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

namespace {

const QString screenshotOption = QStringLiteral("screenshot");
const QString sizeOption = QStringLiteral("size");
const QString colorSchemeOption = QStringLiteral("color-scheme");

void describeCommandLine(QCommandLineParser& parser) {
    parser.setApplicationDescription(QStringLiteral("Keeps a catalogue of your Logic Pro projects."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(
        {screenshotOption, "Write a picture of the main window to <file> once its table has rows, then quit.",
         "file"});
    parser.addOption(
        {colorSchemeOption, "Light or dark whatever the desktop wishes: <scheme> is light or dark.",
         "scheme"});
    parser.addOption({sizeOption, "Size of the main window in that picture, for example 1200x760.", "WxH"});
}

/// Whether only a text is asked for, which needs neither a display nor a profile.
bool asksForText(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        for (const char* option : {"--help", "-h", "--help-all", "--version", "-v"}) {
            if (std::strcmp(argv[i], option) == 0)
                return true;
        }
    }
    return false;
}

std::optional<QSize> sizeFrom(const QString& text) {
    const auto parts = text.split(QLatin1Char('x'));
    const QSize size = parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

/// Null for what is no colour scheme.
std::optional<Stemhaven::ColorScheme> colorSchemeFrom(const QString& text) {
    if (text == QLatin1String("light"))
        return Stemhaven::ColorScheme::Light;
    if (text == QLatin1String("dark"))
        return Stemhaven::ColorScheme::Dark;
    return std::nullopt;
}

void startLog(const QSettings& settings) {
    if (!settings.contains(Stemhaven::SettingsKeys::logLevel)) {
        Logging::Log::setLevel(QtCriticalMsg);
        return;
    }
    // What the type cannot hold is as good as its greatest number: nothing passes.
    constexpr int greatestLevel = 7;
    const int stored = settings.value(Stemhaven::SettingsKeys::logLevel).toInt();
    const auto level = static_cast<QtMsgType>(std::clamp(stored, 0, greatestLevel));
    qInfo() << "Starting Stemhaven! LogLevel: " << level;
    Logging::Log::setLevel(level);
}

void installTranslation(QTranslator& translator) {
    const auto languages = QLocale::system().uiLanguages();
    for (const auto& language : languages) {
        if (translator.load(QStringLiteral(":/i18n/Stemhaven_") + QLocale(language).name())) {
            QCoreApplication::installTranslator(&translator);
            return;
        }
    }
}

/// Held as long as the program uses the databases; null when another start of it does.
std::unique_ptr<QLockFile> lockProfile() {
    const auto folder = QFileInfo(Stemhaven::mainDatabasePath()).absolutePath();
    QDir().mkpath(folder);
    auto lock = std::make_unique<QLockFile>(folder + QStringLiteral("/stemhaven.lock"));
    lock->setStaleLockTime(0);
    if (lock->tryLock() || lock->error() != QLockFile::LockFailedError)
        return lock;
    return nullptr;
}

/// Ends all work on the databases with its scope.
class DatabaseGuard {
public:
    DatabaseGuard() = default;

    ~DatabaseGuard() { Stemhaven::TaskManager::instance().shutDown(); }

    DatabaseGuard(const DatabaseGuard&) = delete;
    DatabaseGuard& operator=(const DatabaseGuard&) = delete;
};

void sayAlreadyRunning() {
    const auto text = QCoreApplication::translate("main", "Stemhaven is already running.");
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        QMessageBox::information(nullptr, QStringLiteral("Stemhaven"), text);
}

int run(int argc, char** argv) {
    QCoreApplication::setOrganizationDomain(QStringLiteral("stemhaven.app"));
    QCoreApplication::setApplicationName(QStringLiteral("Stemhaven"));
    QCoreApplication::setApplicationVersion(QStringLiteral(STEMHAVEN_VERSION));
    QCommandLineParser commandLine;
    describeCommandLine(commandLine);
    if (asksForText(argc, argv)) {
        const QCoreApplication application(argc, argv);
        commandLine.process(application);
        return 0;
    }

    Logging::Log::setDirectory(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    Logging::Log::setPrefix(QStringLiteral("stemhaven"));
    const QSettings settings;
    startLog(settings);

    QApplication application(argc, argv);
    const DatabaseGuard databases;
    const Stemhaven::ShutdownGuard shutdown;
    commandLine.process(application);
    const auto size = sizeFrom(commandLine.value(sizeOption));
    if (commandLine.isSet(sizeOption) && !size) {
        std::fputs("--size wants a width and a height, for example 1200x760.\n", stderr);
        return 1;
    }

    const auto colorScheme = colorSchemeFrom(commandLine.value(colorSchemeOption));
    if (commandLine.isSet(colorSchemeOption) && !colorScheme) {
        std::fputs("--color-scheme wants light or dark.\n", stderr);
        return 1;
    }

    registerFonts();
    QTranslator translator;
    installTranslation(translator);
    const Theme theme(colorScheme);

    // Static, to be given up only after the singletons have closed the databases.
    static const auto profile = lockProfile();
    if (!profile) {
        sayAlreadyRunning();
        return 1;
    }

    AlertQueue alerts;
    Stemhaven::ErrorHandler::instance().setPresenter(alerts.presenter());
    const Stemhaven::TerminationSignals termination;
    QObject::connect(&termination, &Stemhaven::TerminationSignals::terminationRequested, [] {
        QApplication::closeAllWindows();
        QCoreApplication::quit();
    });

    Stemhaven::ProjectMonitor::instance();

    MainWindow window;
    std::optional<Screenshot> screenshot;
    if (size)
        window.resize(*size);
    if (commandLine.isSet(screenshotOption))
        screenshot.emplace(window, commandLine.value(screenshotOption));
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
