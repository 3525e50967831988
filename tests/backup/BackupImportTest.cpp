#include "backup/BackupImport.h"

#include "BackupProfile.h"
#include "backup/BackupExport.h"
#include "backup/DatabaseCopies.h"
#include "backup/StartCheck.h"
#include "support/LogCapture.h"

#include <QSettings>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Stemhaven;

namespace {

const QDateTime now(QDate(2026, 3, 9), QTime(17, 4, 5));
constexpr int firstSwapStep = 7;
constexpr int commitStep = 13;
constexpr int lastStep = 16;

/// A profile with one state live, and another one in an archive "there".
class ImportTest : public testing::Test {
protected:
    ImportTest() {
        profile.fill("new");
        imported = profile.state();
        archive = BackupExport(profile.live(), profile.there(), now).run({}).archive;
        // The name of a folder that is to stay has the letters, too.
        QDir().mkdir(profile.there() + "/a.hvbk b");
        const QString elsewhere = profile.there() + "/a.hvbk b/mine.hvbk";
        QFile::rename(archive, elsewhere);
        archive = elsewhere;
        profile.fill("old");
        before = profile.state();
        names = profile.names();
    }

    BackupResult importArchive(const BackupObserver& observer = {}) const {
        return BackupImport(profile.live(), archive, now).run(observer);
    }

    void expectUntouched(const std::string& what) const {
        EXPECT_EQ(profile.state(), before) << what;
        EXPECT_EQ(profile.names(), names) << what;
        EXPECT_EQ(QDir(QFileInfo(archive).path()).entryList(BackupProfile::everything).size(), 1) << what;
    }

    /// An archive of a folder with the three files, after somebody has been at them.
    void pack(const std::function<void(const QString& folder)>& change, const QString& members = ".") const {
        const QTemporaryDir folder;
        const QString path = folder.path();
        const auto live = profile.live().names();
        BackupProfile::fill({path + '/' + live[0], path + '/' + live[1], path + '/' + live[2]}, "packed");
        change(path);
        const QString command = "tar -P -C '%1' -czf '%2' %3";
        ASSERT_EQ(std::system(qPrintable(command.arg(path, archive, members))), 0);
    }

    /// A project that a killed program has added, and not moved into the database file.
    void leaveInLog(const QString& project) const {
        const QString path = profile.live().mainDatabase;
        inKilledProcess([&] {
            auto database = QSqlDatabase::addDatabase("QSQLITE", "killed");
            database.setDatabaseName(path);
            database.open();
            QSqlQuery(database).exec(BackupProfile::project(project));
            _exit(0);
        });
        ASSERT_GT(QFileInfo(path + "-wal").size(), 0);
    }

    BackupProfile profile;
    QString archive;
    BackupProfile::State before;
    BackupProfile::State imported;
    std::string names;
    const LogCapture log;
};

} // namespace

