#include "backup/DatabaseCopies.h"

#include "BackupProfile.h"
#include "backup/StartCheck.h"
#include "support/FullDisk.h"
#include "support/LogCapture.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Stemhaven;
using Outcome = DatabaseCopies::Outcome;

namespace {

const QDateTime noon(QDate(2026, 3, 9), QTime(12, 0));

class CopiesTest : public testing::Test {
protected:
    CopiesTest() { profile.fill("first"); }

    void addProject(const QString& name) const {
        BackupProfile::run(profile.live().mainDatabase, {BackupProfile::project(name)});
    }

    /// The start of a table, at the second page.
    static void damage(const QString& database, qint64 at = 4096) {
        QFile file(database);
        file.open(QIODevice::ReadWrite);
        file.seek(at);
        file.write(QByteArray(2000, '\x5a'));
    }

    QStringList damagedNames() const {
        return QDir(profile.live().profileFolder()).entryList({"*.damaged-*"}, QDir::Files | QDir::Hidden);
    }

    BackupProfile profile;
    DatabaseCopies copies{profile.live()};
    const LogCapture log;
};

} // namespace

TEST_F(CopiesTest, AreMadeOnceADayWhereSomethingChangedAndTheLastTenAreKept) {
    EXPECT_TRUE(copies.isDue(noon));
    EXPECT_EQ(copies.copyAside(noon), Outcome::Made);
    EXPECT_FALSE(copies.isDue(noon.addSecs(11 * 3600)));
    EXPECT_TRUE(copies.isDue(noon.addDays(1)));

    // A start writes the version again, which changes nothing.
    BackupProfile::run(
        profile.live().mainDatabase,
        {DatabaseInitStatements(currentDatabaseVersion).updateVersion(), "PRAGMA wal_checkpoint(TRUNCATE)"});
    EXPECT_EQ(copies.copyAside(noon.addDays(1)), Outcome::Unchanged);
    ASSERT_EQ(copies.all().size(), 1);
    EXPECT_EQ(copies.all()[0].made, noon.addDays(1).toUTC());
    EXPECT_FALSE(copies.isDue(noon.addDays(1)));

    const QString mine = profile.live().profileFolder() + "/Backups/mine";
    QDir().mkpath(mine);
    QDir().mkpath(copies.all()[0].folder + ".part");
    for (int day = 2; day < 13; ++day) {
        addProject(QString::number(day));
        EXPECT_EQ(copies.copyAside(noon.addDays(day)), Outcome::Made);
    }
    ASSERT_EQ(copies.all().size(), 10);
    EXPECT_EQ(copies.all().last().made, noon.addDays(3).toUTC());
    EXPECT_EQ(
        BackupProfile::projects(copies.all().last().folder + "/stemhaven-main.db"),
        (QStringList{"first", "2", "3"}));
    EXPECT_EQ(
        QDir(profile.live().profileFolder() + "/Backups").entryList(BackupProfile::everything).size(), 11);

    // Two in one second.
    addProject("more");
    EXPECT_EQ(copies.copyAside(noon.addDays(12)), Outcome::Made);
    EXPECT_EQ(BackupProfile::projects(copies.all().first().folder + "/stemhaven-main.db").last(), "more");
}

TEST_F(CopiesTest, ThatAWrongClockDatedAreNotTakenForTheNewest) {
    for (const int day : {400, 401}) {
        addProject(QString::number(day));
        ASSERT_EQ(copies.copyAside(noon.addDays(day)), Outcome::Made);
    }
    addProject("third");
    EXPECT_TRUE(copies.isDue(noon));
    EXPECT_EQ(copies.copyAside(noon), Outcome::Made);
    EXPECT_FALSE(copies.isDue(noon));
    const auto all = copies.all();
    ASSERT_EQ(all.size(), 3);
    EXPECT_EQ(all[0].made, noon.toUTC());
    const qsizetype projects[] = {4, 3, 2};
    for (int index = 0; index < 3; ++index)
        EXPECT_EQ(BackupProfile::projects(all[index].folder + "/stemhaven-main.db").size(), projects[index]);
}

TEST_F(CopiesTest, HoldWhatIsInTheLogAlone) {
    profile.leaveInLog("late");
    EXPECT_EQ(copies.copyAside(noon), Outcome::Made);
    const QString copy = copies.all()[0].folder + "/stemhaven-main.db";
    EXPECT_EQ(BackupProfile::projects(copy), (QStringList{"first", "late"}));
    EXPECT_FALSE(QFile::exists(copy + "-wal"));
}

TEST_F(CopiesTest, OfWhatIsDamagedOrMissingAreNotMade) {
    EXPECT_EQ(copies.copyAside(noon), Outcome::Made);
    damage(profile.live().mainDatabase, 0);
    EXPECT_EQ(copies.copyAside(noon.addDays(1)), Outcome::Failed);
    QFile::remove(profile.live().mainDatabase);
    EXPECT_EQ(copies.copyAside(noon.addDays(2)), Outcome::Unchanged);
    ASSERT_EQ(copies.all().size(), 1);
    EXPECT_EQ(copies.all()[0].made, noon.toUTC());
    EXPECT_EQ(
        QDir(profile.live().profileFolder() + "/Backups").entryList(BackupProfile::everything).size(), 1);
}

