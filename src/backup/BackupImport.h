#pragma once

#include "backup/BackupContents.h"
#include "backup/BackupSteps.h"
#include "backup/FileSwap.h"
#include "backup/LiveFiles.h"
#include "backup/UnfinishedWork.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QString>

#include <functional>

namespace Stemhaven {

/// Replaces both databases and the settings by what an archive holds. One import an object. The connections
/// to the databases are closed, and nobody writes settings, while it works; it waits for tar, so it is not
/// for the GUI thread. The user has been asked before.
///
/// The archive is unpacked beside itself and checked, and the databases are copied aside, before a live file
/// is touched. An import that fails, is cancelled or killed leaves the files as they were, the latter once
/// the next start has looked after them.
class BackupImport {
    Q_DECLARE_TR_FUNCTIONS(Stemhaven::BackupImport)

public:
    BackupImport(const LiveFiles& live, const QString& file, const QDateTime& now);

    /// Brings the databases, which are in place, to the current schema, with no connection to them open
    /// before and after. Returns whether it could. On the thread of the import.
    using Initialise = std::function<bool()>;

    /// initialise is called for databases of an older version; where it fails, so does the import. An empty
    /// one leaves that to the next start.
    BackupResult run(const BackupObserver& observer, const Initialise& initialise = {});

    /// Whether a file's name is that of a backup, and what is said where it is not.
    static bool hasNameOfBackup(const QString& file);
    static QString notABackupText();
    static QString notABackupAdvice();

    /// The question, with the answers Yes and No, that comes before.
    static QString questionText();
    static QString questionAdvice();

    /// Of failures that have no other headline.
    static QString failureTitle();

    /// The status line before and during the work.
    static QString beginningText();
    QString workingText() const;

private:
    struct Texts {
        QString settingAside;
        QString renameFailure;
        QString copying;
        QString copyFailure;
    };

    void checkArchive(BackupSteps& steps);
    void makeFolder();
    void checkContents(BackupSteps& steps);
    void copyAside();
    void replaceLiveFiles(BackupSteps& steps);
    void replace(const QString& live, const Texts& texts, BackupSteps& steps);
    void finish(BackupSteps& steps, const Initialise& initialise);
    void undo(BackupResult& result);

    LiveFiles m_live;
    QString m_file;
    QString m_folder;
    QDateTime m_now;
    BackupContents m_contents;
    UnfinishedWork m_work;
    FileSwap m_swap;
    bool m_isSwapping = false;
    DatabaseVersion m_version = DatabaseVersion::Unknown;
};

} // namespace Stemhaven
