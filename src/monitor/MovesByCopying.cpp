#include "monitor/MovesByCopying.h"

#include "app/errors/DbException.h"
#include "database/AwaitedTask.h"
#include "database/Transaction.h"
#include "database/UserDataStatements.h"

#include <QDebug>
#include <QSqlQuery>

#include <memory>

namespace Stemhaven {

namespace {

struct Pair {
    std::optional<ProjectRecord> original;
    std::optional<ProjectRecord> copy;
};

/// Of the same save, on another volume, and still where its record says.
bool isMoved(const Pair& pair, const Places& places) {
    const auto from = SystemUniqueFileID::fromString(pair.original->sufid);
    const auto to = SystemUniqueFileID::fromString(pair.copy->sufid);
    return from.valid && to.valid && from.device != to.device && pair.original->lastModified != 0 &&
        pair.original->lastModified == pair.copy->lastModified && !places.isAway(*pair.original, to) &&
        Places::bundleAt(pair.copy->path()) == to;
}

/// False where the user has said something of the copy.
bool copyUserData(QSqlDatabase& database, const ProjectRecord& original, const ProjectRecord& copy) {
    Transaction transaction(database);
    QSqlQuery query(database);
    const auto execute = [&](const QString& statement) {
        if (!query.exec(statement))
            throw DbException(&query, QStringLiteral("Query had an error"));
    };
    execute(UserDataStatements::selectUntouched(copy.id));
    const bool isUntouched = query.next();
    query.finish();
    if (!isUntouched)
        return false;
    const auto statements = UserDataStatements::copy(original.id, copy.id);
    for (const auto& statement : statements)
        execute(statement);
    query.finish();
    transaction.commit();
    return true;
}

} // namespace

std::optional<ProjectChanges::Written> MovesByCopying::originalVanished(
    const QString& path, const Places& places, const std::function<bool()>& giveUp) {
    const auto pair = std::make_shared<Pair>();
    const auto find = [pair, path, copies = m_copies](QSqlDatabase& database) {
        const auto originals = selectAt(database, path);
        for (const auto& original : originals) {
            const auto ids = copies.value(original.id);
            if (ids.size() == 1)
                *pair = {original, selectRecord(database, ids.first())};
        }
    };
    if (!AwaitedTask::run(m_tasks, find, giveUp) || !pair->copy || !isMoved(*pair, places))
        return std::nullopt;
    const auto isWritten = std::make_shared<bool>(false);
    const auto write = [pair, isWritten](QSqlDatabase& database) {
        *isWritten = copyUserData(database, *pair->original, *pair->copy);
    };
    if (!AwaitedTask::run(m_tasks, write, giveUp))
        return std::nullopt;
    m_copies.remove(pair->original->id);
    if (!*isWritten)
        return std::nullopt;
    qInfo() << "A project was copied to another volume and deleted here. Its copy has its user data now:"
            << path << "->" << pair->copy->path();
    return ProjectChanges::Written{ProjectDetails(pair->copy->path()), pair->copy->id};
}

} // namespace Stemhaven
