#include "program/Profile.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

const QString ratings = "SELECT name, star_rating FROM projects";

} // namespace

TEST(Backup, OfAnOlderVersionIsBroughtUpToDateFromATerminalOrTakenBack) {
    for (const bool fails : {false, true}) {
        Profile profile;
        profile.recordRatedSong();
        const QString folder = QFileInfo(profile.picture()).path() + "/there";
        QDir().mkdir(folder);
        profile.rows("UPDATE details SET database_version='v1.0'");
        profile.rows("DROP TABLE project_tag_map");
        if (fails) {
            profile.rows("CREATE UNIQUE INDEX one ON details(database_version)");
            profile.rows("INSERT INTO details VALUES('v0.9')");
        }
        ASSERT_EQ(profile.runToEnd({"--export-backup", folder}), 0) << profile.output().toStdString();
        profile.rows("UPDATE projects SET star_rating=1");
        const QString archive = QDir(folder).entryInfoList({"*.hvbk"}).value(0).filePath();
        EXPECT_EQ(profile.runToEnd({"--import-backup", archive, "--yes"}), fails ? 1 : 0)
            << profile.output().toStdString();
        EXPECT_EQ(profile.rows(ratings), QStringList(fails ? "Song|1" : "Song|4"));
        EXPECT_EQ(
            profile.rows("SELECT database_version FROM details LIMIT 1"),
            QStringList(fails ? "v1.0" : "v1.2"));
    }
}

TEST(Backup, GoesOutAndComesBackFromATerminalWhileTheProgramDoesNotRun) {
    Profile profile;
    profile.recordRatedSong();
    const QString folder = QFileInfo(profile.picture()).path() + "/it's \"here\" $(exit)";
    QDir().mkdir(folder);
    const auto archives = [&] {
        return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    };

    EXPECT_EQ(profile.runToEnd({"--export-backup", folder}), 0) << profile.output().toStdString();
    EXPECT_TRUE(profile.output().contains("[7/7]") && profile.output().contains("Finished exporting backup!"))
        << profile.output().toStdString();
    ASSERT_EQ(archives().size(), 1);
    const QString archive = folder + '/' + archives()[0];
    EXPECT_TRUE(profile.output().contains(archive));
    profile.rows("UPDATE projects SET star_rating=1");

    // Nobody to ask; not a backup; not there; two commands; in use.
    EXPECT_EQ(profile.runToEnd({"--import-backup", archive}), 1);
    EXPECT_TRUE(profile.output().contains("Give --yes")) << profile.output().toStdString();
    EXPECT_EQ(profile.runToEnd({"--import-backup", profile.picture(), "--yes"}), 1);
    EXPECT_EQ(profile.runToEnd({"--import-backup", folder + "/none.hvbk", "--yes"}), 1);
    EXPECT_EQ(profile.runToEnd({"--export-backup", folder + "/none"}), 1);
    EXPECT_EQ(profile.runToEnd({"--export-backup=" + folder, "--import-backup=" + archive}), 1);
    profile.start();
    EXPECT_EQ(profile.runToEnd({"--export-backup", folder}), 1);
    EXPECT_TRUE(profile.output().contains("already running")) << profile.output().toStdString();
    EXPECT_EQ(profile.runToEnd({"--import-backup", archive, "--yes"}), 1);
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
    EXPECT_EQ(profile.rows(ratings), QStringList("Song|1"));
    EXPECT_EQ(archives().size(), 1);

    EXPECT_EQ(profile.runToEnd({"--import-backup", archive, "--yes"}), 0) << profile.output().toStdString();
    EXPECT_EQ(profile.rows(ratings), QStringList("Song|4"));

    // The import has copied aside what was there before, and that is what a damaged database is replaced by.
    QFile file(profile.mainDatabase());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(20'000, '\x7f'));
    file.close();
    profile.start();
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
    EXPECT_EQ(profile.rows(ratings), QStringList("Song|1"));
    const QDir data(QFileInfo(profile.mainDatabase()).path());
    EXPECT_EQ(data.entryList({"stemhaven-main.db.damaged-*"}).size(), 1);
}
