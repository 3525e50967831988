#include "backup/BackupImport.h"

#include "backup/DatabaseCopies.h"
#include "backup/StartCheck.h"
#include "database/DatabaseFile.h"
#include "platform/FileCopy.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStorageInfo>

#include <algorithm>

namespace Stemhaven {

namespace {

constexpr int stepCount = 16;
const QString suffix = QStringLiteral(".hvbk");

QString folderFor(const QString& file) {
    return file.endsWith(suffix) ? file.chopped(suffix.size()) : QString();
}

} // namespace

BackupImport::BackupImport(const LiveFiles& live, const QString& file, const QDateTime& now)
    : m_live(live),
      m_file(QFileInfo(file).absoluteFilePath()),
      m_folder(folderFor(m_file)),
      m_now(now),
      m_contents(TarArchive(m_file), m_folder, live),
      m_work(live.profileFolder(), live.names()),
      m_swap(live.profileFolder(), live.all()) {}

bool BackupImport::hasNameOfBackup(const QString& file) {
    return file.endsWith(QLatin1String("hvbk"));
}

QString BackupImport::notABackupText() {
    return tr("Not a valid Stemhaven backup!");
}

QString BackupImport::notABackupAdvice() {
    return tr("Valid backups should end with .hvbk extension.");
}

QString BackupImport::questionText() {
    return tr("Are you sure you want to import this backup? ");
}

QString BackupImport::questionAdvice() {
    return tr("This will replace the current database and settings!");
}

QString BackupImport::failureTitle() {
    return tr("Error importing backup");
}

QString BackupImport::beginningText() {
    return tr("Beginning backup import...");
}

QString BackupImport::workingText() const {
    return tr("Importing backup from '%1'. Please wait.").arg(m_file);
}

BackupResult BackupImport::run(const BackupObserver& observer, const Initialise& initialise) {
    const std::lock_guard lock(liveFilesMutex());
    const auto body = [&] {
        BackupSteps steps(stepCount, observer);
        checkArchive(steps);
        checkContents(steps);
        steps.next(tr("Copying the current databases aside"));
        copyAside();
        replaceLiveFiles(steps);
        finish(steps, initialise);
        BackupResult result;
        result.outcome = BackupResult::Outcome::Finished;
        result.message = tr("Finished importing backup!");
        result.needsInitialisation = m_version != currentDatabaseVersion && !initialise;
        return result;
    };
    return backupResult(failureTitle(), body, [this](BackupResult& result) { undo(result); });
}

void BackupImport::checkArchive(BackupSteps& steps) {
    if (m_folder.isEmpty())
        throw BackupError(notABackupText(), {}, notABackupAdvice());
    qInfo().noquote().nospace() << "Backup import: Beginning import of backup: " << m_file;
    if (!QFileInfo(m_file).isFile())
        throw BackupError(
            tr("Could not find backup file: ") + m_file, {},
            tr("Verify the file path is correct and try again."));
    qInfo().noquote().nospace() << "Starting import of backup: " << m_file << " -> " << m_folder;
    steps.next(tr("Checking the backup"));
    m_contents.checkList();
    constexpr qint64 largest = 16LL << 30;
    const QStorageInfo disk(QFileInfo(m_file).path());
    m_contents.checkSize(disk.isValid() ? std::min(largest, disk.bytesAvailable()) : largest);
}

void BackupImport::makeFolder() {
    // One that is there already is the user's: it would be removed at the end.
    if (isThere(m_folder))
        throw BackupError(
            tr("The folder %1 exists already. Stopping backup import...").arg(m_folder), {},
            tr("The backup is unpacked into a folder of its name. Move or rename the one that is there."));
    if (!m_work.remember(m_folder, {}))
        throw BackupError(
            tr("Could not write to the folder %1. Stopping backup import...").arg(m_live.profileFolder()), {},
            tr("The databases are there. Check that the disk is not full and that you may write to it."));
    if (!QDir().mkdir(m_folder)) {
        m_work.forget();
        throw BackupError(
            tr("Could not create the folder %1. Stopping backup import...").arg(m_folder), {},
            tr("The backup is unpacked beside its file. Copy it to a folder that you may write to."));
    }
}

void BackupImport::checkContents(BackupSteps& steps) {
    steps.next(tr("Unpacking the backup"));
    qInfo() << "Decompressing backup archive...";
    makeFolder();
    m_contents.unpack();
    steps.next(tr("Comparing the files with the backup"));
    m_contents.checkFiles();
    steps.next(tr("Checking the databases and the settings"));
    m_version = m_contents.checkMainDatabase();
    m_contents.checkRootPathsDatabase();
    m_contents.checkSettings();
}

void BackupImport::copyAside() {
    // An import before this one that could not be taken back.
    if (m_swap.repair() == FileSwap::Repair::Failed)
        throw BackupError(
            tr("An earlier import could not be taken back yet. Stopping backup import..."), {},
            tr("Start Stemhaven again: it then puts back what was there before."));
    const DatabaseCopies copies(m_live);
    if (copies.copyAside(m_now) != DatabaseCopies::Outcome::Failed)
        return;
    // An import may be the way out of a damaged database, which no copy can be made of but as it is.
    const auto isDamaged = [](const QString& path) {
        using Condition = DatabaseFile::Condition;
        if (!isThere(path))
            return false;
        const auto condition =
            DatabaseFile(path, DatabaseFile::Access::ReadWrite).check(DatabaseFile::Check::Whole);
        return condition == Condition::Damaged || condition == Condition::Foreign;
    };
    for (const auto& live : {m_live.mainDatabase, m_live.rootPathsDatabase}) {
        if (!isDamaged(live))
            continue;
        const QString damaged = nameForDamaged(live, m_now);
        if (!copyToNewFile(live, damaged))
            break;
        qWarning().noquote() << "The damaged database was copied to" << damaged;
        return;
    }
    throw BackupError(tr("Could not copy the current databases aside. Stopping backup import..."));
}

void BackupImport::replaceLiveFiles(BackupSteps& steps) {
    steps.next(tr("Preparing the replacement"));
    qInfo() << "Backup import: Performing redundant backup of current files...";
    // What has been set and not been written would go into the imported file.
    QSettings().sync();
    m_isSwapping = true;
    if (!m_swap.begin())
        throw BackupError(
            tr("Could not prepare the replacement of the current files. Stopping backup import..."));
    replace(
        m_live.mainDatabase,
        {tr("Setting the main database aside"),
         tr("Could not rename main database. Stopping backup import..."), tr("Importing the main database"),
         tr("Could not copy main database from backup! Stopping backup import...")},
        steps);
    replace(
        m_live.rootPathsDatabase,
        {tr("Setting the database of the monitored folders aside"),
         tr("Could not rename monitored paths database! Stopping backup import..."),
         tr("Importing the database of the monitored folders"),
         tr("Could not copy monitored paths database! Stopping backup import...")},
        steps);
    replace(
        m_live.settings,
        {tr("Setting the settings aside"),
         tr("Could not rename last settings file. Stopping backup import..."), tr("Importing the settings"),
         tr("Could not copy settings from backup. Stopping backup import...")},
        steps);
}

void BackupImport::replace(const QString& live, const Texts& texts, BackupSteps& steps) {
    steps.nextWithoutWayBack(texts.settingAside);
    if (!m_swap.setAside(live))
        throw BackupError(texts.renameFailure);
    steps.nextWithoutWayBack(texts.copying);
    QDir().mkpath(QFileInfo(live).absolutePath());
    if (!FileSwap::putInPlace(m_contents.replacementOf(live), live))
        throw BackupError(texts.copyFailure);
}

void BackupImport::finish(BackupSteps& steps, const Initialise& initialise) {
    steps.nextWithoutWayBack(tr("Making the replacement final"));
    if (initialise && m_version != currentDatabaseVersion && !initialise())
        throw BackupError(
            tr("Could not bring the database from backup up to date. Stopping backup import..."));
    if (!m_swap.commit())
        throw BackupError(tr("Could not make the replacement of the current files final."));
    m_isSwapping = false;
    steps.nextWithoutWayBack(tr("Removing the unpacked backup"));
    if (!m_work.remove())
        qWarning() << "Backup import: Could not delete temporary uncompressed backup folder!";
    steps.nextWithoutWayBack(tr("Removing the files from before"));
    if (!m_swap.removeLast())
        qWarning() << "Backup import could not remove all of the .last temporary files.";
    steps.nextWithoutWayBack(tr("Reading the settings again"));
    QSettings().sync();
    qInfo() << "Importing backup completed successfully";
}

void BackupImport::undo(BackupResult& result) {
    if (m_isSwapping) {
        qWarning() << "Backup import failed. Reverting to last files if possible...";
        if (!m_swap.revert())
            result.advice = tr("Start Stemhaven again: it then puts back what was there before.");
    }
    m_work.remove();
}

} // namespace Stemhaven
