#include "backup/BackupImport.h"

#include "BackupProfile.h"
#include "backup/BackupExport.h"
#include "backup/DatabaseCopies.h"
#include "backup/StartCheck.h"
#include "support/LogCapture.h"

#include <QSettings>

#include <gtest/gtest.h>

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

    /// An archive of a folder with the three files, after somebody has been at them in a shell.
    void pack(const QString& change, const QString& members = ".") const {
        const QTemporaryDir folder;
        const QString path = folder.path();
        const auto live = profile.live().names();
        BackupProfile::fill({path + '/' + live[0], path + '/' + live[1], path + '/' + live[2]}, "packed");
        const QString command = "cd '%1' && %2 && tar -P -czf '%3' %4";
        ASSERT_EQ(std::system(qPrintable(command.arg(path, change, archive, members))), 0);
    }

    void fillAnew() {
        profile.fill("old");
        before = profile.state();
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
    const char* newer = "Backup database version is newer than the current db version that is supported.";
    const char* unreadable = "Could not open database from backup. Stopping backup import...";
    const char* noVersion = "Could not get database version from backup. Stopping backup import...";
    const char* notMonitored = "Could not open monitored paths database from backup.";
    const char* noSettings = "The settings file of the backup is not one. Stopping backup import...";
    const char* missing = "Required file not found: stemhaven-main.db";
    const char* somethingElse = "The backup holds something other than the three files of a backup: ";

    struct Case {
        const char* message;
        const char* change;
        const char* members = ".";
    };

    const Case cases[] = {
        {newer, R"(sqlite3 stemhaven-main.db "UPDATE details SET database_version='v1.3'")"},
        {noVersion, "sqlite3 stemhaven-main.db 'DROP TABLE details'"},
        {noVersion, "sqlite3 stemhaven-main.db 'DROP TABLE projects'"},
        {noVersion, "truncate -s 0 stemhaven-main.db"},
        {unreadable, "truncate -s 20000 stemhaven-main.db"},
        {notMonitored, "yes | head -c 9000 >stemhaven-root-paths.db"},
        {notMonitored, "truncate -s 0 stemhaven-root-paths.db"},
        {noSettings, "head -c 9000 /dev/zero >Stemhaven.conf"},
        {noSettings, "printf 'Dear friend,\nhow are you?\n' >Stemhaven.conf"},
        {missing, "rm stemhaven-main.db"},
        {missing, "true", "-T /dev/null"},
        {somethingElse, "touch stemhaven-main.db-wal"},
        {somethingElse, "mkdir Backups"},
        {somethingElse, "ln -sf /etc/passwd Stemhaven.conf"},
        {somethingElse, "ln -f stemhaven-main.db Stemhaven.conf"},
        {somethingElse, "rm Stemhaven.conf && mkfifo Stemhaven.conf"},
        {somethingElse, "touch ../climbed", ". --transform s,./climbed,../climbed, ../climbed"},
        {somethingElse, "true", ". /etc/hostname"},
        {somethingElse, "true", "./Stemhaven.conf ."},
    };
    for (const auto& test : cases) {
        pack(test.change, test.members);
        const auto result = importArchive();
        EXPECT_EQ(result.outcome, BackupResult::Outcome::Failed) << test.change;
        EXPECT_TRUE(result.message.startsWith(test.message)) << test.change << result.message.toStdString();
        expectUntouched(test.change);
        EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
    }
    for (const QByteArray contents : {"", "no archive"}) {
        BackupProfile::write(archive, contents);
        EXPECT_EQ(importArchive().message, "Decompression failed! Verify backup integrity.");
        expectUntouched(contents.toStdString());
    }
}

