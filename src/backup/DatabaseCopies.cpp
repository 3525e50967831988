#include "backup/DatabaseCopies.h"

#include "backup/TarArchive.h"
#include "database/DatabaseFile.h"
#include "platform/FileCopy.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

constexpr int kept = 10;
const QString timeFormat = QStringLiteral("yyyy-MM-dd'T'hh-mm-ss'Z'");
const QString partSuffix = QStringLiteral(".part");

/// Invalid for what is not the name of a copy.
QDateTime timeFrom(const QString& name) {
    const auto parts = name.split(QLatin1Char('T'));
    if (parts.size() != 2)
        return {};
    // Not as one, which would be a local time on the way, and there are none in the hour that summer time
    // skips.
    const auto date = QDate::fromString(parts[0], QStringLiteral("yyyy-MM-dd"));
    const auto time = QTime::fromString(parts[1], QStringLiteral("hh-mm-ss'Z'"));
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

bool hasContents(const QString& database) {
    // A new database may be in its log alone.
    return QFileInfo(database).size() > 0 || QFileInfo(companionsOf(database).front()).size() > 0;
}

} // namespace

DatabaseCopies::DatabaseCopies(const LiveFiles& live, std::function<bool()> isGivenUp)
    : m_live(live),
      m_isGivenUp(std::move(isGivenUp)),
      m_folder(live.profileFolder() + QStringLiteral("/Backups")) {}

QList<DatabaseCopies::Copy> DatabaseCopies::all() const {
    QList<Copy> copies;
    const auto names =
        QDir(m_folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const auto& name : names) {
        if (const auto made = timeFrom(name); made.isValid())
            copies.append({m_folder + QLatin1Char('/') + name, made});
    }
    return copies;
}

bool DatabaseCopies::isDue(const QDateTime& now) const {
    const auto copies = all();
    return copies.isEmpty() || copies.front().made.toLocalTime().date() != now.toLocalTime().date();
}

DatabaseCopies::Outcome DatabaseCopies::copyAside(const QDateTime& now) const {
    removeAbandoned();
    dateBack(now.toUTC());
    const auto before = all();
    const QString folder = freeFolder(now.toUTC());
    const QString part = folder + partSuffix;
    if (!hasContents(m_live.mainDatabase))
        return Outcome::Unchanged;
    if (!QDir().mkpath(part) || !writeInto(part)) {
        removeCopy(part);
        return Outcome::Failed;
    }
    const bool isChanged = before.isEmpty() || !hasSameContents(before.front().folder, part);
    if (!isChanged)
        removeCopy(part);
    if (!QDir().rename(isChanged ? part : before.front().folder, folder)) {
        removeCopy(part);
        return Outcome::Failed;
    }
    flushToDisk(m_folder);
    const auto after = all();
    for (qsizetype index = kept; index < after.size(); ++index)
        removeCopy(after[index].folder);
    return isChanged ? Outcome::Made : Outcome::Unchanged;
}

bool DatabaseCopies::writeInto(const QString& folder) const {
    for (const auto& live : {m_live.mainDatabase, m_live.rootPathsDatabase}) {
        if (!hasContents(live))
            continue;
        const QString copy = folder + QLatin1Char('/') + QFileInfo(live).fileName();
        DatabaseFile database(live, DatabaseFile::Access::ReadWrite);
        database.giveUpWhen(m_isGivenUp);
        if (!database.copyTo(copy)) {
            qCritical().noquote() << "Could not copy the database aside:" << live << database.error();
            return false;
        }
        DatabaseFile written(copy);
        written.giveUpWhen(m_isGivenUp);
        if (written.check(DatabaseFile::Check::Whole) != DatabaseFile::Condition::Sound ||
            !flushToDisk(copy)) {
            qCritical().noquote() << "The copy of the database is not good:" << copy << written.error();
            return false;
        }
    }
    return flushToDisk(folder);
}

bool DatabaseCopies::hasSameContents(const QString& one, const QString& other) const {
    // SQLite writes such copies anew from what the database holds, so equal contents are equal files.
    for (const auto& live : {m_live.mainDatabase, m_live.rootPathsDatabase}) {
        const QString name = QLatin1Char('/') + QFileInfo(live).fileName();
        if (ContentDigest::ofFile(one + name) != ContentDigest::ofFile(other + name))
            return false;
    }
    return true;
}

std::optional<DatabaseCopies::Copy>
DatabaseCopies::newestSound(const QString& name, const QString& table) const {
    for (const auto& copy : all()) {
        DatabaseFile database(copy.folder + QLatin1Char('/') + name);
        if (database.isOpen() &&
            database.check(DatabaseFile::Check::Whole) == DatabaseFile::Condition::Sound &&
            database.hasTable(table))
            return copy;
    }
    return std::nullopt;
}

QString DatabaseCopies::freeFolder(QDateTime time) const {
    const auto folder = [&] {
        return m_folder + QLatin1Char('/') + time.toString(timeFormat);
    };
    while (isThere(folder()))
        time = time.addSecs(1);
    return folder();
}

/// The clock was wrong when they were made. They would pass for newer than every copy from now on, and so be
/// kept and restored in its place.
void DatabaseCopies::dateBack(const QDateTime& now) const {
    auto copies = all();
    copies.erase(
        std::remove_if(copies.begin(), copies.end(), [&](const Copy& copy) { return copy.made <= now; }),
        copies.end());
    std::reverse(copies.begin(), copies.end());
    for (const auto& copy : copies)
        QDir().rename(copy.folder, freeFolder(now.addSecs(-copies.size())));
}

void DatabaseCopies::removeCopy(const QString& folder) const {
    for (const auto& live : {m_live.mainDatabase, m_live.rootPathsDatabase}) {
        const QString file = folder + QLatin1Char('/') + QFileInfo(live).fileName();
        QFile::remove(file);
        for (const auto& companion : companionsOf(file))
            QFile::remove(companion);
    }
    QDir().rmdir(folder);
}

void DatabaseCopies::removeAbandoned() const {
    const auto names = QDir(m_folder).entryList({QLatin1Char('*') + partSuffix}, QDir::Dirs);
    for (const auto& name : names) {
        if (timeFrom(name.chopped(partSuffix.size())).isValid())
            removeCopy(m_folder + QLatin1Char('/') + name);
    }
}

} // namespace Stemhaven
