#include "backup/BackupExport.h"

#include "database/DatabaseFile.h"
#include "platform/FileCopy.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace Stemhaven {

namespace {

constexpr int stepCount = 7;

QString archiveName(const QDateTime& now) {
    return QStringLiteral("Stemhaven-Backup-%1")
        .arg(now.toLocalTime().toString(QStringLiteral("MM.dd.yy-hh.mm.ss")));
}

/// Whether the file alone is not the whole database.
bool isInPieces(const QString& database) {
    const QFileInfo file(database);
    const auto companions = companionsOf(file.exists() ? file.canonicalFilePath() : database);
    const auto hasContents = [](const QString& path) {
        return QFileInfo(path).size() > 0;
    };
    return hasContents(companions.front()) || hasContents(companions.back());
}

} // namespace

BackupExport::BackupExport(const LiveFiles& live, const QString& destination, const QDateTime& now)
    : m_live(live),
      m_destination(QFileInfo(destination).absoluteFilePath()),
      m_folder(QDir(m_destination).filePath(archiveName(now))),
      m_archive(m_folder + QStringLiteral(".hvbk")),
      m_work(live.profileFolder(), live.names()) {}

QString BackupExport::failureTitle() {
    return tr("Could not export backup!");
}

QString BackupExport::beginningText() {
    return tr("Beginning backup export...");
}

QString BackupExport::workingText() const {
    return tr("Exporting backup to '%1'. Please wait...").arg(m_destination);
}

BackupResult BackupExport::run(const BackupObserver& observer) {
    const std::lock_guard lock(liveFilesMutex());
    const auto body = [&] {
        BackupSteps steps(stepCount, observer);
        qInfo().noquote().nospace() << "Backup export: Starting backup to: " << m_destination;
        steps.next(tr("Creating the backup folder"));
        makeFolder();
        copyFiles(steps);
        compress(steps);
        steps.nextWithoutWayBack(tr("Removing the temporary files"));
        if (!m_work.remove())
            qWarning().noquote().nospace()
                << "Backup export: Could not delete temporary backup folder: " << m_folder;
        qInfo().noquote().nospace() << "Backup export: Finished successfully. Backup written to: "
                                    << m_archive.path();
        BackupResult result;
        result.outcome = BackupResult::Outcome::Finished;
        result.message = tr("Finished exporting backup!");
        result.archive = m_archive.path();
        return result;
    };
    return backupResult(failureTitle(), body, [this](BackupResult&) { m_work.remove(); });
}

void BackupExport::makeFolder() {
    // A folder that is there already is the user's: it would be removed at the end.
    if (isThere(m_folder) || isThere(m_archive.path()) || !QFileInfo(m_destination).isDir() ||
        !m_work.remember(m_folder, m_archive.path()) || !QDir().mkdir(m_folder)) {
        m_work.forget();
        throw BackupError(tr("Could not create backup folder!"));
    }
    qInfo().noquote().nospace() << "Backup export: Created backup directory " << m_folder;
}

void BackupExport::copyFiles(BackupSteps& steps) {
    qInfo() << "Backup export: Copying over files...";
    steps.next(tr("Copying the main database"));
    copyDatabase(m_live.mainDatabase, tr("Backup export: Could not copy stemhaven-main.db!"));
    steps.next(tr("Copying the database of the monitored folders"));
    copyDatabase(m_live.rootPathsDatabase, tr("Backup export: Could not copy stemhaven-root-paths.db!"));
    steps.next(tr("Copying the settings"));
    copySettings();
    qInfo() << "Backup export: Finished copying over files successfully!";
}

void BackupExport::copyDatabase(const QString& live, const QString& failureText) {
    const QString copy = QDir(m_folder).filePath(QFileInfo(live).fileName());
    // A program that was killed, or another one that has the file open, leaves a part of it in its
    // companions.
    const bool copied = isInPieces(live) ? DatabaseFile(live, DatabaseFile::Access::ReadWrite).copyTo(copy)
                                         : copyToNewFile(live, copy);
    if (!copied)
        throw BackupError(failureText);
    checkCopy(copy);
}

void BackupExport::checkCopy(const QString& copy) {
    {
        DatabaseFile database(copy);
        if (database.check(DatabaseFile::Check::Whole) != DatabaseFile::Condition::Sound) {
            qCritical().noquote() << "Backup export:" << copy << database.error();
            throw BackupError(tr("Backup export: The database %1 is damaged. A backup of it could not be "
                                 "imported. Start Stemhaven again to have it checked.")
                                  .arg(QFileInfo(copy).fileName()));
        }
    }
    // SQLite makes them, empty, even to read.
    for (const auto& companion : companionsOf(copy))
        QFile::remove(companion);
}

void BackupExport::copySettings() {
    QSettings().sync();
    const QString name = QFileInfo(m_live.settings).fileName();
    QFile copy(QDir(m_folder).filePath(name));
    // A program that has nothing to keep yet has no settings file.
    const bool copied = isThere(m_live.settings) ? copyToNewFile(m_live.settings, copy.fileName())
                                                 : copy.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    if (!copied)
        throw BackupError(QStringLiteral("Backup export: Could not copy %1!").arg(name));
}

void BackupExport::compress(BackupSteps& steps) {
    steps.next(tr("Compressing the backup"));
    const auto failure = BackupError(tr("Error occurred while exporting backup. Compression failed!"));
    const QString output = m_archive.pack(m_folder);
    // The paths may have these letters themselves.
    if (QString(output).remove(m_archive.path()).remove(m_folder).contains(QLatin1String("tar"))) {
        qCritical().noquote().nospace() << "Backup export: Could not compress backup! Error: " << output;
        throw failure;
    }
    if (!QFileInfo::exists(m_archive.path())) {
        qCritical().noquote().nospace()
            << "Backup export: No error from tar call but compressed backup file not found! Expected: "
            << m_archive.path();
        throw failure;
    }
    QFile::setPermissions(m_archive.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    steps.next(tr("Reading the backup back"));
    if (!flushToDisk(m_archive.path()) || !m_archive.agreesWith(m_folder, m_live.names()) ||
        !flushToDisk(m_destination) || !m_work.keepArchive(m_folder))
        throw failure;
}

} // namespace Stemhaven
