#include "backup/FileSwap.h"

#include "backup/LiveFiles.h"
#include "platform/FileCopy.h"
#include "platform/PlainFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <optional>

namespace Stemhaven {

namespace {

const QString committedKey = QStringLiteral("committed");
const QString missingKey = QStringLiteral("missing");

QString lastOf(const QString& live) {
    return live + QStringLiteral(".last");
}

/// Not over anything that has the new name.
bool rename(const QString& from, const QString& to) {
    return !isThere(to) && QFile::rename(from, to);
}

QString freeName(const QString& path) {
    int number = 1;
    while (isThere(path + QStringLiteral("-%1").arg(number)))
        ++number;
    return path + QStringLiteral("-%1").arg(number);
}

} // namespace

struct FileSwap::Journal {
    bool committed = false;
    /// The names of the files that were not there before.
    QSet<QString> missing;
};

FileSwap::FileSwap(const QString& profileFolder, const QStringList& live)
    : m_journal(profileFolder + QStringLiteral("/stemhaven-import.journal")),
      m_live(live) {}

QStringList FileSwap::all() const {
    QStringList files;
    for (const auto& live : m_live)
        files += QStringList(live) + companionsOf(live);
    return files;
}

bool FileSwap::begin() const {
    if (!std::all_of(m_live.begin(), m_live.end(), [this](const auto& live) { return clearLast(live); }))
        return false;
    Journal journal;
    for (const auto& file : all()) {
        if (!isThere(file))
            journal.missing.insert(QFileInfo(file).fileName());
    }
    return write(journal);
}

bool FileSwap::clearLast(const QString& live) const {
    const bool isNeeded = QFileInfo(live).size() == 0;
    for (const auto& file : QStringList(live) + companionsOf(live)) {
        const QString last = lastOf(file);
        if (!isThere(last))
            continue;
        if (isNeeded ? !rename(last, freeName(last)) : !QFile::remove(last))
            return false;
        qWarning().noquote() << (isNeeded ? "Gave another name to" : "Removed") << last;
    }
    return true;
}

bool FileSwap::setAside(const QString& live) const {
    const auto files = QStringList(live) + companionsOf(live);
    return std::all_of(files.begin(), files.end(), [](const QString& file) {
        return !isThere(file) || rename(file, lastOf(file));
    });
}

bool FileSwap::putInPlace(const QString& replacement, const QString& live) {
    return copyToNewFile(replacement, live);
}

bool FileSwap::commit() const {
    auto journal = read();
    if (!journal || !flushFolders())
        return false;
    journal->committed = true;
    write(*journal);
    // What the journal says now is what a later start would go by, whether or not the disk confirmed it.
    journal = read();
    return journal && journal->committed;
}

bool FileSwap::removeLast() const {
    bool removed = true;
    for (const auto& file : all()) {
        const QString last = lastOf(file);
        if (isThere(last) && !QFile::remove(last))
            removed = false;
    }
    QFile::remove(m_journal);
    return removed;
}

bool FileSwap::revert() const {
    const auto journal = read();
    return !journal || takeBack(*journal);
}

/// Puts the live file back after what belongs to the new one has gone, so that its return ends the matter:
/// where the journal cannot be removed, and the program goes on, a later start must not take the log of what
/// has been written since for the new file's.
bool FileSwap::takeBack(const QString& live, const Journal& journal) {
    const auto wasMissing = [&](const QString& file) {
        return journal.missing.contains(QFileInfo(file).fileName());
    };
    const auto removed = [](const QString& file) {
        return !isThere(file) || QFile::remove(file);
    };
    const auto putBack = [&](const QString& file) {
        return !isThere(lastOf(file)) || (removed(file) && rename(lastOf(file), file));
    };
    const auto companions = companionsOf(live);
    bool done = true;
    if (isThere(lastOf(live)) || wasMissing(live)) {
        for (const auto& companion : companions)
            done = (!wasMissing(companion) || removed(companion)) && done;
        done = done && (!wasMissing(live) || removed(live)) && putBack(live);
    }
    return std::all_of(companions.begin(), companions.end(), putBack) && done;
}

bool FileSwap::takeBack(const Journal& journal) const {
    bool done = true;
    for (const auto& live : m_live)
        done = takeBack(live, journal) && done;
    if (done) {
        flushFolders();
        QFile::remove(m_journal);
    } else {
        qCritical() << "Some copy or rename operations were uncessessful while reverting after backup import "
                       "failure.";
    }
    return done;
}

FileSwap::Repair FileSwap::repair() const {
    const auto journal = read();
    if (!journal)
        return Repair::NothingToDo;
    if (journal->committed) {
        // What cannot be removed is in nobody's way.
        if (!removeLast())
            qWarning() << "Backup import could not remove all of the .last temporary files.";
        return Repair::Completed;
    }
    qWarning() << "Backup import failed. Reverting to last files if possible...";
    return takeBack(*journal) ? Repair::TakenBack : Repair::Failed;
}

std::optional<FileSwap::Journal> FileSwap::read() const {
    constexpr qint64 longest = 1 << 16;
    if (!isThere(m_journal))
        return std::nullopt;
    Journal journal;
    // One that cannot be read says nothing of missing files, but what is aside can be put back without it.
    const auto text = readPlainFile(m_journal, longest);
    const auto object = QJsonDocument::fromJson(text.value_or(QByteArray())).object();
    journal.committed = object[committedKey].toBool();
    for (const auto& name : object[missingKey].toArray())
        journal.missing.insert(name.toString());
    return journal;
}

bool FileSwap::write(const Journal& journal) const {
    const QStringList missing(journal.missing.begin(), journal.missing.end());
    const QJsonObject object{
        {committedKey, journal.committed}, {missingKey, QJsonArray::fromStringList(missing)}};
    return replaceFile(m_journal, QJsonDocument(object).toJson());
}

bool FileSwap::flushFolders() const {
    return std::all_of(m_live.begin(), m_live.end(), [](const auto& live) {
        const QString folder = QFileInfo(live).absolutePath();
        return !isThere(folder) || flushToDisk(folder);
    });
}

} // namespace Stemhaven
