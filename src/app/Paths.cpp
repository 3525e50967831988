#include "app/Paths.h"

#include <QStandardPaths>

namespace Stemhaven {

namespace {

struct DatabasePaths {
    QString main;
    QString rootPaths;
};

const DatabasePaths& databasePaths() {
    static const DatabasePaths paths = [] {
        const QString folder =
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/Stemhaven/");
        return DatabasePaths{
            folder + QStringLiteral("stemhaven-main.db"), folder + QStringLiteral("stemhaven-root-paths.db")};
    }();
    return paths;
}

// Main names the application later on, which would change the folder, so the paths are fixed while the
// program loads.
const DatabasePaths& pathsAtLoad = databasePaths();

} // namespace

const QString& mainDatabasePath() {
    return databasePaths().main;
}

const QString& rootPathsDatabasePath() {
    return databasePaths().rootPaths;
}

} // namespace Stemhaven
