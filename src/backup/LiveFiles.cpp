#include "backup/LiveFiles.h"

#include "app/Paths.h"

#include <QFileInfo>
#include <QSettings>

namespace Stemhaven {

LiveFiles LiveFiles::ofProgram() {
    return {mainDatabasePath(), rootPathsDatabasePath(), QSettings().fileName()};
}

QStringList LiveFiles::names() const {
    QStringList names;
    for (const auto& path : all())
        names.append(QFileInfo(path).fileName());
    return names;
}

QString LiveFiles::profileFolder() const {
    return QFileInfo(mainDatabase).absolutePath();
}

std::recursive_mutex& liveFilesMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

bool isThere(const QString& path) {
    const QFileInfo file(path);
    return file.isSymLink() || file.exists();
}

QStringList companionsOf(const QString& database) {
    return {
        database + QStringLiteral("-wal"), database + QStringLiteral("-shm"),
        database + QStringLiteral("-journal")};
}

} // namespace Stemhaven
