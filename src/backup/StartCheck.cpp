#include "backup/StartCheck.h"

#include "backup/DatabaseCopies.h"
#include "backup/UnfinishedWork.h"
#include "database/DatabaseFile.h"
#include "platform/FileCopy.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSettings>

#include <filesystem>
#include <optional>

namespace Stemhaven {

namespace {

namespace fs = std::filesystem;

class Texts {
    Q_DECLARE_TR_FUNCTIONS(Stemhaven::StartCheck)
};

fs::path nativePath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

/// foreignPart is set where the database needs a copy for what it holds.
bool needsCopy(const QString& database, const QString& table, QString& foreignPart) {
    if (!isThere(database))
        return false;
    DatabaseFile file(database, DatabaseFile::Access::ReadWrite);
    switch (file.check(DatabaseFile::Check::Quick)) {
    case DatabaseFile::Condition::Damaged:
        qCritical().noquote() << "The database is damaged:" << database << file.error();
        return true;
    case DatabaseFile::Condition::Foreign:
        foreignPart = file.error();
        qCritical().noquote() << "The database is not as Stemhaven made it:" << database << foreignPart;
        return true;
    case DatabaseFile::Condition::Unknown:
        qWarning().noquote() << "The database could not be checked:" << database << file.error();
        return false;
    case DatabaseFile::Condition::Sound:
        break;
    }
    // SQLite takes an empty file for a good database. A disk that fails may leave one.
    return QFileInfo(database).size() == 0 && !file.hasTable(table);
}

bool nameTwice(const QString& file, const QString& second) {
    std::error_code failure;
    fs::create_hard_link(nativePath(file), nativePath(second), failure);
    return !failure || copyToNewFile(file, second);
}

/// Something is under the database's name at every moment: with nothing there, a start would make a new
/// catalogue.
bool putInPlaceOfDamaged(const QString& copy, const QString& database, const QString& damaged) {
    const QString ready = database + QStringLiteral(".restored");
    QFile::remove(ready);
    if (!copyToNewFile(copy, ready) || !nameTwice(database, damaged))
        return false;
    const auto from = companionsOf(database);
    const auto to = companionsOf(damaged);
    for (qsizetype index = 0; index < from.size(); ++index) {
        if (isThere(from[index]) && !QFile::rename(from[index], to[index]))
            return false;
    }
    std::error_code failure;
    fs::rename(nativePath(ready), nativePath(database), failure);
    return !failure && flushToDisk(QFileInfo(database).absolutePath());
}

} // namespace

QString nameForDamaged(const QString& database, const QDateTime& now) {
    const QString name = database + QStringLiteral(".damaged-") +
        now.toUTC().toString(QStringLiteral("yyyy-MM-dd'T'hh-mm-ss'Z'"));
    QString free = name;
    for (int number = 2; isThere(free); ++number)
        free = name + QStringLiteral("-%1").arg(number);
    return free;
}

StartReport checkAtStart(const LiveFiles& live, const QDateTime& now) {
    StartReport report;
    const FileSwap swap(live.profileFolder(), live.all());
    report.import = swap.repair();
    // What has been read of the settings may be of the other file.
    if (report.import != FileSwap::Repair::NothingToDo)
        QSettings().sync();
    UnfinishedWork(live.profileFolder(), live.names()).remove();

    const DatabaseCopies copies(live);
    const auto check = [&](const QString& database, const QString& table) {
        QString foreignPart;
        if (!needsCopy(database, table, foreignPart))
            return;
        const QString name = QFileInfo(database).fileName();
        const auto copy = copies.newestSound(name, table);
        const QString damaged = nameForDamaged(database, now);
        if (copy && putInPlaceOfDamaged(copy->folder + QLatin1Char('/') + name, database, damaged)) {
            qCritical().noquote() << "Moved aside to" << damaged << "and put in its place:" << copy->folder;
            report.restored.append({database, damaged, copy->made});
        } else if (copy) {
            // What is done to the damaged one would be lost once the copy takes its place.
            qCritical().noquote() << "Could not put the copy in the place of" << database;
            report.unrestored.append(database);
        } else if (QFileInfo(database).size() > 0) {
            qCritical().noquote() << "There is no good copy for" << database;
            if (foreignPart.isEmpty())
                report.damaged.append(database);
            else
                report.foreign.append({database, foreignPart});
        }
    };
    check(live.mainDatabase, QStringLiteral("projects"));
    check(live.rootPathsDatabase, QStringLiteral("root_project_search_paths"));
    return report;
}

QString textOf(const StartReport& report) {
    QStringList texts;
    for (const auto& restored : report.restored) {
        //: %1 and %3 are files, %2 is a date and time
        const QString text =
            Texts::tr("The file %1 was damaged. Its newest good copy, of %2, has taken its place, so what "
                      "was changed since then is not in it. The damaged file is kept as %3.");
        texts.append(text.arg(
            QDir::toNativeSeparators(restored.database),
            QLocale().toString(restored.copyMade.toLocalTime(), QLocale::LongFormat),
            QDir::toNativeSeparators(restored.damaged)));
    }
    for (const auto& database : report.damaged) {
        texts.append(
            Texts::tr(
                "The file %1 is damaged, and there is no good copy of it. Import a backup to replace it.")
                .arg(QDir::toNativeSeparators(database)));
    }
    for (const auto& database : report.unrestored) {
        texts.append(
            Texts::tr("The file %1 is damaged, and its newest good copy could not be put in its place. Check "
                      "that you may write to the folder and that the disk is not full, and start Stemhaven "
                      "again.")
                .arg(QDir::toNativeSeparators(database)));
    }
    for (const auto& foreign : report.foreign) {
        //: %1 is a file, %2 tells what is in it in the terms of a database, such as: view "projects"
        const QString text = Texts::tr(
            "The file %1 is not as Stemhaven made it, and there is no good copy of it: it holds %2. "
            "It was left as it is and not opened. Start Stemhaven with --import-backup to put a "
            "backup in its place.");
        texts.append(text.arg(QDir::toNativeSeparators(foreign.database), foreign.part));
    }
    if (report.import == FileSwap::Repair::Failed)
        texts.append(Texts::tr(
            "An import of a backup was interrupted, and its files could not be put right. Check that you "
            "may write to the folders of Stemhaven and that the disk is not full, and start it again."));
    return texts.join(QStringLiteral("\n\n"));
}

} // namespace Stemhaven
