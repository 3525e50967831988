#include "database/MultistatementTask.h"
#include "database/RowCount.h"
#include "database/SimpleTask.h"
#include "database/SqlQueryModelTask.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"

#include <QSqlQueryModel>
#include <QThread>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Stemhaven;
using TaskPointer = std::shared_ptr<Task>;

namespace {

std::shared_ptr<SimpleTask> noting(QStringList& log, const QString& text) {
    return std::make_shared<SimpleTask>([&log, text] { log.append(text); });
}

} // namespace

TEST(TaskManager, RunsFollowUpsDepthFirstAfterTheCallbacksOfTheirParent) {
    TestDatabase database;
    QStringList log;
    bool finished = false;
    QThread* callbackThread = nullptr;

    auto first = noting(log, "first");
    auto child = noting(log, "child");
    child->addNextTask(noting(log, "grandchild"));
    first->addNextTask(child);
    first->addNextTask(noting(log, "sibling"));
    first->setSuccessCallback([&](const TaskPointer& task) {
        callbackThread = QThread::currentThread();
        log.append("callback");
        task->addNextTask(noting(log, "appended"));
        throw std::runtime_error("a callback that fails still counts");
    });
    auto last = noting(log, "last");
    last->setSuccessCallback([&](const TaskPointer&) { finished = true; });

    LogCapture messages;
    database.tasks->addTask(first);
    database.tasks->addTask(last);
    ASSERT_TRUE(waitUntil([&] { return finished; }));
    EXPECT_EQ(log, QStringList({"first", "callback", "child", "grandchild", "sibling", "appended", "last"}));
    EXPECT_EQ(callbackThread, QThread::currentThread());
    EXPECT_EQ(messages.count("C: Task callback error!"), 1);
}

TEST(TaskManager, TellsTheKindsOfStatementApart) {
    TestDatabase database;
    ASSERT_TRUE(database.rows("CREATE TABLE t (a TEXT)").isEmpty());

    const std::pair<QString, QString> cases[] = {
        {"INSERT INTO t VALUES('x')", "insert 1,success"},
        {"UPDATE t SET a='insert' WHERE a='x'", "insert 1,success"},
        {"UPDATE t SET a='y'", "success"},
        {"SELECT a FROM t", "rows 1,success"},
        {"SELECT a FROM t WHERE a='none'", "rows 0,success"},
        {"SELECT b FROM t", "error Query had an error"},
    };
    for (const auto& [sql, expected] : cases) {
        QStringList calls;
        bool over = false;
        auto task = std::make_shared<QueryTask>(sql, database.tasks->mainDatabase());
        task->setQueryCallback(
            [&](const TaskPointer&, int rows, QSqlQuery*) { calls << QString("rows %1").arg(rows); });
        task->setOnInsertCallback(
            [&](const TaskPointer&, long long id) { calls << QString("insert %1").arg(id); });
        task->setSuccessCallback([&](const TaskPointer&) { calls << "success"; });
        task->setSqlErrorCallback(
            [&](const TaskPointer&, const DbException& error) { calls << "error " + error.message(); });
        auto end = std::make_shared<SimpleTask>([] {});
        end->setSuccessCallback([&](const TaskPointer&) { over = true; });
        task->addNextTask(end);
        LogCapture messages;
        database.tasks->addTask(task);
        ASSERT_TRUE(waitUntil([&] { return over; })) << sql.toStdString();
        EXPECT_EQ(calls.join(','), expected) << sql.toStdString();
    }
}

TEST(TaskManager, LeavesTheStatementsAfterAFailingOneAlone) {
    TestDatabase database;
    QStringList calls;
    auto task = std::make_shared<MultistatementTask>(
        QList<QString>{"CREATE TABLE a (x)", "INSERT INTO nowhere VALUES(1)", "CREATE TABLE b (x)"},
        database.tasks->mainDatabase());
    task->setSuccessCallback([&](const TaskPointer&) { calls << "success"; });
    task->setSqlErrorCallback([&](const TaskPointer&, const DbException&) { calls << "error"; });
    LogCapture messages;
    database.tasks->addTask(task);
    EXPECT_EQ(database.rows("SELECT name FROM sqlite_master"), QStringList("a"));
    EXPECT_EQ(calls, QStringList("error"));
}

