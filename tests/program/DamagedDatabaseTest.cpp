#include "program/Profile.h"
#include "support/Waiting.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

TEST(DamagedDatabase, ThatIsNoDatabaseIsLeftAsItIsAndTheProgramStaysUp) {
    Profile profile;
    profile.oweSearch();
    QFile file(profile.mainDatabase());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray garbage(20'000, '\x7f');
    file.write(garbage);
    file.close();

    profile.start();
    EXPECT_TRUE(waitUntil([&] {
        return profile.log().contains(
            "(FATAL): Could not retrieve database version. Database initialization incomplete...");
    }));
    EXPECT_TRUE(waitUntil([&] { return profile.log().contains("Could not reload projects table!"); }));
    EXPECT_TRUE(profile.isRunning());
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage);
    EXPECT_TRUE(profile.searchIsOwed());
}

TEST(DamagedDatabase, ThatIsLockedByAnotherProgramIsWaitedForAndThenReported) {
    Profile profile;
    profile.recordRatedSong();

    QProcess other;
    other.start("sqlite3", {profile.mainDatabase()});
    ASSERT_TRUE(other.waitForStarted());
    other.write("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; SELECT 'locked';\n");
    ASSERT_TRUE(other.waitForReadyRead());

    profile.start();
    EXPECT_TRUE(waitUntil([&] { return profile.log().contains("database is locked"); }, 90));
    EXPECT_TRUE(profile.isRunning());
    other.closeWriteChannel();
    other.waitForFinished();
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
    EXPECT_EQ(profile.rows("SELECT name, star_rating FROM projects"), QStringList("Song|4"));
}
