#include "ProgramUnderTest.h"

#include "app/SettingsKeys.h"
#include "database/DatabaseInitStatements.h"
#include "database/RootPathStatements.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QSettings>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace Storm {

using namespace Stemhaven;

namespace {

constexpr int longestEnd = 120'000;

} // namespace

ProgramUnderTest::ProgramUnderTest(
    QString program, const QString& profile, const std::vector<std::filesystem::path>& roots,
    bool detailedLog)
    : m_program(std::move(program)),
      m_profile(profile),
      m_dataFolder(profile + QStringLiteral("/data/Stemhaven")) {
    QDir().mkpath(m_dataFolder);
    giveRoots(roots);
    QSettings settings(
        profile + QStringLiteral("/config/stemhaven.app/Stemhaven.conf"), QSettings::IniFormat);
    settings.setValue(SettingsKeys::completedWizard, true);
    // What stands in the roots already is found by a search.
    settings.setValue(SettingsKeys::searchWasInProgress, true);
    settings.setValue(SettingsKeys::logLevel, static_cast<int>(detailedLog ? QtDebugMsg : QtCriticalMsg));
}

ProgramUnderTest::~ProgramUnderTest() {
    if (isRunning())
        kill();
}

void ProgramUnderTest::giveRoots(const std::vector<std::filesystem::path>& roots) const {
    changeRoots([&](QSqlQuery& query) {
        query.exec(DatabaseInitStatements(currentDatabaseVersion).initRootPathsSQL());
        return std::all_of(roots.begin(), roots.end(), [&](const std::filesystem::path& root) {
            return query.exec(RootPathStatements::insert(QString::fromStdString(root.string())));
        });
    });
}

void ProgramUnderTest::takeOffList(const std::filesystem::path& root) const {
    changeRoots([&](QSqlQuery& query) {
        query.prepare(
            QStringLiteral("DELETE FROM root_project_search_paths WHERE rtrim(root_search_path, '/')=?"));
        query.addBindValue(QString::fromStdString(root.string()));
        return query.exec() && query.numRowsAffected() == 1;
    });
}

void ProgramUnderTest::changeRoots(const std::function<bool(QSqlQuery&)>& change) const {
    const auto name = QStringLiteral("roots");
    bool changed = false;
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(m_dataFolder + QStringLiteral("/stemhaven-root-paths.db"));
        database.open();
        QSqlQuery query(database);
        changed = change(query);
    }
    QSqlDatabase::removeDatabase(name);
    if (!changed)
        throw std::runtime_error("The roots could not be changed in " + m_profile.toStdString());
}

void ProgramUnderTest::start() {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_profile + QStringLiteral("/data"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_profile + QStringLiteral("/config"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    m_process = std::make_unique<QProcess>();
    m_process->setProcessEnvironment(environment);
    // Into a file: nobody empties a pipe while the storm goes on.
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardOutputFile(m_profile + QStringLiteral("/output.txt"), QIODevice::Append);
    m_process->start(m_program, QStringList());
    if (!m_process->waitForStarted())
        fail("could not be started");
}

void ProgramUnderTest::stop() {
    checkAlive();
    m_process->terminate();
    if (!m_process->waitForFinished(longestEnd))
        fail("did not end when it was told to");
    // Told so early in its start that it does not listen yet, it ends as any process does.
    const bool endedBySignal =
        m_process->exitStatus() == QProcess::CrashExit && m_process->exitCode() == SIGTERM;
    if (m_process->exitCode() != 0 && !endedBySignal)
        fail("ended with status " + std::to_string(m_process->exitCode()));
    m_process.reset();
}

void ProgramUnderTest::kill() {
    m_process->kill();
    m_process->waitForFinished();
    m_process.reset();
}

void ProgramUnderTest::checkAlive() {
    if (m_process->waitForFinished(0) || m_process->state() != QProcess::Running)
        fail("ended by itself");
}

void ProgramUnderTest::fail(const std::string& what) {
    if (m_process->state() != QProcess::NotRunning)
        m_process->kill();
    m_process->waitForFinished();
    m_process.reset();
    QFile output(m_profile + QStringLiteral("/output.txt"));
    const QByteArray text = output.open(QIODevice::ReadOnly) ? output.readAll() : QByteArray();
    throw std::runtime_error("the program " + what + "\n" + text.toStdString());
}

} // namespace Storm
