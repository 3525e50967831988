#include "database/EditTask.h"
#include "database/MultistatementTask.h"
#include "database/RowCount.h"
#include "database/SimpleTask.h"
#include "database/SqlQueryModelTask.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QSqlQueryModel>
#include <QThread>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <semaphore>
#include <stdexcept>

using namespace Stemhaven;
using TaskPointer = std::shared_ptr<Task>;

namespace {

/// What an edit reads before it is made.
EditTask::StateStatement reading(const QString& statement) {
    return [statement] {
        return statement;
    };
}

/// An edit that inserts a value into t.
TaskPointer inserting(const QString& value, TaskManager& tasks, const std::function<void()>& whenDone) {
    auto task = std::make_shared<EditTask>(
        reading({}), [value](const auto&) { return QStringList("INSERT INTO t VALUES(" + value + ')'); },
        tasks.mainDatabase());
    task->setSuccessCallback([whenDone](const TaskPointer&) { whenDone(); });
    return task;
}

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

TEST(TaskManager, AnswersEachStopOnceInWhateverOrderItIsStoppedRestartedAndEnded) {
    // s: stop, r: restart, d: shut down, w: wait until what was asked for has been done.
    const std::pair<const char*, int> cases[] = {
        {"s", 1},    {"ss", 1},   {"sws", 1},  {"r", 0},   {"sr", 1},   {"swr", 1},  {"srs", 2},
        {"srsr", 2}, {"swrs", 2}, {"ssrr", 1}, {"d", 0},   {"dd", 0},   {"ds", 0},   {"dr", 0},
        {"sd", 1},   {"srd", 1},  {"sdr", 1},  {"swd", 1}, {"swds", 1}, {"srsd", 2}, {"swrwsd", 2}};
    for (const auto& [calls, expected] : cases) {
        SCOPED_TRACE(calls);
        TestDatabase database;
        TaskManager& tasks = *database.tasks;
        std::atomic<int> answers = 0;
        QObject::connect(
            &tasks, &TaskManager::wasStopped, &tasks, [&] { ++answers; }, Qt::DirectConnection);
        std::atomic<bool> ran = false;
        database.rows("SELECT 1");
        for (const char* call = calls; *call != 0; ++call) {
            if (*call == 's')
                tasks.stop();
            else if (*call == 'r')
                tasks.restart();
            else if (*call == 'd')
                tasks.shutDown();
            else
                QThreadPool::globalInstance()->waitForDone();
        }
        QThreadPool::globalInstance()->waitForDone();
        EXPECT_EQ(answers, expected);
        const bool isRunning = !QByteArray(calls).contains('d') && QByteArray(calls).back() == 'r';
        tasks.addTask(std::make_shared<SimpleTask>([&] { ran = true; }));
        EXPECT_EQ(isRunning ? waitUntil([&] { return ran.load(); }) : ran.load(), isRunning);
    }
}

TEST(TaskManager, MayBeGoneWhenTheJobOfItsStopGetsItsTurn) {
    QThreadPool& pool = *QThreadPool::globalInstance();
    const int threads = pool.maxThreadCount();
    pool.setMaxThreadCount(1);
    std::binary_semaphore busy(0); // its order is seen by the sanitizer, that of Qt's is not
    pool.start([&] { busy.acquire(); });
    {
        TestDatabase database;
        database.rows("SELECT 1");
        database.tasks->stop();
        database.tasks->restart();
    }
    busy.release();
    EXPECT_TRUE(pool.waitForDone());
    pool.setMaxThreadCount(threads);
}

TEST(TaskManager, WritesTheEditsThatAreQueuedBeforeAStopAndNothingElse) {
    TestDatabase database;
    TaskManager& tasks = *database.tasks;
    database.rows("CREATE TABLE t (a TEXT)");
    QStringList log;
    std::binary_semaphore gate(0);
    const auto edit = [&](const QString& text) {
        tasks.addTask(inserting('\'' + text + '\'', tasks, [&log, text] { log.append(text); }));
    };
    QObject::connect(
        &tasks, &TaskManager::wasStopped, qApp, [&] { log.append("stopped"); }, Qt::QueuedConnection);
    tasks.addTask(std::make_shared<SimpleTask>([&] { gate.acquire(); }));
    tasks.addTask(noting(log, "other"));
    edit("first");
    edit("second");
    tasks.stop();
    gate.release();
    ASSERT_TRUE(waitUntil([&] { return log.contains("stopped"); }));
    EXPECT_EQ(log, QStringList({"first", "second", "stopped"}));

    // The files are replaced, as by an import.
    ASSERT_FALSE(QFile::exists(database.mainPath() + "-wal"));
    ASSERT_TRUE(QFile::rename(database.mainPath(), database.mainPath() + ".last"));
    tasks.restart();
    EXPECT_EQ(database.rows("SELECT a FROM t"), QStringList("error"));
    EXPECT_EQ(log.last(), "other");
    database.reopen();
    ASSERT_TRUE(QFile::remove(database.mainPath()));
    ASSERT_TRUE(QFile::rename(database.mainPath() + ".last", database.mainPath()));
    EXPECT_EQ(database.rows("SELECT a FROM t"), QStringList({"first", "second"}));
}

TEST(TaskManager, IsStoppedAndRestartedFromManyThreadsWithoutLosingATask) {
    TestDatabase database;
    TaskManager& tasks = *database.tasks;
    constexpr int threads = 4;
    constexpr int each = 200;
    std::atomic<int> ran = 0;
    std::atomic<int> stops = 0;
    QObject::connect(
        &tasks, &TaskManager::wasStopped, &tasks, [&] { ++stops; }, Qt::DirectConnection);
    database.rows("CREATE TABLE t (a INTEGER)");
    std::vector<std::thread> callers;
    for (int thread = 0; thread < threads; ++thread) {
        callers.emplace_back([&, thread] {
            for (int i = 0; i < each; ++i) {
                if ((i + thread) % 7 == 0)
                    tasks.stop();
                if ((i + thread) % 5 == 0)
                    tasks.restart();
                tasks.addTask(std::make_shared<SimpleTask>([&] { ++ran; }));
                tasks.addTask(inserting("1", tasks, [] {}));
            }
        });
    }
    // The worker waits for callbacks meanwhile.
    std::atomic<bool> joined = false;
    std::thread joiner([&] {
        for (auto& caller : callers)
            caller.join();
        joined = true;
    });
    EXPECT_TRUE(waitUntil([&] { return joined.load(); }));
    joiner.join();
    tasks.restart();
    EXPECT_TRUE(waitUntil([&] { return ran == threads * each; }));
    EXPECT_EQ(database.rows("SELECT count(*) FROM t"), QStringList(QString::number(threads * each)));
    EXPECT_GT(stops, 0);
}

TEST(TaskManager, OutlivesWhateverATaskThrowsAndLogsWhatNobodyIsToldOf) {
    TestDatabase database;
    auto& connection = database.tasks->mainDatabase();
    std::recursive_mutex mutex;
    const auto slot = std::make_shared<QSqlQueryModel*>(nullptr);
    const auto plan = [](const std::function<void()>& fail) {
        return [fail](const auto&) {
            fail();
            return QStringList();
        };
    };
    const auto standard = [] {
        throw std::runtime_error("standard");
    };
    const auto number = [] {
        throw 1;
    };
    const QList<QString> partly{"CREATE TABLE a (x)", "SELECT x", "CREATE TABLE b (x)"};
    const std::pair<TaskPointer, QString> cases[] = {
        {std::make_shared<SimpleTask>(standard), "standard"},
        {std::make_shared<SimpleTask>(number), "Unknown exception caught"},
        {std::make_shared<EditTask>(reading({}), plan(standard), connection), "standard"},
        {std::make_shared<EditTask>(reading("SELECT x"), plan([] {}), connection), "no such column"},
        {std::make_shared<QueryTask>("SELECT x", connection), "no such column"},
        {std::make_shared<MultistatementTask>(partly, connection), "no such column"},
        {std::make_shared<SqlQueryModelTask>("SELECT x", mutex, slot, connection), "no such column"},
    };
    int index = 0;
    for (const auto& [task, text] : cases) {
        SCOPED_TRACE(index++);
        LogCapture messages;
        database.tasks->addTask(task);
        EXPECT_EQ(database.rows("SELECT 1"), QStringList("1"));
        EXPECT_EQ(messages.messages().filter("C: ").filter(text).size(), 1);
        EXPECT_EQ(messages.count("could not run tasks"), 0);
    }
    EXPECT_EQ(database.rows("SELECT name FROM sqlite_master"), QStringList("a"));
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
