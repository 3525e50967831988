#include "database/DatabaseInit.h"

#include "app/errors/DbException.h"
#include "app/errors/ErrorHandler.h"
#include "app/logging/Log.h"
#include "database/Connection.h"
#include "database/DatabaseInitStatements.h"
#include "database/MultistatementTask.h"
#include "database/QueryTask.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

#include <utility>

namespace Stemhaven {

namespace {

using TaskPointer = std::shared_ptr<Task>;
using Step = std::function<void(const TaskPointer&)>;

bool isPresent(const QString& path) {
    const QFileInfo file(path);
    return file.exists() && file.size() > 0;
}

/// One run of the initialisation. Each step is appended, once the step before it has succeeded, to the task
/// of that step; the tasks' callbacks keep the run alive.
class Initialisation : public std::enable_shared_from_this<Initialisation> {
    Q_DECLARE_TR_FUNCTIONS(Stemhaven::DatabaseInit)

public:
    Initialisation(TaskManager& tasks, std::function<void()> onSuccess, std::function<void()> onFailure)
        : m_tasks(tasks),
          m_onSuccess(std::move(onSuccess)),
          m_onFailure(std::move(onFailure)) {}

    void start() {
        if (isPresent(m_tasks.mainPath()) && isPresent(m_tasks.rootPathsPath()))
            checkVersion();
        else
            createAll(nullptr);
    }

private:
    /// Makes whatever is missing. The version comes last: a database that has none was not finished.
    void createAll(const TaskPointer& parent) {
        createMainTables(
            parent, [self = shared_from_this()](const TaskPointer& task) { self->addStatuses(task, 0); });
    }

    void createMainTables(const TaskPointer& parent, const Step& next) {
        auto task = std::make_shared<MultistatementTask>(m_statements.initMainSQL(), m_tasks.mainDatabase());
        task->setSuccessCallback([this, self = shared_from_this(), next](const TaskPointer& done) {
            done->addNextTask(
                std::make_shared<SimpleTask>([this, self] { ensureLookUpTables(m_tasks.mainDatabase()); }));
            next(done);
        });
        task->setSqlErrorCallback(
            [this, self = shared_from_this()](const TaskPointer&, const DbException& error) {
                qCritical() << "Could not init main database!";
                qCritical() << error;
                alertFolders(error);
                fail();
            });
        m_tasks.addTask(task, parent);
    }

    void addStatuses(const TaskPointer& parent, qsizetype kind) {
        const auto defaults = m_statements.statusDefaults();
        if (kind == defaults.size()) {
            createRootPathsTable(
                parent, [this, self = shared_from_this()](const TaskPointer& task) { addVersion(task); });
            return;
        }
        const auto& status = defaults[kind];
        auto task = std::make_shared<QueryTask>(status.select, m_tasks.mainDatabase());
        task->setQueryCallback(
            [this, self = shared_from_this(), kind, status](const TaskPointer& done, int rows, QSqlQuery*) {
                // A database that lost only its companion has its rows, and the user's own labels among them.
                if (rows > 0)
                    addStatuses(done, kind + 1);
                else
                    insertStatuses(done, kind, status);
            });
        task->setSqlErrorCallback(failure(status.failureText));
        m_tasks.addTask(task, parent);
    }

    void insertStatuses(
        const TaskPointer& parent, qsizetype kind, const DatabaseInitStatements::StatusDefaults& status) {
        // A part of them, left by a program that was killed, would pass for what the user made of them.
        auto task = std::make_shared<MultistatementTask>(
            status.inserts, m_tasks.mainDatabase(), MultistatementTask::Scope::Transaction);
        task->setSuccessCallback([this, self = shared_from_this(), kind](const TaskPointer& done) {
            addStatuses(done, kind + 1);
        });
        task->setSqlErrorCallback(failure(status.failureText));
        m_tasks.addTask(task, parent);
    }

    void createRootPathsTable(const TaskPointer& parent, const Step& next, bool logFailure = true) {
        auto task = std::make_shared<MultistatementTask>(
            QList<QString>{m_statements.initRootPathsSQL()}, m_tasks.rootPathsDatabase());
        task->setSuccessCallback(next);
        task->setSqlErrorCallback(
            [this, self = shared_from_this(), logFailure](const TaskPointer&, const DbException& error) {
                if (logFailure) {
                    qCritical() << "Could not init search paths database!";
                    qCritical() << error;
                }
                alertFolders(error);
                fail();
            });
        m_tasks.addTask(task, parent);
    }

