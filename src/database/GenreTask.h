#pragma once

#include "database/Task.h"

#include <QString>

#include <functional>

class QSqlQuery;

namespace Stemhaven {

/// Gives projects the genre of a name, which is made if there is none, in one transaction. No genre is made
/// for nothing: where no project gets it, nothing is written.
class GenreTask : public Task {
public:
    /// The statements, and what the log says of each outcome.
    struct Assignment {
        QString select; // the ids of the genres of that name
        QString selectFailure;
        QString duplicate; // followed by the id of the genre that is taken
        QString invalidId;
        QString insert;
        QString insertFailure;
        std::function<QString(qint64 genreId)> update;
        std::function<QString(qint64 genreId)> updateFailure;
        std::function<QString(qint64 genreId)> success;
    };

    GenreTask(Assignment assignment, QSqlDatabase& database);

    unsigned short exec() override;

private:
    void assign();
    bool findOrMakeGenre(QSqlQuery& query, qint64& genreId);
    void execute(QSqlQuery& query, const QString& statement, const QString& failure);

    Assignment m_assignment;
    QString m_failure; // what to log where the step that is under way fails
};

} // namespace Stemhaven
