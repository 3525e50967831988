#include "backup/UnfinishedWork.h"

#include "backup/LiveFiles.h"
#include "platform/FileCopy.h"
#include "platform/PlainFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace Stemhaven {

namespace {

const QString folderKey = QStringLiteral("folder");
const QString archiveKey = QStringLiteral("archive");

} // namespace

UnfinishedWork::UnfinishedWork(const QString& profileFolder, const QStringList& names)
    : m_marker(profileFolder + QStringLiteral("/stemhaven-backup.unfinished")),
      m_names(names) {}

bool UnfinishedWork::remember(const QString& folder, const QString& archive) const {
    const QJsonObject work{{folderKey, folder}, {archiveKey, archive}};
    return replaceFile(m_marker, QJsonDocument(work).toJson());
}

bool UnfinishedWork::remove() const {
    constexpr qint64 longest = 1 << 16;
    const auto text = readPlainFile(m_marker, longest);
    if (!text)
        return true;
    const auto work = QJsonDocument::fromJson(*text).object();
    const QString archive = work[archiveKey].toString();
    const bool archiveGone = archive.isEmpty() || !isThere(archive) || QFile::remove(archive);
    const QString folder = work[folderKey].toString();
    const bool folderGone = folder.isEmpty() || removeFolder(folder);
    forget();
    return archiveGone && folderGone;
}

void UnfinishedWork::forget() const {
    QFile::remove(m_marker);
}

bool UnfinishedWork::removeFolder(const QString& folder) const {
    for (const auto& name : m_names) {
        const QString file = folder + QLatin1Char('/') + name;
        QFile::remove(file);
        for (const auto& companion : companionsOf(file))
            QFile::remove(companion);
    }
    return !isThere(folder) || QDir().rmdir(folder);
}

} // namespace Stemhaven
