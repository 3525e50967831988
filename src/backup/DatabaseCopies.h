#pragma once

#include "backup/LiveFiles.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace Stemhaven {

/// The copies of both databases in "Backups" beside them, the last ten of them. Each has a folder of its own,
/// named after the time in UTC, and is complete and was opened and checked before it gets that name. Any
/// thread, one at a time; the databases may be in use.
class DatabaseCopies {
public:
    struct Copy {
        QString folder;
        QDateTime made;
    };

    enum class Outcome {
        Made,
        /// The last copy has all that the databases hold; it is dated anew.
        Unchanged,
        Failed,
    };

    /// A copy that is being made fails once isGivenUp says so.
    explicit DatabaseCopies(const LiveFiles& live, std::function<bool()> isGivenUp = {});

    /// Newest first.
    QList<Copy> all() const;

    /// Whether none has been made or dated on this day yet.
    bool isDue(const QDateTime& now) const;

    /// What is missing or empty is left out. Where it fails, the earlier copies are as they were.
    Outcome copyAside(const QDateTime& now) const;

    /// The newest copy in which the database of that file name opens, is whole and has that table.
    std::optional<Copy> newestSound(const QString& name, const QString& table) const;

private:
    bool writeInto(const QString& folder) const;
    bool hasSameContents(const QString& one, const QString& other) const;
    QString freeFolder(QDateTime time) const;
    void dateBack(const QDateTime& now) const;
    void removeCopy(const QString& folder) const;
    void removeAbandoned() const;

    LiveFiles m_live;
    std::function<bool()> m_isGivenUp;
    QString m_folder;
};

} // namespace Stemhaven
