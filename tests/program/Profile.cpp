#include "program/Profile.h"

#include "app/SettingsKeys.h"
#include "database/DatabaseInitStatements.h"
#include "database/RootPathStatements.h"
#include "support/OutsideRows.h"
#include "support/TestBundle.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSettings>

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

constexpr int longestRun = 120'000;

} // namespace

Profile::Profile() {
    QDir().mkpath(projects());
    QDir().mkpath(m_folder.path() + QStringLiteral("/data/Stemhaven"));
    setCompletedWizard(true);
}

Profile::~Profile() {
    kill();
}

QString Profile::rootPathsDatabase() const {
    return m_folder.path() + QStringLiteral("/data/Stemhaven/stemhaven-root-paths.db");
}

QString Profile::settingsPath() const {
    return m_folder.path() + QStringLiteral("/config/stemhaven.app/Stemhaven.conf");
}

void Profile::oweSearch() const {
    outsideRows(rootPathsDatabase(), {DatabaseInitStatements(currentDatabaseVersion).initRootPathsSQL()});
    outsideRows(rootPathsDatabase(), {RootPathStatements::insert(projects())});
    QSettings(settingsPath(), QSettings::IniFormat).setValue(SettingsKeys::searchWasInProgress, true);
}

void Profile::recordRatedSong() {
    TestBundle().write((projects() + QStringLiteral("/Song.logicx")).toStdString());
    oweSearch();
    EXPECT_EQ(runToEnd({QStringLiteral("--screenshot"), picture()}), 0) << output().toStdString();
    rows(QStringLiteral("UPDATE projects SET star_rating=4"));
}

void Profile::setCompletedWizard(bool completed) const {
    QSettings(settingsPath(), QSettings::IniFormat).setValue(SettingsKeys::completedWizard, completed);
}

bool Profile::searchIsOwed() const {
    return QSettings(settingsPath(), QSettings::IniFormat).value(SettingsKeys::searchWasInProgress).toBool();
}

QString Profile::log() const {
    QFile file(m_folder.path() + QStringLiteral("/data/Stemhaven/stemhaven.log"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList Profile::rows(const QString& sql) const {
    return outsideRows(mainDatabase(), {sql});
}

std::unique_ptr<QProcess> Profile::makeProcess() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.path() + QStringLiteral("/data"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.path() + QStringLiteral("/config"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("LANGUAGE"), m_language);
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->setProcessChannelMode(QProcess::MergedChannels);
    return process;
}

void Profile::start(const QStringList& arguments) {
    const auto windows = [this] {
        return log().count(QStringLiteral("Restoring window state...")) +
            log().count(QStringLiteral("Opening the setup wizard..."));
    };
    const auto before = windows();
    m_process = makeProcess();
    m_process->start(QStringLiteral(PROGRAM), arguments);
    m_process->waitForStarted();
    // From then on a signal ends the program in order.
    waitUntil([&] { return windows() > before || !isRunning(); });
}

int Profile::runToEnd(const QStringList& arguments, const QString& program) {
    const auto process = makeProcess();
    process->start(program, arguments);
    return statusAtEnd(*process);
}

qint64 Profile::peakMemory() const {
    QFile status(QStringLiteral("/proc/%1/status").arg(processId()));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QString text = QString::fromLatin1(status.readAll());
    static const QRegularExpression peak(QStringLiteral("VmHWM:\\s+(\\d+)"));
    return peak.match(text).captured(1).toLongLong();
}

int Profile::terminate() {
    m_process->terminate();
    return statusAtEnd(*m_process);
}

int Profile::statusAtEnd(QProcess& process) {
    const bool ended = process.waitForFinished(longestRun);
    m_output = QString::fromUtf8(process.readAll());
    if (!ended)
        process.kill();
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void Profile::kill() {
    if (!isRunning())
        return;
    m_process->kill();
    m_process->waitForFinished();
}
