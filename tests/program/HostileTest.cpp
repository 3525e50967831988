#include "program/Profile.h"
#include "support/OutsideRows.h"
#include "support/TestBundle.h"
#include "support/Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <functional>

namespace fs = std::filesystem;

namespace {

/// Far above what an end may take, which is two seconds, for the slowest machine.
constexpr qint64 longestEnd = 20'000;
/// KiB beyond what the program needs for a song.
constexpr qint64 mostMemory = 200 << 10;

QString named(const Profile& profile, const QString& bundle) {
    return profile.projects() + '/' + bundle;
}

void makeSong(const Profile& profile, const QString& bundle) {
    const QString path = named(profile, bundle);
    TestBundle().write(path.toStdString());
}

qint64 memoryForASong() {
    static const qint64 memory = [] {
        Profile profile;
        makeSong(profile, "Song.logicx");
        profile.oweSearch();
        profile.start();
        waitUntil([&] { return !profile.searchIsOwed(); });
        const qint64 peak = profile.peakMemory();
        profile.terminate();
        return peak;
    }();
    return memory;
}

/// That the program, which runs, ends in time and has used little memory.
void expectToEnd(Profile& profile) {
    ASSERT_TRUE(profile.isRunning());
    const qint64 memory = profile.peakMemory();
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
    const qint64 end = time.elapsed();
    EXPECT_LT(end, longestEnd);
    EXPECT_LT(memory, memoryForASong() + mostMemory);
    std::printf("Ended in %lld ms, %lld KiB of memory at most\n", end, memory);
}

struct HostileFolder {
    const char* purpose;
    std::function<void(const Profile&)> make;
    /// How many projects there are; -1 where the program is to be ended while it searches.
    int projects;
    void (*alsoExpect)(const Profile&) = nullptr;
};

const HostileFolder folders[] = {
    {"uses up the watches of the machine",
     [](const Profile& profile) {
         makeSong(profile, "Song.logicx");
         for (int i = 0; i < 5'000; ++i)
             fs::create_directory(
                 named(profile, "Song.logicx/Alternatives/x").toStdString() + std::to_string(i));
     },
     1},
    {"forges a line of the log",
     [](const Profile& profile) {
         makeSong(profile, "A\n2026-01-01T00:00:00(FATAL): All is lost\x1b[2J\u202e.logicx");
         // The one that cannot be read is named in the log.
         QDir().mkpath(named(profile, "B\n2026-01-01T00:00:00(FATAL): All is lost\x1b[2J\u202e.logicx"));
     },
     1,
     [](const Profile& profile) {
         const QRegularExpression forged("^2026-01-01|[\\x1b\\x{202e}]", QRegularExpression::MultilineOption);
         EXPECT_TRUE(profile.log().contains("All is lost")) << profile.log().toStdString();
         EXPECT_FALSE(profile.log().contains(forged)) << profile.log().toStdString();
     }},
    {"passes for a bundle by its folder's name",
     [](const Profile& profile) {
         makeSong(profile, "Mine.logicx downloads/One.logicx");
         makeSong(profile, "Mine.logicx downloads/Two.logicx");
     },
     2,
     [](const Profile& profile) {
         EXPECT_EQ(profile.rows("SELECT name FROM projects ORDER BY name"), QStringList({"One", "Two"}));
     }},
    {"keeps the search busy while the program is to end",
     [](const Profile& profile) {
         for (int i = 0; i < 5'000; ++i)
             fs::create_directories(named(profile, QString("%1/%2").arg(i % 100).arg(i)).toStdString());
     },
     -1},
};

struct HostileCatalogue {
    QStringList statements;
    const char* part;
};

const HostileCatalogue catalogues[] = {
    {{"ALTER TABLE projects RENAME TO p",
      "CREATE VIEW projects AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x FROM c) "
      "SELECT p.* FROM p, c"},
     "view \"projects\""},
    {{"CREATE TRIGGER t AFTER UPDATE ON projects BEGIN DELETE FROM projects; END"}, "trigger \"t\""},
    {{"ALTER TABLE projects ADD COLUMN big AS (hex(zeroblob(200000000)))"}, "column \"projects.big\""},
    {{"UPDATE projects SET notes=hex(zeroblob(150000000))"}, "too large value \"projects\""},
};

} // namespace

TEST(Hostile, FoldersCostLittleAndHoldUpNoEnd) {
    for (const auto& folder : folders) {
        SCOPED_TRACE(folder.purpose);
        Profile profile;
        folder.make(profile);
        profile.oweSearch();
        profile.start();
        if (folder.projects >= 0) {
            ASSERT_TRUE(waitUntil([&] { return !profile.searchIsOwed(); }, 90));
            EXPECT_EQ(
                profile.rows("SELECT count(*) FROM projects"), QStringList(QString::number(folder.projects)));
        }
        expectToEnd(profile);
        if (folder.alsoExpect != nullptr)
            folder.alsoExpect(profile);
        EXPECT_FALSE(profile.log().contains("limit of watched folders")) << profile.log().toStdString();
    }
}

TEST(Hostile, CataloguesAreNotOpenedAndGoodOnesTakeTheirPlace) {
    for (const auto& [statements, part] : catalogues) {
        SCOPED_TRACE(part);
        Profile profile;
        profile.recordRatedSong();
        ASSERT_EQ(profile.runToEnd({"--export-backup", profile.projects()}), 0);
        const auto backup = QDir(profile.projects()).entryInfoList({"*.hvbk"}).value(0).absoluteFilePath();
        ASSERT_EQ(outsideRows(profile.mainDatabase(), statements), QStringList());

        const qint64 sizeBefore = QFile(profile.mainDatabase()).size();
        for (const QStringList& arguments : {QStringList(), {"--export-backup", profile.projects()}}) {
            EXPECT_EQ(profile.runToEnd(arguments), 1);
            EXPECT_TRUE(profile.output().contains(QString("it holds ") + part))
                << profile.output().toStdString();
        }
        EXPECT_EQ(QFile(profile.mainDatabase()).size(), sizeBefore);

        EXPECT_EQ(profile.runToEnd({"--import-backup", backup, "--yes"}), 0)
            << profile.output().toStdString();
        profile.start();
        expectToEnd(profile);
        EXPECT_EQ(profile.rows("SELECT name, star_rating FROM projects"), QStringList("Song|4"));
    }
}
