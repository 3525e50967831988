#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <mutex>

namespace Stemhaven {

/// The files that a backup is made of, where the program uses them.
struct LiveFiles {
    QString mainDatabase;
    QString rootPathsDatabase;
    QString settings;

    /// The running program's own.
    static LiveFiles ofProgram();

    /// In the order in which they are copied and replaced: the main database, that of the root paths, the
    /// settings.
    QStringList all() const { return {mainDatabase, rootPathsDatabase, settings}; }

    /// The names that they have in an archive, in that order.
    QStringList names() const;

    /// The folder of the databases, in which what is remembered of a backup lies as well.
    QString profileFolder() const;
};

/// Held while the databases are copied or replaced beside the worker: a connection that is open during a
/// replacement would spoil the new file. The worker's own are closed then.
std::recursive_mutex& liveFilesMutex();

/// Whether something has that path, a link that leads nowhere included.
bool isThere(const QString& path);

/// What SQLite keeps beside a database of that path while it is in use, or after its program was killed.
/// Beside another database it would spoil that one.
QStringList companionsOf(const QString& database);

} // namespace Stemhaven