TEST(TaskManager, FillsAQueryModelToItsLastRowAndKeepsTheOldOneOnFailure) {
    TestDatabase database;
    database.rows("CREATE TABLE t (a INTEGER)");
    database.rows("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1000) INSERT INTO t "
                  "SELECT i FROM n");
    std::recursive_mutex mutex;
    const auto slot = std::make_shared<QSqlQueryModel*>(nullptr);

    const auto load = [&](const QString& sql) {
        QString outcome;
        auto task = std::make_shared<SqlQueryModelTask>(sql, mutex, slot, database.tasks->mainDatabase());
        task->setSuccessCallback([&](const TaskPointer&) { outcome = "success"; });
        task->setErrorCallback(
            [&](const TaskPointer&, const Exception& error) { outcome = error.message(); });
        database.tasks->addTask(task);
        waitUntil([&] { return !outcome.isEmpty(); });
        return outcome;
    };
    EXPECT_EQ(load("SELECT a FROM t"), "success");
    EXPECT_EQ((*slot)->rowCount(), 1000);
    EXPECT_EQ((*slot)->data((*slot)->index(999, 0)).toInt(), 1000);
    EXPECT_EQ(load("SELECT b FROM t"), "Query had an error");
    EXPECT_EQ((*slot)->rowCount(), 1000);

    database.tasks->addTask(std::make_shared<SimpleTask>([slot] { delete *slot; }));
    database.rows("SELECT 1");
}

TEST(TaskManager, KeepsQueuedTasksWhileStoppedAndRunsThemInOrderAfterwards) {
    TestDatabase database;
    QStringList log;
    bool stopped = false;
    QObject::connect(
        database.tasks.get(), &TaskManager::wasStopped, qApp, [&] { stopped = true; }, Qt::QueuedConnection);
    database.tasks->addTask(noting(log, "before"));
    database.tasks->stop();
    ASSERT_TRUE(waitUntil([&] { return stopped; }));
    const auto before = log;

    bool finished = false;
    database.tasks->addTask(noting(log, "a"));
    auto last = noting(log, "b");
    last->setSuccessCallback([&](const TaskPointer&) { finished = true; });
    database.tasks->addTask(last);
    EXPECT_EQ(log, before);

    database.tasks->restart();
    ASSERT_TRUE(waitUntil([&] { return finished; }));
    EXPECT_EQ(log, QStringList({"before", "a", "b"}));
}

TEST(TaskManager, ComesBackToLifeAfterADatabaseThatDidNotOpen) {
    TestDatabase database;
    const QString data = database.folder.path() + "/data";
    QFile obstacle(data);
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    obstacle.close();

    LogCapture messages;
    QStringList log;
    database.tasks->addTask(noting(log, "task"));
    ASSERT_TRUE(waitUntil([&] { return messages.count("Could not open main database!") > 0; }));
    EXPECT_GT(messages.count("unable to open database file"), 0);
    EXPECT_TRUE(log.isEmpty());

    ASSERT_TRUE(QFile::remove(data));
    EXPECT_EQ(database.rows("SELECT 1"), QStringList("1"));
    EXPECT_EQ(log, QStringList("task"));
}

TEST(TaskManager, EndsWhileCallbacksAreOutstandingAndDropsWhatIsQueued) {
    TestDatabase database;
    bool ranDropped = false;
    const auto token = std::make_shared<int>(1);
    auto running = std::make_shared<QueryTask>("SELECT 1", database.tasks->mainDatabase());
    running->setQueryCallback([token](const TaskPointer&, int, QSqlQuery*) {});
    std::atomic<bool> started = false;
    auto marker = std::make_shared<SimpleTask>([&] { started = true; });
    marker->addNextTask(running);
    marker->setSuccessCallback([](const TaskPointer&) {});
    database.tasks->addTask(marker);
    database.tasks->addTask(std::make_shared<SimpleTask>([&ranDropped, token] { ranDropped = true; }));
    marker.reset();
    running.reset();
    while (!started)
        QThread::yieldCurrentThread();

    // The worker waits for a callback that this thread does not come to deliver.
    database.tasks.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(ranDropped);
    EXPECT_EQ(token.use_count(), 1);
}

TEST(TaskManager, TakesTasksFromManyThreads) {
    TestDatabase database;
    constexpr int threads = 4;
    constexpr int each = 500;
    std::atomic<int> ran = 0;
    std::atomic<int> called = 0;
    std::vector<std::thread> adders;
    for (int thread = 0; thread < threads; ++thread) {
        adders.emplace_back([&] {
            for (int i = 0; i < each; ++i) {
                auto task = std::make_shared<SimpleTask>([&] { ++ran; });
                task->setSuccessCallback([&](const TaskPointer&) { ++called; });
                database.tasks->addTask(task);
            }
        });
    }
    EXPECT_TRUE(waitUntil([&] { return called == threads * each; }));
    for (auto& adder : adders)
        adder.join();
    EXPECT_EQ(ran, threads * each);
}
