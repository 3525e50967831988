#include "backup/BackupExport.h"

#include "BackupProfile.h"
#include "backup/BackupImport.h"
#include "backup/StartCheck.h"
#include "support/FakeCommand.h"
#include "support/LogCapture.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

using namespace Stemhaven;

namespace {

const QDateTime now(QDate(2026, 3, 9), QTime(17, 4, 5));
const QString name = "Stemhaven-Backup-03.09.26-17.04.05";

BackupResult
exportTo(const BackupProfile& profile, const QString& folder, const BackupObserver& observer = {}) {
    return BackupExport(profile.live(), folder, now).run(observer);
}

/// Makes no file larger than that, in this process and its children, while it lives.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit small = m_before;
        small.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &small);
    }

    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_onLimit);
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit m_before = {};
    void (*m_onLimit)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace

TEST(BackupExport, GoesIntoFoldersOfAnyNameAndComesBackFromThere) {
    for (const QString folder :
         {"plain", "it's a \"song\"", "$(touch ran)`touch ran`;touch ran", "tar: tar.hvbk", "-x", "a\\b\nc",
          "Stück.hvbk"}) {
        BackupProfile profile;
        const QString destination = profile.there() + '/' + folder;
        ASSERT_TRUE(QDir().mkdir(destination));
        profile.fill("first");
        const auto first = profile.state();
        QList<int> steps;
        int announced = 0;
        LogCapture log;
        const auto result = exportTo(profile, destination, [&](const BackupProgress& progress) {
            steps.append(progress.step);
            announced = progress.steps;
            return true;
        });
        ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
        EXPECT_EQ(result.message, "Finished exporting backup!");
        EXPECT_EQ(result.archive, destination + '/' + name + ".hvbk");
        EXPECT_EQ(steps.size(), announced);
        EXPECT_EQ(
            log.messages().back(),
            "I: Backup export: Finished successfully. Backup written to: " + result.archive);
        EXPECT_EQ(QDir(destination).entryList(BackupProfile::everything), QStringList(name + ".hvbk"));
        EXPECT_FALSE(QFile::exists("ran"));

        QProcess tar;
        tar.start("tar", {"-tf", result.archive});
        tar.waitForFinished();
        auto members = QString::fromUtf8(tar.readAll()).split('\n', Qt::SkipEmptyParts);
        members.sort();
        EXPECT_EQ(
            members,
            (QStringList{"./", "./Stemhaven.conf", "./stemhaven-main.db", "./stemhaven-root-paths.db"}));

        profile.fill("second");
        EXPECT_NE(profile.state(), first);
        const auto back = BackupImport(profile.live(), result.archive, now).run({});
        EXPECT_TRUE(back.isFinished()) << back.message.toStdString();
        EXPECT_FALSE(back.needsInitialisation);
        EXPECT_EQ(profile.state(), first) << folder.toStdString();
        EXPECT_EQ(QDir(destination).entryList(BackupProfile::everything), QStringList(name + ".hvbk"));
    }
}

TEST(BackupExport, HoldsWhatAKilledProgramHasNotMovedIntoTheDatabaseFile) {
    BackupProfile profile;
    profile.fill("first");
    inKilledProcess([&] {
        auto database = QSqlDatabase::addDatabase("QSQLITE", "killed");
        database.setDatabaseName(profile.live().mainDatabase);
        database.open();
        QSqlQuery(database).exec(BackupProfile::project("late"));
        _exit(0);
    });
    ASSERT_GT(QFileInfo(profile.live().mainDatabase + "-wal").size(), 0);
    const auto result = exportTo(profile, profile.there());
    ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
    profile.fill("second");
    ASSERT_TRUE(BackupImport(profile.live(), result.archive, now).run({}).isFinished());
    EXPECT_EQ(
        BackupProfile::run(profile.live().mainDatabase, {"SELECT name FROM projects"}),
        (QStringList{"first", "late"}));
}

TEST(BackupExport, OfAProgramWithoutSettingsFileCanBeImported) {
    BackupProfile profile;
    profile.fill("first");
    QFile::remove(profile.live().settings);
    const auto result = exportTo(profile, profile.there());
    ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
    EXPECT_FALSE(QFile::exists(profile.live().settings));
    profile.fill("second");
    EXPECT_TRUE(BackupImport(profile.live(), result.archive, now).run({}).isFinished());
    EXPECT_EQ(BackupProfile::read(profile.live().settings), QByteArray());
}