TEST_F(ImportTest, RefusesWhatIsNoBackupBeforeAnythingIsTouched) {
    struct Case {
        const char* what;
        const char* message;
        std::function<void(const QString& folder)> change;
        QString members = ".";
    };

    const char* unreadable = "Could not open database from backup. Stopping backup import...";
    const char* noVersion = "Could not get database version from backup. Stopping backup import...";
    const char* notMonitored =
        "Could not open monitored paths database from backup. Stopping backup import...";
    const char* noSettings = "The settings file of the backup is not one. Stopping backup import...";
    const char* somethingElse = "The backup holds something other than the three files of a backup: ";
    const auto run = [](const QString& statement) {
        return [=](const QString& folder) {
            BackupProfile::run(folder + "/stemhaven-main.db", {statement});
        };
    };
    const auto write = [](const QString& name, const QByteArray& contents) {
        return [=](const QString& folder) {
            BackupProfile::write(folder + name, contents);
        };
    };
    const auto remove = [](const QString& name) {
        return [=](const QString& folder) {
            QFile::remove(folder + name);
        };
    };
    const auto replaceBy = [](const QString& name, int (*make)(const char*)) {
        return [=](const QString& folder) {
            QFile::remove(folder + name);
            EXPECT_EQ(make(QFile::encodeName(folder + name).constData()), 0);
        };
    };
    const Case cases[] = {
        {"newer version",
         "Backup database version is newer than the current db version that is supported. Try updating "
         "Stemhaven. Stopping backup import...",
         run("UPDATE details SET database_version='v1.3'")},
        {"no version", noVersion, run("DELETE FROM details")},
        {"no details", noVersion, run("DROP TABLE details")},
        {"no projects", noVersion, run("DROP TABLE projects")},
        {"text for a database", unreadable, write("/stemhaven-main.db", QByteArray(9000, 'x'))},
        {"empty database", noVersion, write("/stemhaven-main.db", "")},
        {"cut database", unreadable,
         [](const QString& folder) {
             QFile::resize(folder + "/stemhaven-main.db", 20'000);
         }},
        {"text for root paths", notMonitored, write("/stemhaven-root-paths.db", QByteArray(9000, 'x'))},
        {"empty root paths", notMonitored, write("/stemhaven-root-paths.db", "")},
        {"settings of noise", noSettings, write("/Stemhaven.conf", QByteArray(9000, '\0'))},
        {"settings of text", noSettings, write("/Stemhaven.conf", "Dear friend,\nhow are you?\n")},
        {"missing database", "Required file not found: stemhaven-main.db", remove("/stemhaven-main.db")},
        {"missing settings", "Required file not found: Stemhaven.conf", remove("/Stemhaven.conf")},
        {"extra file", somethingElse, write("/run.sh", "x")},
        {"log of the database", somethingElse, write("/stemhaven-main.db-wal", "x")},
        {"extra folder", somethingElse,
         [](const QString& folder) {
             QDir(folder).mkdir("Backups");
         }},
        {"link", somethingElse,
         replaceBy("/Stemhaven.conf", [](const char* path) { return symlink("/etc/passwd", path); })},
        {"pipe", somethingElse,
         replaceBy("/Stemhaven.conf", [](const char* path) { return mkfifo(path, 0600); })},
        {"device", somethingElse,
         replaceBy("/Stemhaven.conf", [](const char* path) { return mknod(path, S_IFCHR | 0600, 0x103); })},
        {"hard link", somethingElse,
         [](const QString& folder) {
             QFile::remove(folder + "/Stemhaven.conf");
             link(
                 QFile::encodeName(folder + "/stemhaven-main.db").constData(),
                 QFile::encodeName(folder + "/Stemhaven.conf").constData());
         }},
        {"climbing path", somethingElse, write("/../climbed", "x"),
         ". --transform s,./climbed,../climbed, ../climbed"},
        {"absolute path", somethingElse, write("/../climbed", "x"), ". /etc/hostname"},
        {"a file twice", somethingElse, [](const QString&) {}, "./Stemhaven.conf ."},
        {"nothing", "Required file not found: stemhaven-main.db", [](const QString&) {}, "-T /dev/null"},
    };
    for (const auto& test : cases) {
        pack(test.change, test.members);
        const auto result = importArchive();
        EXPECT_EQ(result.outcome, BackupResult::Outcome::Failed) << test.what;
        EXPECT_TRUE(result.message.startsWith(test.message)) << test.what << result.message.toStdString();
        expectUntouched(test.what);
        EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
    }
    const std::pair<QByteArray, const char*> notArchives[] = {
        {"", "Decompression failed! Verify backup integrity."},
        {"no archive", "Decompression failed! Verify backup integrity."}};
    for (const auto& [contents, message] : notArchives) {
        BackupProfile::write(archive, contents);
        const auto result = importArchive();
        EXPECT_EQ(result.message, message);
        EXPECT_EQ(result.title, "Error while importing backup. Decompression failed!");
        expectUntouched(contents.toStdString());
    }
}

TEST_F(ImportTest, TakesAnArchiveWithAChangedByteOnlyIfItStillHoldsTheSame) {
    const QByteArray whole = BackupProfile::read(archive);
    for (qsizetype cut : {whole.size() - 1, whole.size() / 2, qsizetype(20)}) {
        BackupProfile::write(archive, whole.left(cut));
        EXPECT_FALSE(importArchive().isFinished()) << cut;
        expectUntouched("cut");
    }
    constexpr int places = 24;
    for (int place = 0; place < places; ++place) {
        QByteArray changed = whole;
        const auto index = whole.size() * place / places;
        changed[index] = static_cast<char>(changed[index] ^ 0x10);
        BackupProfile::write(archive, changed);
        if (importArchive().isFinished())
            EXPECT_EQ(profile.state(), imported) << index;
        else
            expectUntouched("byte " + std::to_string(index));
        profile.fill("old");
        before = profile.state();
    }
}

TEST_F(ImportTest, RefusesPlacesThatItCannotUnpackInto) {
    const QString folder = archive.chopped(5);
    QDir().mkdir(folder);
    BackupProfile::write(folder + "/Stemhaven.conf", "mine");
    EXPECT_EQ(importArchive().message, "The folder " + folder + " exists already. Stopping backup import...");
    EXPECT_EQ(BackupProfile::read(folder + "/Stemhaven.conf"), "mine");
    EXPECT_EQ(profile.state(), before);
    QDir(folder).removeRecursively();

    const auto importOf = [&](const QString& file) {
        return BackupImport(profile.live(), file, now).run({});
    };
    const auto missing = importOf(folder + "x.hvbk");
    EXPECT_EQ(missing.message, "Could not find backup file: " + folder + "x.hvbk");
    EXPECT_EQ(missing.advice, "Verify the file path is correct and try again.");
    EXPECT_EQ(importOf(folder).message, "Not a valid Stemhaven backup!");
    EXPECT_FALSE(BackupImport::hasNameOfBackup(folder));
    expectUntouched("names");
}

TEST(BackupImport, ThatFailsWhileReplacingPutsAllBack) {
    struct Case {
        const char* renameFailure;
        const char* copyFailure;
        QString LiveFiles::*file;
    };

    const Case cases[] = {
        {"Could not rename main database. Stopping backup import...",
         "Could not copy main database from backup! Stopping backup import...", &LiveFiles::mainDatabase},
        {"Could not rename monitored paths database! Stopping backup import...",
         "Could not copy monitored paths database! Stopping backup import...", &LiveFiles::rootPathsDatabase},
        {"Could not rename last settings file. Stopping backup import...",
         "Could not copy settings from backup. Stopping backup import...", &LiveFiles::settings},
    };
    int copyStep = firstSwapStep + 1;
    for (const auto& [renameFailure, copyFailure, file] : cases) {
        for (const bool canBeRenamed : {false, true}) {
            BackupProfile profile;
            LiveFiles live = profile.live();
            // SQLite's journal has the longest of names then, and one that is set aside would have a longer
            // one.
            constexpr int longest = 247;
            if (!canBeRenamed)
                live.*file = QFileInfo(live.*file).path() + '/' + QString(longest, 'n');
            const LogCapture log;
            BackupProfile::fill(live, "new");
            const auto archive = BackupExport(live, profile.there(), now).run({}).archive;
            BackupProfile::fill(live, "old");
            const auto state = BackupProfile::state(live);
            const auto names = profile.names();
            const auto disturb = [&, step = copyStep, path = live.*file](const BackupProgress& progress) {
                if (canBeRenamed && progress.step == step)
                    BackupProfile::write(path, "in the way");
                else if (!canBeRenamed && progress.step == step - 1)
                    BackupProfile::write(path + "-journal", "in the way");
                return true;
            };
            const auto result = BackupImport(live, archive, now).run(disturb);
            EXPECT_EQ(result.message.toStdString(), canBeRenamed ? copyFailure : renameFailure);
            EXPECT_EQ(result.title, "Error importing backup");
            EXPECT_EQ(BackupProfile::state(live), state) << result.message.toStdString();
            EXPECT_EQ(profile.names(), names) << result.message.toStdString();
            EXPECT_EQ(log.count("Backup import failed. Reverting to last files if possible..."), 1);
        }
        copyStep += 2;
    }
}

TEST_F(ImportTest, ThatIsCancelledOrKilledIsOldOrNewAndNeverAMixture) {
    const QByteArray contents = BackupProfile::read(archive);
    for (int last = 1; last <= lastStep + 1; ++last) {
        const auto result =
            importArchive([&](const BackupProgress& progress) { return progress.step < last; });
        EXPECT_EQ(result.isFinished(), last >= firstSwapStep) << last;
        if (result.isFinished())
            EXPECT_EQ(profile.state(), imported);
        else
            expectUntouched("cancelled");
        profile.fill("old");
        before = profile.state();

        inKilledProcess([&] {
            importArchive([&](const BackupProgress& progress) {
                if (progress.step == last)
                    _exit(0);
                return true;
            });
        });
        const bool isNew = last > commitStep;
        const QString main = profile.live().mainDatabase;
        // The next start may be killed as well, after it has dealt with the first file, or in the midst of
        // that.
        if (QFile::exists(main + ".last") && last % 2 == 0) {
            QFile::remove(isNew ? main + ".last" : main);
            if (last % 4 == 0)
                QFile::rename(main + ".last", main);
        }
        const auto report = checkAtStart(profile.live(), now);
        EXPECT_NE(report.import, FileSwap::Repair::Failed);
        EXPECT_FALSE(report.isRemarkable()) << last;
        EXPECT_EQ(profile.state(), isNew ? imported : before) << last;
        EXPECT_EQ(profile.names(), names) << last;
        EXPECT_EQ(BackupProfile::read(archive), contents) << last;
        profile.fill("old");
        before = profile.state();
    }
}

TEST_F(ImportTest, IntoANewProfileNeedsNoFilesAndLeavesNoneWhereItFails) {
    for (const bool hasDatabases : {true, false}) {
        for (const int killedAt : {0, firstSwapStep + 1, commitStep, lastStep}) {
            profile.fill("old");
            for (const auto& file : profile.live().all()) {
                if (!hasDatabases || file == profile.live().settings)
                    QFile::remove(file);
            }
            before = profile.state();
            inKilledProcess([&] {
                importArchive([&](const BackupProgress& progress) {
                    if (progress.step == killedAt)
                        _exit(0);
                    return true;
                });
            });
            checkAtStart(profile.live(), now);
            const bool isNew = killedAt == 0 || killedAt > commitStep;
            EXPECT_EQ(profile.state(), isNew ? imported : before) << killedAt;
        }
    }
}

TEST_F(ImportTest, GetsPastWhatEarlierTimesLeft) {
    const auto live = profile.live();
    const auto alone = [&] {
        return QDir(live.profileFolder()).entryList({"*.last*", "*-wal*"}, QDir::Files);
    };
    // A ".last" that nobody needs, and one that may be all that is left of a database.
    BackupProfile::write(live.mainDatabase + ".last", "stale");
    EXPECT_TRUE(importArchive().isFinished());
    EXPECT_EQ(profile.state(), imported);
    EXPECT_EQ(alone(), QStringList());
    for (const QByteArray& contents : {QByteArray("precious"), QByteArray("precious, too")}) {
        BackupProfile::write(live.rootPathsDatabase, "");
        BackupProfile::write(live.rootPathsDatabase + ".last", contents);
        EXPECT_TRUE(importArchive().isFinished());
        EXPECT_EQ(profile.state(), imported);
    }
    EXPECT_EQ(BackupProfile::read(live.rootPathsDatabase + ".last-1"), "precious");
    EXPECT_EQ(BackupProfile::read(live.rootPathsDatabase + ".last-2"), "precious, too");
    QFile::remove(live.rootPathsDatabase + ".last-1");
    QFile::remove(live.rootPathsDatabase + ".last-2");

    // The log of another program that was killed, which SQLite would apply to the imported database.
    for (const bool fails : {true, false}) {
        profile.fill("old");
        importArchive([&](const BackupProgress& progress) {
            if (progress.step == firstSwapStep - 1)
                leaveInLog("late");
            if (fails && progress.step == firstSwapStep + 1)
                BackupProfile::write(live.mainDatabase, "in the way");
            return true;
        });
        EXPECT_EQ(log.count("Removed"), 1);
        const auto found = BackupProfile::run(live.mainDatabase, {"SELECT name FROM projects"});
        EXPECT_EQ(found, fails ? (QStringList{"old", "late"}) : QStringList{"new"});
        EXPECT_EQ(alone(), QStringList());
    }
}

TEST_F(ImportTest, CopiesTheDatabasesAsideFirstAndSaysWhetherTheSchemaIsOld) {
    pack([](const QString& folder) {
        BackupProfile::run(folder + "/stemhaven-main.db", {"UPDATE details SET database_version='v1.0'"});
    });
    const auto result = importArchive();
    ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
    EXPECT_TRUE(result.needsInitialisation);
    EXPECT_EQ(result.message, "Finished importing backup!");
    const auto copies = DatabaseCopies(profile.live()).all();
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(copies[0].made, now.toUTC());
    EXPECT_EQ(
        BackupProfile::run(copies[0].folder + "/stemhaven-main.db", {"SELECT name FROM projects"}),
        QStringList("old"));

    // The way out of a damaged database, which is kept as it is.
    BackupProfile::write(profile.live().mainDatabase, QByteArray(9000, 'x'));
    EXPECT_TRUE(importArchive().isFinished());
    const auto damaged = QDir(profile.live().profileFolder()).entryList({"*.damaged-*"});
    ASSERT_EQ(damaged.size(), 1);
    EXPECT_EQ(BackupProfile::read(profile.live().profileFolder() + '/' + damaged[0]), QByteArray(9000, 'x'));
}

TEST(BackupImport, NeitherLosesSettingsToTheFileNorMixesThemIn) {
    // Of the process, since only those are shared by all objects.
    BackupProfile profile;
    LiveFiles live = profile.live();
    live.settings = QSettings().fileName();
    const LogCapture log;
    BackupProfile::fill(live, "any");
    QSettings settings;
    settings.sync();
    settings.setValue("theme", "exported, not yet written");
    const auto result = BackupExport(live, profile.there(), now).run({});
    ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
    settings.setValue("theme", "later");
    settings.setValue("more", "of later");
    ASSERT_TRUE(BackupImport(live, result.archive, now).run({}).isFinished());
    EXPECT_EQ(QSettings().value("theme"), "exported, not yet written");
    settings.setValue("other", 1);
    settings.sync();
    EXPECT_EQ(settings.value("theme"), "exported, not yet written");
    EXPECT_FALSE(settings.contains("more"));
    settings.clear();
}