    void addVersion(const TaskPointer& parent) {
        auto task = std::make_shared<QueryTask>(m_statements.selectVersion(), m_tasks.mainDatabase());
        task->setQueryCallback(
            [this, self = shared_from_this()](const TaskPointer& done, int rows, QSqlQuery*) {
                // A database that lost only its companion says of which version it is.
                if (rows > 0)
                    overwriteVersion(done);
                else
                    insertVersion(done);
            });
        task->setSqlErrorCallback(
            [this, self = shared_from_this()](const TaskPointer&, const DbException& error) {
                reportMissingVersion(error);
            });
        m_tasks.addTask(task, parent);
    }

    void insertVersion(const TaskPointer& parent) {
        finishWith(
            parent, m_statements.insertVersion(),
            QStringLiteral("Could not add database version to database after initialization..."));
    }

    void overwriteVersion(const TaskPointer& parent) {
        finishWith(
            parent, m_statements.updateVersion(), QStringLiteral("Updating database version failed..."));
    }

    void checkVersion() {
        qDebug() << "Checking database version...";
        auto task = std::make_shared<QueryTask>(m_statements.selectVersion(), m_tasks.mainDatabase());
        task->setQueryCallback(
            [this, self = shared_from_this()](const TaskPointer& done, int rows, QSqlQuery* query) {
                qDebug() << "Initializing main database tables...";
                if (rows == 0) {
                    createAll(done);
                    return;
                }
                readVersion(rows, *query);
                createMainTables(done, [this, self](const TaskPointer& created) { updateVersion(created); });
            });
        task->setSqlErrorCallback(
            [this, self = shared_from_this()](const TaskPointer& done, const DbException& error) {
                // A sound database without that table, which is one of the last to be made.
                if (error.isStatementAtFault())
                    createAll(done);
                else
                    reportMissingVersion(error);
            });
        m_tasks.addTask(task);
    }

    void reportMissingVersion(const DbException& error) {
        // Straight to the handler: Qt would end the program, and a damaged file must not be able to do that.
        Logging::handler(
            QtFatalMsg, QMessageLogContext(),
            QStringLiteral("Could not retrieve database version. Database initialization incomplete..."));
        ErrorHandler::instance().reportError(
            tr("Could not find database version! Please restart Stemhaven"), error, QtFatalMsg);
        fail();
    }

    static void readVersion(int rows, QSqlQuery& query) {
        if (rows >= 2)
            qWarning() << "Multiple entries in details table for database_version! Count: " << rows;
        if (!query.next())
            return;
        const auto text = query.value(QStringLiteral("database_version")).toString();
        const auto version = DatabaseVersionFromString(text);
        if (version == DatabaseVersion::Unknown || version > currentDatabaseVersion)
            qWarning() << "The main database says that it is of version" << text
                       << "which this program does not write.";
    }

    void updateVersion(const TaskPointer& parent) {
        createRootPathsTable(
            parent, [this, self = shared_from_this()](const TaskPointer& task) { overwriteVersion(task); },
            false);
    }

    void finishWith(const TaskPointer& parent, const QString& statement, const QString& failureText) {
        auto task = std::make_shared<QueryTask>(statement, m_tasks.mainDatabase());
        task->setSuccessCallback([this, self = shared_from_this()](const TaskPointer&) {
            if (m_onSuccess)
                m_onSuccess();
        });
        task->setSqlErrorCallback(
            [this, self = shared_from_this(), failureText](const TaskPointer&, const DbException&) {
                qCritical().noquote() << failureText;
                fail();
            });
        m_tasks.addTask(task, parent);
    }

    std::function<void(const TaskPointer&, const DbException&)> failure(const QString& text) {
        return [this, self = shared_from_this(), text](const TaskPointer&, const DbException& error) {
            qCritical().noquote() << text;
            qCritical() << error;
            fail();
        };
    }

    static void alertFolders(const DbException& error) {
        ErrorHandler::instance().reportError(
            tr("Could not setup main folders to monitor! Please restart Stemhaven"), error, QtFatalMsg);
    }

    void fail() {
        if (m_onFailure)
            m_onFailure();
    }

    TaskManager& m_tasks;
    DatabaseInitStatements m_statements{currentDatabaseVersion};
    std::function<void()> m_onSuccess;
    std::function<void()> m_onFailure;
};

} // namespace

void initDatabase(TaskManager& tasks, std::function<void()> onSuccess, std::function<void()> onFailure) {
    std::make_shared<Initialisation>(tasks, std::move(onSuccess), std::move(onFailure))->start();
}

} // namespace Stemhaven
