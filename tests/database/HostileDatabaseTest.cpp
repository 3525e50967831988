#include "database/DatabaseFile.h"
#include "database/EditTask.h"
#include "database/SimpleTask.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <semaphore>

using namespace Stemhaven;

namespace {

const QString endless =
    "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT count(*) FROM c";
const QString project = "INSERT INTO projects(filepath, filename, bpm, number_of_tracks, sample_rate, notes) "
                        "VALUES('/a/', 'S.logicx', 1, 1, 1, %1)";

} // namespace

TEST(HostileDatabase, IsToldByWhatTheProgramNeverMakes) {
    using Condition = DatabaseFile::Condition;

    struct Case {
        const char* part;
        QStringList statements;
    };

    const Case cases[] = {
        {"", {"CREATE TABLE other (a DEFAULT 'x')", "CREATE VIEW mine AS SELECT 1", project.arg("'fine'")}},
        {"", {"CREATE INDEX mine ON projects(name)", project.arg("zeroblob(16000000)")}},
        {"view \"Projects\"", {"DROP TABLE projects", "CREATE VIEW Projects AS " + endless}},
        {"trigger \"t\\n\\u001b\"",
         {"CREATE TRIGGER \"t\n\x1b\" AFTER UPDATE ON projects BEGIN DELETE FROM projects; END"}},
        {"virtual table \"tags\"", {"DROP TABLE tags", "CREATE VIRTUAL TABLE tags USING fts5(name)"}},
        {"check \"tags\"", {"DROP TABLE tags", "CREATE TABLE tags (tag_id, name, Check (length(name)>1))"}},
        {"column \"projects.big\"", {"ALTER TABLE projects ADD COLUMN big AS (hex(zeroblob(1000000)))"}},
        {"column \"genres.big\"", {"ALTER TABLE genres ADD COLUMN big DEFAULT '" + QString(65, 'x') + '\''}},
        {"index \"slow\"", {"CREATE INDEX slow ON projects(hex(name))"}},
        {"too large value \"projects\"", {project.arg("zeroblob(100000000)")}},
        {"too large value \"tags\"", {"INSERT INTO tags VALUES(1, hex(zeroblob(9000000)))"}},
    };
    for (const auto& [part, statements] : cases) {
        SCOPED_TRACE(part);
        TestDatabase database;
        ASSERT_TRUE(database.initialise());
        database.tasks->shutDown();
        ASSERT_EQ(outsideRows(database.mainPath(), statements), QStringList());
        DatabaseFile file(database.mainPath());
        const auto condition = file.check(DatabaseFile::Check::Quick);
        EXPECT_EQ(condition, *part == 0 ? Condition::Sound : Condition::Foreign);
        EXPECT_EQ(file.error(), part);
    }
}

TEST(HostileDatabase, ThatComesWhileTheProgramRunsIsHeldToItsLimits) {
    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    EXPECT_EQ(
        outsideRows(
            database.mainPath(), {"CREATE VIEW v AS SELECT 1", project.arg("hex(zeroblob(50000000))")}),
        QStringList());
    const LogCapture log;
    EXPECT_EQ(database.rows("SELECT * FROM v"), QStringList("error"));
    EXPECT_EQ(database.rows("SELECT notes FROM projects"), QStringList("error"));
    EXPECT_EQ(log.count("string or blob too big"), 1);
}

TEST(HostileDatabase, DoesNotHoldUpTheEndAndTheEditsAreWritten) {
    TestDatabase database;
    TaskManager& tasks = *database.tasks;
    database.rows("CREATE TABLE t (a)");
    const LogCapture log;
    std::binary_semaphore hasBegun(0);
    auto begun = std::make_shared<SimpleTask>([&] { hasBegun.release(); });
    tasks.addTask(begun);
    tasks.addTask(std::make_shared<QueryTask>(endless, tasks.mainDatabase()));
    // One that itself takes longer than others are waited for.
    const QString slow = "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT %1) "
                         "INSERT INTO t SELECT max(x) FROM c";
    for (const QString rounds : {"10", "3000000"}) {
        tasks.addTask(std::make_shared<EditTask>(
            [] { return QString(); }, [=](const auto&) { return QStringList(slow.arg(rounds)); },
            tasks.mainDatabase()));
    }
    hasBegun.acquire();
    QElapsedTimer time;
    time.start();
    tasks.shutDown();
    EXPECT_LT(time.elapsed(), 60'000);
    EXPECT_EQ(
        outsideRows(database.mainPath(), {"SELECT a FROM t ORDER BY a"}), QStringList({"10", "3000000"}));
    EXPECT_EQ(log.count("interrupted"), 1);
}

TEST(HostileDatabase, ThatAnotherProgramHoldsHoldsUpTheEndOnlyOnceAndEachLostEditIsTold) {
    TestDatabase database;
    TaskManager& tasks = *database.tasks;
    database.rows("CREATE TABLE t (a)");
    auto other = QSqlDatabase::addDatabase("QSQLITE", "other");
    other.setDatabaseName(database.mainPath());
    ASSERT_TRUE(other.open());
    QSqlQuery(other).exec("BEGIN IMMEDIATE");
    const LogCapture log;
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 10; ++i)
        tasks.addTask(std::make_shared<EditTask>(
            [] { return QString(); }, [](const auto&) { return QStringList("INSERT INTO t VALUES (1)"); },
            tasks.mainDatabase()));
    tasks.shutDown();
    // Each may wait for five seconds otherwise.
    EXPECT_LT(time.elapsed(), 20'000);
    EXPECT_EQ(log.count("an edit could not be saved"), 10);
    other.close();
    other = {};
    QSqlDatabase::removeDatabase("other");
}

TEST(HostileDatabase, ACheckAndACopyOfAFileEndWhenTheyAreGivenUp) {
    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    database.tasks->shutDown();
    ASSERT_EQ(
        outsideRows(
            database.mainPath(),
            {"WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT 200000) "
             "INSERT INTO tags SELECT x, x FROM c"}),
        QStringList());
    DatabaseFile file(database.mainPath());
    file.giveUpWhen([] { return true; });
    EXPECT_EQ(file.check(DatabaseFile::Check::Whole), DatabaseFile::Condition::Unknown);
    EXPECT_FALSE(file.copyTo(database.folder.filePath("copy.db")));
}