TEST_F(CopiesTest, TheNewestGoodOneTakesThePlaceOfADamagedDatabase) {
    const auto live = profile.live();
    ASSERT_EQ(copies.copyAside(noon), Outcome::Made);
    addProject("second");
    ASSERT_EQ(copies.copyAside(noon.addDays(1)), Outcome::Made);
    addProject("third");
    ASSERT_EQ(copies.copyAside(noon.addDays(2)), Outcome::Made);
    damage(copies.all()[0].folder + "/stemhaven-main.db");
    EXPECT_FALSE(checkAtStart(live, noon).isRemarkable());
    EXPECT_EQ(BackupProfile::projects(live.mainDatabase).size(), 3);

    // Damaged at a page; at the start, with the log of another database; cut off; emptied.
    constexpr qint64 asItIs = -1;
    constexpr qint64 nowhere = -1;
    int day = 3;
    for (const auto& [at, size] :
         {std::pair<qint64, qint64>(4096, asItIs), {0, asItIs}, {nowhere, 20'000}, {nowhere, 0}}) {
        SCOPED_TRACE(testing::Message() << "at " << at << ", size " << size);
        if (at != nowhere)
            damage(live.mainDatabase, at);
        if (at == 0)
            BackupProfile::write(live.mainDatabase + "-wal", "log");
        if (size != asItIs)
            QFile::resize(live.mainDatabase, size);
        const QByteArray damaged = BackupProfile::read(live.mainDatabase);
        const auto report = checkAtStart(live, noon.addDays(++day));
        ASSERT_EQ(report.restored.size(), 1);
        EXPECT_TRUE(report.isRemarkable());
        EXPECT_EQ(report.restored[0].database, live.mainDatabase);
        EXPECT_EQ(report.restored[0].copyMade, noon.addDays(1).toUTC());
        EXPECT_EQ(BackupProfile::read(report.restored[0].damaged), damaged);
        EXPECT_EQ(BackupProfile::projects(live.mainDatabase), (QStringList{"first", "second"}));
        EXPECT_FALSE(QFile::exists(live.mainDatabase + ".restored"));
        EXPECT_FALSE(checkAtStart(live, noon).isRemarkable());
    }
    // Each with its log beside it, if it had one.
    EXPECT_GE(damagedNames().size(), 4);

    damage(live.rootPathsDatabase, 0);
    EXPECT_EQ(checkAtStart(live, noon).restored.size(), 1);
    EXPECT_EQ(
        BackupProfile::run(live.rootPathsDatabase, {"SELECT * FROM root_project_search_paths"}),
        QStringList("/first"));
}

TEST_F(CopiesTest, StartsLeaveAloneWhatTheyCannotMakeBetter) {
    const auto live = profile.live();
    ASSERT_EQ(copies.copyAside(noon), Outcome::Made);
    damage(live.mainDatabase, 0);
    const QByteArray damaged = BackupProfile::read(live.mainDatabase);
    {
        const FullDisk disk(1);
        const auto barred = checkAtStart(live, noon);
        EXPECT_FALSE(barred.mayStart());
        EXPECT_EQ(barred.unrestored, QStringList(live.mainDatabase));
        EXPECT_TRUE(textOf(barred).contains("start Stemhaven again"));
    }
    EXPECT_EQ(BackupProfile::read(live.mainDatabase), damaged);
    EXPECT_EQ(checkAtStart(live, noon).restored.size(), 1);
    QDir(live.profileFolder() + "/Backups").removeRecursively();
    QFile::remove(live.profileFolder() + '/' + damagedNames().value(0));
    profile.fill("first");
    damage(live.mainDatabase, 0);
    const auto state = profile.state();
    const auto report = checkAtStart(live, noon);
    EXPECT_EQ(report.damaged, QStringList(live.mainDatabase));
    EXPECT_TRUE(report.restored.isEmpty());
    EXPECT_EQ(profile.state(), state);
    EXPECT_EQ(damagedNames(), QStringList());

    // Locked by another program: not damaged. And nothing at all: a first start.
    profile.fill("first");
    ASSERT_EQ(copies.copyAside(noon), Outcome::Made);
    {
        auto other = QSqlDatabase::addDatabase("QSQLITE", "other");
        other.setDatabaseName(live.rootPathsDatabase);
        other.open();
        QSqlQuery(other).exec("BEGIN EXCLUSIVE");
        EXPECT_FALSE(checkAtStart(live, noon).isRemarkable());
    }
    QSqlDatabase::removeDatabase("other");
    for (const auto& file : live.all())
        QFile::remove(file);
    EXPECT_FALSE(checkAtStart(live, noon).isRemarkable());
    EXPECT_FALSE(QFile::exists(live.mainDatabase));
}