TEST(BackupExport, ThatFailsLeavesNothingBehindAndWhatWasThereAlone) {
    struct Case {
        const char* what;
        const char* message;
        std::function<QString(const BackupProfile&)> prepare;
        /// Called before each step.
        std::function<void(const BackupProfile&, int)> disturb;
    };

    const char* noFolder = "Could not create backup folder!";
    const char* notCompressed = "Error occurred while exporting backup. Compression failed!";
    const auto there = [](const BackupProfile& profile) {
        return profile.there();
    };
    const auto nothing = [](const BackupProfile&, int) {
    };
    constexpr int settingsStep = 4;
    constexpr int compressing = 5;
    constexpr int readingBack = 6;
    const Case cases[] = {
        {"destination missing", noFolder,
         [](const BackupProfile& profile) { return profile.folder() + "/none"; }, nothing},
        {"destination is a file", noFolder,
         [](const BackupProfile& profile) { return profile.live().settings; }, nothing},
        {"destination read-only", noFolder, [](const BackupProfile&) { return QString("/proc"); }, nothing},
        {"folder of the name", noFolder,
         [](const BackupProfile& profile) {
             QDir(profile.there()).mkdir(name);
             BackupProfile::write(profile.there() + '/' + name + "/mine", "mine");
             return profile.there();
         },
         nothing},
        {"archive of the name", noFolder,
         [](const BackupProfile& profile) {
             BackupProfile::write(profile.there() + '/' + name + ".hvbk", "mine");
             return profile.there();
         },
         nothing},
        {"no main database", "Backup export: Could not copy stemhaven-main.db!",
         [](const BackupProfile& profile) {
             QFile::remove(profile.live().mainDatabase);
             return profile.there();
         },
         nothing},
        {"no root paths", "Backup export: Could not copy stemhaven-root-paths.db!",
         [](const BackupProfile& profile) {
             QFile::remove(profile.live().rootPathsDatabase);
             return profile.there();
         },
         nothing},
        {"settings in the way", "Backup export: Could not copy Stemhaven.conf!", there,
         [](const BackupProfile& profile, int step) {
             if (step == settingsStep)
                 BackupProfile::write(profile.there() + '/' + name + "/Stemhaven.conf", "x");
         }},
        {"damaged database",
         "Backup export: The database stemhaven-root-paths.db is damaged. A backup of it could not be "
         "imported. "
         "Start Stemhaven again to have it checked.",
         [](const BackupProfile& profile) {
             BackupProfile::write(profile.live().rootPathsDatabase, QByteArray(5000, 'x'));
             return profile.there();
         },
         nothing},
        {"file changed after compression", notCompressed, there,
         [](const BackupProfile& profile, int step) {
             if (step == readingBack)
                 BackupProfile::write(
                     profile.there() + '/' + name + "/Stemhaven.conf", "[General]\nnam=first\n");
         }},
        {"archive cut off", notCompressed, there,
         [](const BackupProfile& profile, int step) {
             const QString archive = profile.there() + '/' + name + ".hvbk";
             if (step == readingBack)
                 QFile::resize(archive, QFileInfo(archive).size() - 1);
         }},
        {"file too many", notCompressed, there,
         [](const BackupProfile& profile, int step) {
             const QString extra = profile.there() + '/' + name + "/stemhaven-main.db-wal";
             if (step == compressing)
                 BackupProfile::write(extra, "x");
         }},
    };
    for (const auto& test : cases) {
        BackupProfile profile;
        profile.fill("first");
        const QString destination = test.prepare(profile);
        const auto state = profile.state();
        const auto names = profile.names();
        const LogCapture log;
        const auto result = exportTo(profile, destination, [&](const BackupProgress& progress) {
            test.disturb(profile, progress.step);
            return true;
        });
        EXPECT_EQ(result.outcome, BackupResult::Outcome::Failed) << test.what;
        EXPECT_EQ(result.message.toStdString(), test.message) << test.what;
        EXPECT_EQ(profile.state(), state) << test.what;
        EXPECT_EQ(profile.names(), names) << test.what;
    }
}

TEST(BackupExport, DoesNotTakeAFailedTarForABackup) {
    BackupProfile profile;
    profile.fill("first");
    const auto names = profile.names();
    const LogCapture log;
    {
        const FakeCommand tar("tar");
        EXPECT_EQ(
            exportTo(profile, profile.there()).message,
            "Error occurred while exporting backup. Compression failed!");
    }
    EXPECT_EQ(log.count("compressed backup file not found! Expected: " + profile.there()), 1);
    // A disk that is full at any point of it.
    const auto size = static_cast<rlim_t>(QFileInfo(profile.live().mainDatabase).size());
    for (const rlim_t limit : {size / 2, size / 8, rlim_t(1)}) {
        std::optional<SmallDisk> disk;
        const bool fromStart = limit == size / 2;
        const auto result = exportTo(profile, profile.there(), [&](const BackupProgress& progress) {
            if (!disk && (fromStart || progress.text == "Compressing the backup"))
                disk.emplace(limit);
            return true;
        });
        disk.reset();
        EXPECT_FALSE(result.isFinished());
        EXPECT_EQ(profile.names(), names);
    }
}

TEST(BackupExport, ThatIsCancelledOrKilledLeavesNothingUnfinished) {
    for (int last = 1; last <= 8; ++last) {
        BackupProfile profile;
        profile.fill("first");
        const auto state = profile.state();
        const auto names = profile.names();
        const LogCapture log;

        const auto result = exportTo(
            profile, profile.there(), [&](const BackupProgress& progress) { return progress.step < last; });
        const bool isFinished = last > 6;
        EXPECT_EQ(
            result.outcome, isFinished ? BackupResult::Outcome::Finished : BackupResult::Outcome::Cancelled)
            << last;
        QFile::remove(profile.there() + '/' + name + ".hvbk");
        EXPECT_EQ(profile.names(), names) << last;

        inKilledProcess([&] {
            exportTo(profile, profile.there(), [&](const BackupProgress& progress) {
                if (progress.step == last)
                    _exit(0);
                return true;
            });
        });
        checkAtStart(profile.live(), now);
        EXPECT_EQ(QFile::remove(profile.there() + '/' + name + ".hvbk"), isFinished) << last;
        EXPECT_EQ(profile.names(), names) << last;
        EXPECT_EQ(profile.state(), state) << last;
    }
}
