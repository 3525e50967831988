#pragma once

#include "database/ProjectChanges.h"
#include "monitor/Places.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace Stemhaven {

class TaskManager;

/// Keeps the user data with a bundle that moves to another volume while the program runs. Such a move copies
/// the bundle, which makes a record without user data, and deletes the original afterwards. When the original
/// goes, the copy is given what the user said of it. The original's record stays as it is, since the original
/// can come back from a backup.
///
/// On one volume a move keeps the identity, so a copy there is a copy and nothing else. On the checks'
/// thread.
class MovesByCopying {
public:
    explicit MovesByCopying(TaskManager& tasks) : m_tasks(tasks) {}

    /// copy is the new record of a copy of original's bundle.
    void add(long long original, long long copy) { m_copies[original].append(copy); }

    bool isEmpty() const { return m_copies.isEmpty(); }

    /// The bundle at path is gone, and has not turned up elsewhere. Returns the changed record of the copy,
    /// nothing where there is none: the original is no copy's, its volume is away, it has several copies, or
    /// the user has said something of the copy. Throws DbException.
    std::optional<ProjectChanges::Written>
    originalVanished(const QString& path, const Places& places, const std::function<bool()>& giveUp);

private:
    TaskManager& m_tasks;
    /// By the original.
    QHash<long long, QList<long long>> m_copies;
};

} // namespace Stemhaven
