#pragma once

#include "backup/LiveFiles.h"
#include "backup/TarArchive.h"
#include "database/DatabaseVersion.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// What an archive says that it holds, and what came out of it: the checks before anything live is touched.
/// Whoever made the archive is not trusted. Each check throws BackupError, with the text for the user.
class BackupContents {
    Q_DECLARE_TR_FUNCTIONS(Stemhaven::BackupContents)

public:
    /// folder is where the archive is unpacked to.
    BackupContents(const TarArchive& archive, const QString& folder, const LiveFiles& live);

    /// That the archive is whole and has nothing but the three plain files. Before it is unpacked.
    void checkList() const;

    /// That the members, unpacked, have no more bytes than that together: a small archive can hold a file
    /// that fills the disk. After checkList().
    void checkSize(qint64 most) const;

    /// Unpacks into the folder, which exists and is empty.
    void unpack() const;

    /// That the three files are there, and are what the archive holds.
    void checkFiles() const;

    /// That both databases are whole and the main one is of a version that this program knows; gives that.
    DatabaseVersion checkMainDatabase() const;
    void checkRootPathsDatabase() const;

    void checkSettings() const;

    /// Of the files in the folder, for a live file.
    QString replacementOf(const QString& live) const;

private:
    [[noreturn]] static void failSettings();

    TarArchive m_archive;
    QString m_folder;
    LiveFiles m_live;
};

} // namespace Stemhaven
