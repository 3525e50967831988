#pragma once

#include "backup/FileSwap.h"
#include "backup/LiveFiles.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// What was found and done before the databases were opened.
struct StartReport {
    /// A damaged database that a copy has taken the place of.
    struct Restored {
        QString database;
        /// Where the damaged file is now.
        QString damaged;
        /// When the copy was made.
        QDateTime copyMade;
    };

    /// Of an import that was killed.
    FileSwap::Repair import = FileSwap::Repair::NothingToDo;
    QList<Restored> restored;
    /// Damaged databases that there is no good copy for. They are where they were.
    QStringList damaged;

    /// Damaged databases that there is a good copy for, which could not be put in their place, on a full disk
    /// say. They are where they were.
    QStringList unrestored;

    /// A database with contents that the program must not work with, and that there is no good copy for.
    struct Foreign {
        QString database;
        QString part;
    };

    QList<Foreign> foreign;

    /// Whether the databases may be opened.
    bool mayStart() const {
        return import != FileSwap::Repair::Failed && foreign.isEmpty() && unrestored.isEmpty();
    }

    /// Whether the user should hear of it.
    bool isRemarkable() const { return !mayStart() || !restored.isEmpty() || !damaged.isEmpty(); }
};

/// Puts the profile right after whatever ended the last run: an import that was killed is brought to its end
/// or taken back, an unfinished export is removed, and each database is checked and replaced by its newest
/// good copy if it is damaged. Before anything opens the databases, and under the profile's lock. Reads each
/// database once.
StartReport checkAtStart(const LiveFiles& live, const QDateTime& now);

/// For the user, on all that is remarkable; empty where nothing is.
QString textOf(const StartReport& report);

/// Where a damaged database is to go: a name beside it that nothing has.
QString nameForDamaged(const QString& database, const QDateTime& now);

} // namespace Stemhaven
