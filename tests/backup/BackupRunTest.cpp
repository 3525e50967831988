#include "backup/BackupRun.h"

#include "BackupProfile.h"
#include "backup/BackupExport.h"
#include "backup/BackupImport.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <optional>

using namespace Stemhaven;

namespace {

const QDateTime now(QDate(2026, 3, 9), QTime(17, 4, 5));

/// A running program with a project "old", and a backup "new" of an older version.
class BackupRunTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(database.initialise());
        database.rows(BackupProfile::project("old"));
        BackupProfile::write(live().settings, "[General]\nname=old\n");
    }

    LiveFiles live() const {
        return {database.mainPath(), database.rootPathsPath(), database.folder.filePath("Stemhaven.conf")};
    }

    QString makeBackup(const QStringList& changes) const {
        other.fill("new");
        const QStringList older{"UPDATE details SET database_version='v1.0'", "DROP TABLE project_tag_map"};
        BackupProfile::run(other.live().mainDatabase, older + changes);
        return BackupExport(other.live(), other.there(), now).run({}).archive;
    }

    BackupRun::Work importOf(const QString& archive) const {
        return [archive, live = live()](const auto& observer, const auto& initialise) {
            return BackupImport(live, archive, now).run(observer, initialise);
        };
    }

    BackupResult run(const BackupRun::Work& work) const {
        BackupRun run(*database.tasks);
        QObject::connect(&run, &BackupRun::tasksStopped, &run, [&] { run.start(work); });
        std::optional<BackupResult> result;
        QObject::connect(&run, &BackupRun::finished, &run, [&](const auto& outcome) { result = outcome; });
        run.stopTasks();
        run.stopTasks();
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result.value_or(BackupResult());
    }

    QString names() {
        return database.rows("SELECT name FROM projects").join(',') +
            database.rows("SELECT database_version FROM details").join(',') +
            database.rows("SELECT COUNT(*) FROM project_tag_map").join(',') +
            database.rootRows("SELECT * FROM root_project_search_paths").join(',') +
            BackupProfile::read(live().settings);
    }

    BackupProfile other;
    TestDatabase database;
    const LogCapture log;
};

} // namespace

TEST_F(BackupRunTest, BringsAnOlderCatalogueUpToDateOrTakesItBack) {
    const QString before = names();
    const auto failed = run(importOf(makeBackup({"DROP TABLE genres", "CREATE INDEX genres ON tags(name)"})));
    EXPECT_EQ(
        failed.message, "Could not bring the database from backup up to date. Stopping backup import...");
    EXPECT_EQ(names(), before);

    QDir(other.there()).removeRecursively();
    QDir().mkdir(other.there());
    const auto result = run(importOf(makeBackup({})));
    EXPECT_TRUE(result.isFinished()) << result.message.toStdString();
    EXPECT_FALSE(result.needsInitialisation);
    EXPECT_EQ(names(), "newv1.20/new[General]\nname=new\n");
    EXPECT_EQ(QDir(QFileInfo(live().mainDatabase).path()).entryList({"*.last*", "*.journal"}), QStringList());
}

TEST_F(BackupRunTest, LeavesTheManagerRunningWhereverItEnds) {
    const QString archive = makeBackup({});
    const QString before = names();
    for (const int last : {0, 1, 2, 3}) {
        SCOPED_TRACE(last);
        auto run = std::make_unique<BackupRun>(*database.tasks);
        bool isStopped = false;
        std::atomic<bool> isWorking = false;
        QObject::connect(run.get(), &BackupRun::tasksStopped, run.get(), [&] { isStopped = true; });
        run->stopTasks();
        ASSERT_TRUE(waitUntil([&] { return last == 0 || isStopped; }));
        if (last == 1)
            run->giveUp();
        if (last == 2) {
            run->start([&](const auto& observer, const auto&) {
                isWorking = true;
                while (observer({}))
                    QThread::usleep(200);
                return BackupResult();
            });
            ASSERT_TRUE(waitUntil([&] { return isWorking.load(); }));
        }
        // Cancelled before its first step, or with the import in the midst of it.
        if (last == 3)
            run->start(importOf(archive));
        run.reset();
        EXPECT_EQ(names(), before);
    }
}