TEST_F(ImportTest, UnpacksNoMoreThanThereIsRoomFor) {
    pack("truncate -s 17M Stemhaven.conf");
    int steps = 0;
    const auto result = importArchive([&](const BackupProgress& progress) {
        steps = progress.step;
        return true;
    });
    EXPECT_EQ(result.message, "The settings file of the backup is not one. Stopping backup import...");
    EXPECT_EQ(steps, 1) << "before it is unpacked";

    pack("true");
    const BackupContents contents(TarArchive(archive), profile.there() + "/none", profile.live());
    constexpr qint64 enough = 1 << 20;
    EXPECT_NO_THROW(contents.checkSize(enough));
    EXPECT_THROW(contents.checkSize(20'000), BackupError);
    expectUntouched("size");
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
        fillAnew();
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

    for (const QString& file : {folder + "x.hvbk", folder})
        EXPECT_FALSE(BackupImport(profile.live(), file, now).run({}).isFinished());
    EXPECT_FALSE(BackupImport::hasNameOfBackup(folder));
    expectUntouched("names");
}

TEST(BackupImport, ThatFailsWhileReplacingPutsAllBack) {
    int copyStep = firstSwapStep + 1;
    for (const auto file : {&LiveFiles::mainDatabase, &LiveFiles::rootPathsDatabase, &LiveFiles::settings}) {
        for (const bool canBeRenamed : {false, true}) {
            SCOPED_TRACE(testing::Message() << "step " << copyStep << ", renamed " << canBeRenamed);
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
            const auto disturb = [&](const BackupProgress& progress) {
                if (progress.step == (canBeRenamed ? copyStep : copyStep - 1))
                    BackupProfile::write(live.*file + (canBeRenamed ? "" : "-journal"), "in the way");
                return true;
            };
            const auto result = BackupImport(live, archive, now).run(disturb);
            EXPECT_TRUE(result.message.startsWith(canBeRenamed ? "Could not copy" : "Could not rename"));
            EXPECT_EQ(BackupProfile::state(live), state) << result.message.toStdString();
            EXPECT_EQ(profile.names(), names) << result.message.toStdString();
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
        fillAnew();

        inKilledProcess([&] { importArchive(killedAt(last)); });
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
        fillAnew();
    }
}

TEST_F(ImportTest, IntoANewProfileNeedsNoFilesAndLeavesNoneWhereItFails) {
    for (const bool hasDatabases : {true, false}) {
        for (const int step : {0, firstSwapStep + 1, commitStep, lastStep}) {
            profile.fill("old");
            for (const auto& file : profile.live().all()) {
                if (!hasDatabases || file == profile.live().settings)
                    QFile::remove(file);
            }
            before = profile.state();
            inKilledProcess([&] { importArchive(killedAt(step)); });
            checkAtStart(profile.live(), now);
            const bool isNew = step == 0 || step > commitStep;
            EXPECT_EQ(profile.state(), isNew ? imported : before) << step;
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
    BackupProfile::write(live.rootPathsDatabase, "");
    BackupProfile::write(live.rootPathsDatabase + ".last", "precious");
    BackupProfile::write(live.rootPathsDatabase + ".last-1", "precious, too");
    EXPECT_TRUE(importArchive().isFinished());
    EXPECT_EQ(profile.state(), imported);
    EXPECT_EQ(BackupProfile::read(live.rootPathsDatabase + ".last-1"), "precious, too");
    EXPECT_EQ(BackupProfile::read(live.rootPathsDatabase + ".last-2"), "precious");
    QFile::remove(live.rootPathsDatabase + ".last-1");
    QFile::remove(live.rootPathsDatabase + ".last-2");

    // The log of another program that was killed, which SQLite would apply to the imported database.
    for (const bool fails : {true, false}) {
        profile.fill("old");
        importArchive([&](const BackupProgress& progress) {
            if (progress.step == firstSwapStep - 1)
                profile.leaveInLog("late");
            if (fails && progress.step == firstSwapStep + 1)
                BackupProfile::write(live.mainDatabase, "in the way");
            return true;
        });
        EXPECT_EQ(log.count("Removed"), 1);
        EXPECT_EQ(
            BackupProfile::projects(live.mainDatabase),
            fails ? (QStringList{"old", "late"}) : QStringList{"new"});
        EXPECT_EQ(alone(), QStringList());
    }
}

TEST_F(ImportTest, AStartGetsPastFilesThatStayWhereTheyAre) {
    // One that is in nobody's way must not bar the start.
    const QString main = profile.live().mainDatabase;
    inKilledProcess([&] { importArchive(killedAt(lastStep)); });
    QFile::remove(main + ".last");
    ASSERT_TRUE(QDir().mkpath(main + ".last/folder"));
    EXPECT_TRUE(checkAtStart(profile.live(), now).mayStart());
    EXPECT_EQ(profile.state(), imported);
    QDir(main + ".last").removeRecursively();

    // The journal of an import that was taken back, when the program has gone on and been killed.
    fillAnew();
    const QString journal = profile.live().profileFolder() + "/stemhaven-import.journal";
    inKilledProcess([&] { importArchive(killedAt(commitStep)); });
    const QByteArray kept = BackupProfile::read(journal);
    checkAtStart(profile.live(), now);
    EXPECT_EQ(profile.state(), before);
    profile.leaveInLog("late");
    BackupProfile::write(journal, kept);
    checkAtStart(profile.live(), now);
    EXPECT_EQ(BackupProfile::projects(main), (QStringList{"old", "late"}));
    EXPECT_FALSE(QFile::exists(journal));
}

TEST_F(ImportTest, CopiesTheDatabasesAsideFirstAndSaysWhetherTheSchemaIsOld) {
    pack(R"(sqlite3 stemhaven-main.db "UPDATE details SET database_version='v1.0'")");
    const auto result = importArchive();
    ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
    EXPECT_TRUE(result.needsInitialisation);
    EXPECT_EQ(result.message, "Finished importing backup!");
    const auto copies = DatabaseCopies(profile.live()).all();
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(copies[0].made, now.toUTC());
    EXPECT_EQ(BackupProfile::projects(copies[0].folder + "/stemhaven-main.db"), QStringList("old"));

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
