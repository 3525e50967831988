#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Stemhaven {

/// The replacement of several live files as one: afterwards, and after a kill or a power cut once repair()
/// has run, either all are new or all are as they were.
///
/// Each live file is first set aside, under its name with ".last" added, and what SQLite keeps beside it as
/// well. A journal in the profile says what was there; when all files are in place and on the disk, the
/// journal is rewritten, and from then on the new files count.
class FileSwap {
public:
    enum class Repair { NothingToDo, TakenBack, Completed, Failed };

    FileSwap(const QString& profileFolder, const QStringList& live);

    /// Removes ".last" files of an earlier time, or gives them another name where they may be all that is
    /// left, and writes the journal. Nothing live is touched.
    bool begin() const;
    /// A live file that is missing leaves nothing to be set aside.
    bool setAside(const QString& live) const;
    static bool putInPlace(const QString& replacement, const QString& live);
    /// From here on there is no way back.
    bool commit() const;
    /// After commit(). False where a ".last" file is still there.
    bool removeLast() const;

    /// Instead of commit(). Where it fails, the journal stays for repair().
    bool revert() const;

    /// Before the databases are opened: brings to an end what a killed program began.
    Repair repair() const;

private:
    struct Journal;

    QStringList all() const;
    std::optional<Journal> read() const;
    bool write(const Journal& journal) const;
    static bool takeBack(const QString& live, const Journal& journal);
    bool takeBack(const Journal& journal) const;
    bool clearLast(const QString& live) const;
    bool flushFolders() const;

    QString m_journal;
    QStringList m_live;
};

} // namespace Stemhaven
