#pragma once

#include "backup/BackupSteps.h"
#include "backup/LiveFiles.h"
#include "backup/TarArchive.h"
#include "backup/UnfinishedWork.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QString>

namespace Stemhaven {

/// Writes both databases and the settings into one archive. One export an object. The connections to the
/// databases are closed and the settings at rest while it works; it waits for tar, so it is not for the GUI
/// thread.
///
/// An archive is there only when it has been read back and agrees with what was put in. An export that fails,
/// is cancelled or killed leaves nothing behind, the latter once the next start has looked after it.
class BackupExport {
    Q_DECLARE_TR_FUNCTIONS(Stemhaven::BackupExport)

public:
    /// Writes into the folder destination an archive named after the local time now.
    BackupExport(const LiveFiles& live, const QString& destination, const QDateTime& now);

    BackupResult run(const BackupObserver& observer);

    /// Of failures that have no other headline.
    static QString failureTitle();

    /// The status line before and during the work.
    static QString beginningText();
    QString workingText() const;

private:
    void makeFolder();
    void copyFiles(BackupSteps& steps);
    void copyDatabase(const QString& live, const QString& failureText);
    void copySettings();
    void checkCopy(const QString& copy);
    void compress(BackupSteps& steps);

    LiveFiles m_live;
    QString m_destination;
    QString m_folder;
    TarArchive m_archive;
    UnfinishedWork m_work;
};

} // namespace Stemhaven
