#include "backup/BackupContents.h"

#include "backup/BackupSteps.h"
#include "database/DatabaseFile.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace Stemhaven {

namespace {

const QString logStart = QStringLiteral("Backup import: ");
constexpr qint64 largestSettings = 16 << 20;

} // namespace

BackupContents::BackupContents(const TarArchive& archive, const QString& folder, const LiveFiles& live)
    : m_archive(archive),
      m_folder(folder),
      m_live(live) {}

QString BackupContents::replacementOf(const QString& live) const {
    return QDir(m_folder).filePath(QFileInfo(live).fileName());
}

void BackupContents::checkList() const {
    const auto members = m_archive.members();
    if (!members)
        throw BackupError(
            tr("Decompression failed! Verify backup integrity."),
            tr("Error while importing backup. Decompression failed!"));
    QStringList missing = m_live.names();
    for (const auto& member : *members) {
        const QString name = nameInArchive(member.name);
        if (name.isEmpty() && member.kind == QLatin1Char('d'))
            continue;
        if (member.kind == QLatin1Char('-') && missing.removeOne(name))
            continue;
        qCritical().noquote() << logStart + QStringLiteral("Refused for its member") << member.name;
        throw BackupError(
            tr("The backup holds something other than the three files of a backup: %1. Stopping "
               "backup import...")
                .arg(member.name));
    }
    if (!missing.isEmpty())
        throw BackupError(tr("Required file not found: %1").arg(missing.front()));
}

void BackupContents::checkSize(qint64 most) const {
    const QString settings = QFileInfo(m_live.settings).fileName();
    for (const auto& member : m_archive.members().value_or(QList<TarArchive::Member>())) {
        if (nameInArchive(member.name) == settings && !m_archive.holdsAtMost(largestSettings, {member.name}))
            failSettings();
    }
    if (!m_archive.holdsAtMost(most))
        throw BackupError(
            tr("The backup is larger than what there is room for. Stopping backup import..."), {},
            tr("It is unpacked beside its file. Make room there, or copy it to a larger disk."));
}

void BackupContents::unpack() const {
    const QString output = m_archive.unpack(m_folder);
    // An archive may say of its folder that nobody may enter it.
    QFile::setPermissions(m_folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (!output.contains(QLatin1String("tar:")))
        return;
    for (const auto& line : output.split(QLatin1Char('\n')))
        qCritical().noquote() << QLatin1Char('\t') + line;
    throw BackupError(
        tr("Decompression failed! Verify backup integrity."),
        tr("Error while importing backup. Decompression failed!"));
}

void BackupContents::checkFiles() const {
    for (const auto& name : m_live.names()) {
        const QFileInfo file(QDir(m_folder).filePath(name));
        if (!file.isFile() || file.isSymLink())
            throw BackupError(tr("Required file not found: %1").arg(name));
    }
    qInfo() << "Backup import: All required files found";
    if (!m_archive.agreesWith(m_folder, m_live.names()))
        throw BackupError(
            tr("Decompression failed! Verify backup integrity."),
            tr("Error while importing backup. Decompression failed!"));
}

DatabaseVersion BackupContents::checkMainDatabase() const {
    DatabaseFile database(
        replacementOf(m_live.mainDatabase), DatabaseFile::Access::ReadOnly,
        QStringLiteral("backup_main_db_connection"));
    // SQLite looks into a file only when it is first asked something.
    if (!database.isOpen() || database.check(DatabaseFile::Check::Whole) != DatabaseFile::Condition::Sound) {
        qCritical().noquote() << logStart + QStringLiteral("Could not open database from backup:")
                              << database.error();
        throw BackupError(tr("Could not open database from backup. Stopping backup import..."));
    }
    const auto text = database.version();
    if (!text || !database.hasTable(QStringLiteral("projects"))) {
        qCritical().noquote().nospace()
            << logStart << "Could not get database version from backup: " << database.error();
        throw BackupError(tr("Could not get database version from backup. Stopping backup import..."));
    }
    const auto version = DatabaseVersionFromString(*text);
    if (version > currentDatabaseVersion)
        throw BackupError(
            tr("Backup database version is newer than the current db version that is supported. "
               "Try updating Stemhaven. Stopping backup import..."));
    if (version == DatabaseVersion::Unknown)
        qWarning().noquote() << logStart + QStringLiteral("The main database says that it is of version")
                             << *text;
    return version;
}

void BackupContents::checkRootPathsDatabase() const {
    DatabaseFile database(replacementOf(m_live.rootPathsDatabase));
    if (database.check(DatabaseFile::Check::Whole) == DatabaseFile::Condition::Sound &&
        database.hasTable(QStringLiteral("root_project_search_paths")))
        return;
    qCritical().noquote() << logStart + QStringLiteral("The root-paths database is not good:")
                          << database.error();
    throw BackupError(tr("Could not open monitored paths database from backup. Stopping backup import..."));
}

void BackupContents::checkSettings() const {
    const QString file = replacementOf(m_live.settings);
    const qint64 size = QFileInfo(file).size();
    const auto isGood = [&] {
        const QSettings settings(file, QSettings::NativeFormat);
        // What is no settings file may still be read as one without a key.
        return !settings.allKeys().isEmpty() && settings.status() == QSettings::NoError;
    };
    if (size > largestSettings || (size > 0 && !isGood()))
        failSettings();
}

void BackupContents::failSettings() {
    throw BackupError(tr("The settings file of the backup is not one. Stopping backup import..."));
}

} // namespace Stemhaven
