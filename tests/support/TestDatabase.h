#pragma once

#include "app/errors/DbException.h"
#include "database/DatabaseInit.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "support/OutsideRows.h"
#include "support/Waiting.h"

#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>
#include <optional>

/// A folder with a pair of databases and the manager over them.
class TestDatabase {
public:
    TestDatabase() { open(); }

    /// Ends the manager, as quitting the program does, and starts another one on the same files.
    void reopen() {
        tasks.reset();
        QCoreApplication::processEvents();
        open();
    }

    QString mainPath() const { return folder.path() + QStringLiteral("/data/stemhaven-main.db"); }

    QString rootPathsPath() const { return folder.path() + QStringLiteral("/data/stemhaven-root-paths.db"); }

    /// Whether the initialisation came to its end well.
    bool initialise() {
        std::optional<bool> outcome;
        Stemhaven::initDatabase(
            *tasks, [&] { outcome = true; }, [&] { outcome = false; });
        return waitUntil([&] { return outcome.has_value(); }) && *outcome;
    }

    /// The rows of a select, the columns of each joined by "|". Any other statement gives nothing. "error" on
    /// failure.
    QStringList rows(const QString& sql) { return run(sql, tasks->mainDatabase()); }

    QStringList rootRows(const QString& sql) { return run(sql, tasks->rootPathsDatabase()); }

    QTemporaryDir folder;
    std::unique_ptr<Stemhaven::TaskManager> tasks;

private:
    void open() { tasks = std::make_unique<Stemhaven::TaskManager>(mainPath(), rootPathsPath()); }

    QStringList run(const QString& sql, QSqlDatabase& database) {
        using namespace Stemhaven;
        QStringList result;
        bool done = false;
        auto task = std::make_shared<QueryTask>(sql, database);
        task->setQueryCallback(
            [&](const std::shared_ptr<Task>&, int, QSqlQuery* query) { result = rowsOf(*query); });
        task->setSuccessCallback([&](const std::shared_ptr<Task>&) { done = true; });
        task->setSqlErrorCallback([&](const std::shared_ptr<Task>&, const DbException&) {
            result.append(QStringLiteral("error"));
            done = true;
        });
        tasks->addTask(task);
        if (!waitUntil([&] { return done; }))
            result.append(QStringLiteral("no answer"));
        return result;
    }
};
