#include "backup/BackupExport.h"

#include "BackupProfile.h"
#include "backup/BackupImport.h"
#include "backup/StartCheck.h"
#include "support/FullDisk.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Stemhaven;

namespace {

const QDateTime now(QDate(2026, 3, 9), QTime(17, 4, 5));
const QString name = "Stemhaven-Backup-03.09.26-17.04.05";

BackupResult
exportTo(const BackupProfile& profile, const QString& folder, const BackupObserver& observer = {}) {
    return BackupExport(profile.live(), folder, now).run(observer);
}

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
        const LogCapture log;
        const auto result = exportTo(profile, destination, [&](const BackupProgress& progress) {
            steps.append(progress.step);
            EXPECT_EQ(progress.steps, 7);
            return true;
        });
        ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
        EXPECT_EQ(result.archive, destination + '/' + name + ".hvbk");
        EXPECT_EQ(steps.size(), 7);
        EXPECT_EQ(QDir(destination).entryList(BackupProfile::everything), QStringList(name + ".hvbk"));
        EXPECT_FALSE(QFile::exists("ran"));

        profile.fill("second");
        EXPECT_NE(profile.state(), first);
        const auto back = BackupImport(profile.live(), result.archive, now).run({});
        EXPECT_TRUE(back.isFinished()) << back.message.toStdString();
        EXPECT_FALSE(back.needsInitialisation);
        EXPECT_EQ(profile.state(), first) << folder.toStdString();
        EXPECT_EQ(QDir(destination).entryList(BackupProfile::everything), QStringList(name + ".hvbk"));
    }
}

TEST(BackupExport, HoldsWhatAKilledProgramHasLeftInTheLogAndNeedsNoSettingsFile) {
    BackupProfile profile;
    profile.fill("first");
    QFile::remove(profile.live().settings);
    profile.leaveInLog("late");
    const LogCapture log;
    ASSERT_GT(QFileInfo(profile.live().mainDatabase + "-wal").size(), 0);
    const auto result = exportTo(profile, profile.there());
    ASSERT_TRUE(result.isFinished()) << result.message.toStdString();
    EXPECT_FALSE(QFile::exists(profile.live().settings));
    profile.fill("second");
    ASSERT_TRUE(BackupImport(profile.live(), result.archive, now).run({}).isFinished());
    EXPECT_EQ(BackupProfile::projects(profile.live().mainDatabase), (QStringList{"first", "late"}));
    EXPECT_EQ(BackupProfile::read(profile.live().settings), QByteArray());
}

TEST(BackupExport, ThatFailsLeavesNothingBehindAndWhatWasThereAlone) {
    const char* noFolder = "Could not create backup folder!";
    const char* notCopied = "Backup export: Could not copy ";
    const char* damaged = "Backup export: The database stemhaven-root-paths.db is damaged.";
    const char* notCompressed = "Error occurred while exporting backup. Compression failed!";
    const std::string made = "there/" + name.toStdString();

    // Scripts that run in the profile's folder before that step; step 0 is before all is compared.
    struct Case {
        const char* message;
        int step;
        std::string script;
        QString destination = "there";
    };

    const Case cases[] = {
        {noFolder, 0, "true", "none"},
        {noFolder, 0, "true", "config/Stemhaven.conf"},
        {noFolder, 0, "true", "../../proc"},
        {noFolder, 0, "mkdir " + made + " && echo mine >" + made + "/mine"},
        {noFolder, 0, "echo mine >" + made + ".hvbk"},
        {notCopied, 0, "rm profile/stemhaven-main.db"},
        {notCopied, 0, "rm profile/stemhaven-root-paths.db"},
        {damaged, 0, "yes | head -c 5000 >profile/stemhaven-root-paths.db"},
        {notCopied, 4, "echo x >" + made + "/Stemhaven.conf"},
        {notCompressed, 5, "echo x >" + made + "/stemhaven-main.db-wal"},
        {notCompressed, 6, "printf '[General]\nnam=first\n' >" + made + "/Stemhaven.conf"},
        {notCompressed, 6, "rm " + made + ".hvbk"},
        {notCompressed, 6, "truncate -s -1 " + made + ".hvbk"},
    };
    for (const auto& [message, step, script, destination] : cases) {
        SCOPED_TRACE(script + " for " + destination.toStdString());
        BackupProfile profile;
        profile.fill("first");
        const std::string command = "cd " + profile.folder().toStdString() + " && " + script;
        if (step == 0) {
            ASSERT_EQ(std::system(command.c_str()), 0);
        }
        const auto state = profile.state();
        const auto names = profile.names();
        const LogCapture log;
        const auto disturb = [&, at = step](const BackupProgress& progress) {
            return progress.step != at || std::system(command.c_str()) == 0;
        };
        const auto result = exportTo(profile, profile.folder() + '/' + destination, disturb);
        EXPECT_EQ(result.outcome, BackupResult::Outcome::Failed);
        EXPECT_TRUE(result.message.startsWith(message)) << result.message.toStdString();
        EXPECT_EQ(profile.state(), state);
        EXPECT_EQ(profile.names(), names);
    }
}

TEST(BackupExport, ToADiskThatIsFullAtAnyPointOfItFails) {
    BackupProfile profile;
    profile.fill("first");
    const auto names = profile.names();
    const LogCapture log;
    const auto size = static_cast<rlim_t>(QFileInfo(profile.live().mainDatabase).size());
    for (const rlim_t limit : {size / 2, size / 8, rlim_t(1)}) {
        std::optional<FullDisk> disk;
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

        inKilledProcess([&] { exportTo(profile, profile.there(), killedAt(last)); });
        checkAtStart(profile.live(), now);
        EXPECT_EQ(QFile::remove(profile.there() + '/' + name + ".hvbk"), isFinished) << last;
        EXPECT_EQ(profile.names(), names) << last;
        EXPECT_EQ(profile.state(), state) << last;
    }
}
