#include "app/errors/ErrorHandler.h"
#include "database/DatabaseInitStatements.h"
#include "database/SimpleTask.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

const QString tablesSql = "SELECT count(*) FROM sqlite_master WHERE type='table'";
const QString statusSql =
    "SELECT (SELECT count(*) FROM arrangement_status), (SELECT count(*) FROM lyrics_status), "
    "(SELECT count(*) FROM recording_status), (SELECT count(*) FROM mix_master_status)";

void expectWhole(TestDatabase& database) {
    EXPECT_TRUE(database.initialise());
    EXPECT_EQ(database.rows("SELECT * FROM details"), QStringList("v1.2"));
    EXPECT_EQ(database.rows(tablesSql), QStringList("16"));
    EXPECT_EQ(database.rows(statusSql), QStringList("7|5|6|6"));
    EXPECT_TRUE(database.rootRows("SELECT root_search_path FROM root_project_search_paths").isEmpty());
}

} // namespace

TEST(DatabaseInit, MakesEachDatabaseOnce) {
    TestDatabase database;
    expectWhole(database);
    EXPECT_EQ(database.rows("PRAGMA journal_mode"), QStringList("wal"));
    EXPECT_EQ(database.rows("PRAGMA synchronous"), QStringList("1"));
    EXPECT_EQ(
        database.rows("EXPLAIN QUERY PLAN SELECT project_id FROM projects WHERE SUFID='1-2'")
            .filter("projects_by_sufid")
            .size(),
        1);

    database.rows("UPDATE lyrics_status SET name='Mine' WHERE lyrics_status_id=0");
    database.rows("INSERT INTO tags VALUES(1, 'kept')");
    for (const bool lacksCompanion : {false, true}) {
        SCOPED_TRACE(lacksCompanion);
        database.reopen();
        ASSERT_TRUE(!lacksCompanion || QFile::resize(database.rootPathsPath(), 0));
        expectWhole(database);
        EXPECT_EQ(
            database.rows("SELECT name FROM lyrics_status WHERE lyrics_status_id=0"), QStringList("Mine"));
        EXPECT_EQ(database.rows("SELECT name FROM tags"), QStringList("kept"));
    }
}

TEST(DatabaseInit, EndsWellAfterALossOrAKillBetweenAnyTwoSteps) {
    TestDatabase lost;
    for (const auto& path : {QString(), lost.mainPath(), lost.rootPathsPath()}) {
        SCOPED_TRACE(path.toStdString());
        expectWhole(lost);
        lost.reopen();
        QFile::remove(path);
        expectWhole(lost);
        lost.reopen();
    }

    // Ending the manager drops the steps that follow. With the other file there, the main one is all that is
    // lost.
    for (const bool onlyMainLost : {false, true}) {
        bool ended = false;
        for (int steps = 0; !ended; ++steps) {
            SCOPED_TRACE(testing::Message() << onlyMainLost << ' ' << steps);
            ASSERT_LT(steps, 100);
            TestDatabase database;
            if (onlyMainLost) {
                ASSERT_TRUE(database.initialise());
                database.reopen();
                QFile::remove(database.mainPath());
            }
            LogCapture messages;
            initDatabase(
                *database.tasks, [&] { ended = true; }, [] {});
            ASSERT_TRUE(waitUntil([&] { return ended || messages.count("::exec() -> ") > steps; }));
            database.reopen();
            expectWhole(database);
        }
    }

    // Killed inside a step: some tables are there, and the file may be one of a few pages without any.
    for (qsizetype tables = 0; tables <= 15; ++tables) {
        SCOPED_TRACE(tables);
        TestDatabase database;
        database.rootRows(DatabaseInitStatements(currentDatabaseVersion).initRootPathsSQL());
        const auto statements = DatabaseInitStatements(currentDatabaseVersion).initMainSQL();
        for (qsizetype i = 0; i < tables; ++i)
            database.rows(statements[i]);
        database.reopen();
        LogCapture messages;
        expectWhole(database);
    }
}

TEST(DatabaseInit, TellsTheUserOnceWhichFileCannotBeOpened) {
    QList<ErrorHandler::ErrorDetails> alerts;
    ErrorHandler::instance().setPresenter([&](const auto& details) { alerts.append(details); });
    LogCapture messages;
    TestDatabase database;
    ASSERT_TRUE(QDir().mkpath(database.rootPathsPath()));
    initDatabase(
        *database.tasks, [] {}, [] {});
    ASSERT_TRUE(waitUntil([&] { return !alerts.isEmpty(); }));
    database.tasks->addTask(std::make_shared<SimpleTask>([] {}));
    ASSERT_TRUE(waitUntil([&] { return messages.count("Could not open root paths database!") == 2; }));

    ASSERT_TRUE(QDir().rmdir(database.rootPathsPath()));
    EXPECT_EQ(database.rows("SELECT count(*) FROM details"), QStringList("1"));
    database.reopen();
    ASSERT_TRUE(QFile::rename(database.mainPath(), database.mainPath() + ".away"));
    ASSERT_TRUE(QDir().mkpath(database.mainPath()));
    database.tasks->addTask(std::make_shared<SimpleTask>([] {}));
    ASSERT_TRUE(waitUntil([&] { return alerts.size() == 2; }));
    EXPECT_TRUE(alerts[0].message.contains(database.rootPathsPath())) << alerts[0].message.toStdString();
    EXPECT_TRUE(alerts[1].message.contains(database.mainPath())) << alerts[1].message.toStdString();
    EXPECT_TRUE(alerts[0].isCritical());
    ErrorHandler::instance().setPresenter({});
}

TEST(DatabaseInit, BringsEveryVersionToItsOwnAndWarnsOfDoublesAndNewerOnes) {
    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    database.rows("UPDATE details SET database_version='v1.3'");
    database.rows("INSERT INTO details VALUES('v9.9')");
    database.rows("DROP TABLE tags");
    database.rows("ALTER TABLE projects ADD COLUMN from_the_future TEXT DEFAULT 'kept'");
    database.reopen();
    LogCapture messages;
    ASSERT_TRUE(database.initialise());
    EXPECT_EQ(database.rows("SELECT * FROM details"), QStringList({"v1.2", "v1.2"}));
    EXPECT_EQ(database.rows(tablesSql), QStringList("16"));
    EXPECT_EQ(messages.count("W: Multiple entries in details table for database_version! Count:  2"), 1);
    EXPECT_EQ(messages.count("\"v1.3\""), 1);
    EXPECT_EQ(database.rows("SELECT count(from_the_future) FROM projects"), QStringList("0"));
}

TEST(DatabaseInit, LeavesACheckpointedFileBehindWhenItRunsOutOfTasks) {
    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    database.rows("INSERT INTO tags VALUES(1, 'written')");
    // The main file alone, as after a loss of the log.
    const QString copy = database.folder.path() + "/copy.db";
    const auto holdsTag = [&] {
        QFile::remove(copy);
        if (!QFile::copy(database.mainPath(), copy))
            return false;
        QFile file(copy);
        return file.open(QIODevice::ReadOnly) && file.readAll().contains("written");
    };
    EXPECT_TRUE(waitUntil(holdsTag));
}
