#include "monitor/MonitorFixture.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <optional>

using namespace Stemhaven;

namespace {

/// A running monitor over a real folder.
class Following : public MonitorFixture {
protected:
    void SetUp() override {
        MonitorFixture::SetUp();
        makeBundle("Song.logicx");
        makeBundle("deep/er/Other.logicx");
        QSettings().setValue(SettingsKeys::searchWasInProgress, true);
        start();
        ASSERT_TRUE(shows({"Other", "Song"}));
        m_database.rows("UPDATE projects SET star_rating=5 WHERE name='Song'");
        m_database.rows("UPDATE projects SET star_rating=4 WHERE name='Other'");
    }

    void start() {
        m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks, std::chrono::milliseconds(100));
        ASSERT_TRUE(waitUntil([&] { return !m_monitor->isSearching() && m_monitor->isWatching(); }));
    }

    void move(const QString& from, const QString& to) const {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(at(to)).path()));
        ASSERT_TRUE(QDir().rename(at(from), at(to))) << from.toStdString();
    }

    /// Whether the records come to have these names.
    bool shows(const QStringList& names) {
        return waitUntil(
            [&] { return m_database.rows("SELECT name FROM projects ORDER BY name") == names; }, 20);
    }

    QStringList rows(const QString& columns) {
        return m_database.rows("SELECT " + columns + " FROM projects ORDER BY name");
    }
};

/// Another program writes to the database for as long as it lives.
class Lock {
public:
    explicit Lock(const QString& database) {
        auto connection = QSqlDatabase::addDatabase("QSQLITE", "other");
        connection.setDatabaseName(database);
        EXPECT_TRUE(connection.open());
        EXPECT_TRUE(QSqlQuery(connection).exec("BEGIN EXCLUSIVE"));
    }

    ~Lock() { QSqlDatabase::removeDatabase("other"); }

    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
};

/// No file of this process can grow beyond a few bytes for as long as it lives.
class NoSpace {
public:
    NoSpace() : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &m_limit), 0);
        const rlimit small{2000, m_limit.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    }

    ~NoSpace() {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }

    NoSpace(const NoSpace&) = delete;
    NoSpace& operator=(const NoSpace&) = delete;

private:
    rlimit m_limit = {};
    void (*m_handler)(int);
};

} // namespace

TEST_F(Following, StandsAsideWhileAnotherCatalogueTakesThePlace) {
    const quint64 before = FileEventStream::currentEventID();
    constexpr quint64 farAhead = ~0ULL - 1;
    makeBundle("Song.logicx", TestBundle(180));
    EXPECT_TRUE(waitUntil([&] { return rows("bpm").contains("180"); }));
    m_monitor->searchForProjects(true);
    m_monitor->suspend();
    ASSERT_TRUE(waitUntil([&] { return m_monitor->isAtRest(); }));

    // Neither an event nor a request of a window begins anything.
    makeBundle("New.logicx");
    m_monitor->directoryChanged(at("New.logicx"), true);
    m_monitor->requestUpdateWatchedDirs();
    m_monitor->restartMonitoring();
    m_monitor->searchForProjects(true);
    ASSERT_TRUE(waitUntil([&] { return m_monitor->isAtRest(); }));
    EXPECT_EQ(rows("bpm"), QStringList({"120", "180"}));

    // As before: what was broken off is made up for.
    m_monitor->resume();
    EXPECT_TRUE(shows({"New", "Other", "Song"}));
    ASSERT_TRUE(waitUntil([&] { return !m_monitor->isSearching() && m_monitor->isWatching(); }));

    // With the catalogue and the settings of a while ago, or settings that say nothing, or those of a system
    // that counts otherwise.
    for (const auto& id : {QVariant(before), QVariant(), QVariant(farAhead)}) {
        SCOPED_TRACE(id.toString().toStdString());
        m_monitor->suspend();
        ASSERT_TRUE(waitUntil([&] { return m_monitor->isAtRest(); }));
        m_database.rows("UPDATE projects SET bpm=90, last_updated=last_updated-9 WHERE name='Song'");
        m_database.rows("DELETE FROM projects WHERE name='New'");
        if (id.isValid())
            QSettings().setValue(SettingsKeys::lastEventId, id);
        else
            QSettings().remove(SettingsKeys::lastEventId);
        m_monitor->resumeWithOthers(true);
        EXPECT_TRUE(shows({"New", "Other", "Song"}));
        EXPECT_TRUE(waitUntil([&] { return rows("bpm").contains("180"); }, 20));
        ASSERT_TRUE(waitUntil([&] { return !m_monitor->isSearching() && m_monitor->isWatching(); }));
    }
    // Events count again from here on.
    makeBundle("Song.logicx", TestBundle(200));
    EXPECT_TRUE(waitUntil([&] { return rows("bpm").contains("200"); }));
    EXPECT_TRUE(waitUntil([&] {
        const auto id = QSettings().value(SettingsKeys::lastEventId).toULongLong();
        return id > before && id < farAhead;
    }));
}

TEST_F(Following, SavesNewProjectsRenamesMovesAndCopies) {
    makeBundle("Song.logicx", TestBundle(180));
    EXPECT_TRUE(waitUntil([&] { return rows("bpm").contains("180"); }));

    makeBundle("New.logicx");
    EXPECT_TRUE(shows({"New", "Other", "Song"}));

    move("Song.logicx", "Renamed.logicx");
    EXPECT_TRUE(shows({"New", "Other", "Renamed"}));
    move("Renamed.logicx", "else/where/Renamed.logicx");
    EXPECT_TRUE(waitUntil([&] { return rows("filepath").contains(at("else/where/")); }));
    move("deep", "deeper");
    EXPECT_TRUE(waitUntil([&] { return rows("filepath").contains(at("deeper/er/")); }));
    EXPECT_EQ(rows("name, star_rating"), QStringList({"New|0", "Other|4", "Renamed|5"}));

    // Written below the folder under its new name.
    makeBundle("deeper/er/Other.logicx", TestBundle(180));
    EXPECT_TRUE(waitUntil(
        [&] { return m_database.rows("SELECT bpm FROM projects WHERE name='Other'").contains("180"); }));

    std::filesystem::copy(
        at("else/where/Renamed.logicx").toStdString(), at("Copy.logicx").toStdString(),
        std::filesystem::copy_options::recursive);
    EXPECT_TRUE(shows({"Copy", "New", "Other", "Renamed"}));
    EXPECT_EQ(rows("star_rating"), QStringList({"0", "0", "4", "5"}));

    // A vanished bundle keeps its record.
    ASSERT_TRUE(QDir(at("Copy.logicx")).removeRecursively());
    makeBundle("Untitled.logicx");
    makeBundle("Marker.logicx");
    EXPECT_TRUE(shows({"Copy", "Marker", "New", "Other", "Renamed"}));
    move("Untitled.logicx", "Named.logicx");
    EXPECT_TRUE(shows({"Copy", "Marker", "Named", "New", "Other", "Renamed"}));
}

TEST_F(Following, ARecordThatGaveUpItsIdentityDoesNotTakeTheNextBundleAtItsPlace) {
    const auto columns = m_database.rows("SELECT group_concat(name) FROM pragma_table_info('projects') "
                                         "WHERE name NOT IN ('project_id', 'star_rating', 'SUFID')");
    m_database.rows(QString("INSERT INTO projects (project_id, star_rating, SUFID, %1) "
                            "SELECT -1, 1, NULL, %1 FROM projects WHERE name='Song'")
                        .arg(columns.value(0)));
    move("Song.logicx", "Renamed.logicx");
    EXPECT_TRUE(shows({"Other", "Renamed", "Song"}));
    EXPECT_EQ(rows("name, star_rating"), QStringList({"Other|4", "Renamed|5", "Song|1"}));
}

TEST_F(Following, BundlesWithoutANoteBelowAFolderThatIsRenamed) {
    // Their note cannot be written.
    for (const auto* name : {"A", "B"}) {
        ASSERT_TRUE(QDir().mkpath(at(QString("old/%1.logicx/Resources/Stemhaven.plist/x").arg(name))));
        makeBundle(QString("old/%1.logicx").arg(name));
    }
    ASSERT_TRUE(shows({"A", "B", "Other", "Song"}));
    m_database.rows("UPDATE projects SET star_rating=3 WHERE filename IN ('A.logicx', 'B.logicx')");
    const auto areAt = [&](const QString& folder) {
        return waitUntil([&] { return rows("filepath").count(at(folder)) == 2; });
    };
    move("old", "new");
    EXPECT_TRUE(areAt("new/"));
    stop();
    move("new", "newest");
    ASSERT_TRUE(m_database.initialise());
    start();
    EXPECT_TRUE(areAt("newest/"));
    EXPECT_EQ(rows("name, star_rating"), QStringList({"A|3", "B|3", "Other|4", "Song|5"}));
}

TEST_F(Following, ALargeReplayLeavesRoomForTheUserAndMayBeInterrupted) {
    constexpr int many = 1000;
    for (int i = 0; i < many; ++i)
        makeBundle(QString("set/%1.logicx").arg(i));
    ASSERT_TRUE(waitUntil([&] { return rows("name").size() == many + 2; }, 60));
    stop();
    for (int i = 0; i < many; ++i)
        makeBundle(QString("set/%1.logicx").arg(i), TestBundle(180));
    ASSERT_TRUE(m_database.initialise());

    m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks, std::chrono::milliseconds(100));
    const auto saved = [&] {
        return rows("bpm").count("180");
    };
    ASSERT_TRUE(waitUntil([&] { return saved() > 0; }));
    EXPECT_LT(saved(), many);
    // What the end cuts off is replayed by the next start.
    stop();
    ASSERT_TRUE(m_database.initialise());
    EXPECT_LT(saved(), many);
    start();
    EXPECT_TRUE(waitUntil([&] { return saved() == many; }, 60));
}

TEST_F(Following, WhatWasSavedWhileItWasStoppedAndTheClockSetBack) {
    stop();
    makeBundle("Song.logicx", TestBundle(180));
    std::filesystem::last_write_time(
        at("Song.logicx/Resources/ProjectInformation.plist").toStdString(),
        std::filesystem::file_time_type::clock::now() - std::chrono::hours(24));
    // All that is on the disk is older, as it is once the clock has caught up.
    const auto lastEvent = FileEventStream::currentEventID() + 2'100'000'000;
    QSettings().setValue(SettingsKeys::lastEventId, static_cast<qulonglong>(lastEvent));
    ASSERT_TRUE(waitUntil([&] { return FileEventStream::currentEventID() > lastEvent; }));
    ASSERT_TRUE(m_database.initialise());
    start();
    EXPECT_TRUE(waitUntil([&] { return rows("bpm").contains("180"); }));
    EXPECT_EQ(rows("star_rating"), QStringList({"4", "5"}));
}

TEST_F(Following, WhatHappenedWhileTheDatabaseCouldNotBeWritten) {
    enum class Fault { Locked, Full, FullAtTheEnd };
    constexpr int many = 60;
    for (int i = 0; i < many; ++i)
        makeBundle(QString("set/%1.logicx").arg(i));
    ASSERT_TRUE(waitUntil([&] { return rows("name").size() == many + 2; }));

    int tempo = 120;
    for (const auto fault : {Fault::Locked, Fault::Full, Fault::FullAtTheEnd}) {
        LogCapture messages;
        std::optional<Lock> lock;
        std::optional<NoSpace> noSpace;
        if (fault == Fault::Locked)
            lock.emplace(m_database.mainPath());
        else
            noSpace.emplace();
        move(
            QString("Song%1.logicx").arg(tempo == 120 ? "" : QString::number(tempo)),
            QString("Song%1.logicx").arg(tempo + 1));
        const TestBundle saved(++tempo);
        for (int i = 0; i < many; ++i)
            makeBundle(QString("set/%1.logicx").arg(i), saved);
        makeBundle(QString("New%1.logicx").arg(tempo), saved);
        EXPECT_TRUE(waitUntil([&] { return messages.count("Could not update project record.") > 0; }));
        if (fault == Fault::FullAtTheEnd)
            stop();
        lock.reset();
        noSpace.reset();
        if (fault == Fault::FullAtTheEnd) {
            ASSERT_TRUE(m_database.initialise());
            start();
        }
        EXPECT_TRUE(waitUntil([&] { return rows("bpm").count(QString::number(tempo)) == many + 1; }));
        EXPECT_TRUE(
            waitUntil([&] { return rows("name, star_rating").contains(QString("Song%1|5").arg(tempo)); }));
        // What the database says, and what could not be done for it: once, not for each bundle and attempt.
        EXPECT_EQ(messages.count("C: Exception caught in AwaitedTask::exec()!"), 1);
        EXPECT_LE(messages.count("C: Could not"), 1);
    }
    EXPECT_EQ(rows("name").size(), many + 2 + 3);
}

TEST_F(Following, WhatChangedAfterItsCheckHadReadIt) {
    m_monitor->stopMonitoring();
    const auto save = [&](std::int64_t tempo) {
        makeBundle("Song.logicx", TestBundle(tempo));
        m_monitor->directoryChanged(at("Song.logicx"), true);
    };
    {
        const LogCapture messages;
        const Lock lock(m_database.mainPath());
        save(150);
        ASSERT_TRUE(waitUntil([&] { return messages.count("BEGIN IMMEDIATE") > 0; }));
        save(160);
    }
    EXPECT_TRUE(waitUntil([&] { return rows("bpm").contains("160"); }));
}

TEST_F(Following, SaysWhichBundlesAreMissingAndLeavesTheirRecords) {
    const auto missing = [&](const QStringList& expected) {
        return waitUntil(
            [&] {
                auto paths = m_monitor->missingBundles().values();
                paths.sort();
                return paths == expected;
            },
            15);
    };
    const auto outside = m_disk.path() + "/outside";
    ASSERT_TRUE(QDir().mkpath(outside));
    const QString song = at("Song.logicx");
    const QString other = at("deep/er/Other.logicx");
    EXPECT_TRUE(missing({}));
    ASSERT_TRUE(QDir().rename(song, outside + "/Song.logicx"));
    EXPECT_TRUE(missing({song}));
    ASSERT_TRUE(QDir().rename(at("deep"), outside + "/deep"));
    EXPECT_TRUE(missing({song, other}));
    ASSERT_TRUE(QDir().rename(outside + "/Song.logicx", song));
    EXPECT_TRUE(missing({other}));
    ASSERT_TRUE(QDir().rename(outside + "/deep", at("deep")));
    EXPECT_TRUE(missing({}));
    // With no other event about it near, all that is told is that it was renamed.
    waitUntil([] { return false; }, 2);
    ASSERT_TRUE(QDir().rename(other, outside + "/Other.logicx"));
    EXPECT_TRUE(missing({other}));
    ASSERT_TRUE(QDir().rename(outside + "/Other.logicx", other));
    EXPECT_TRUE(missing({}));
    ASSERT_TRUE(QDir(song).removeRecursively());
    EXPECT_TRUE(missing({song}));
    // The whole folder, as when a drive is unplugged.
    const auto before = rows("name, filepath, star_rating, SUFID");
    ASSERT_TRUE(QDir().rename(m_disk.path() + "/root", outside + "/root"));
    EXPECT_TRUE(missing({song, other}));
    EXPECT_EQ(rows("name, filepath, star_rating, SUFID"), before);
    ASSERT_TRUE(QDir().rename(outside + "/root", m_disk.path() + "/root"));
    EXPECT_TRUE(missing({song}));
    EXPECT_EQ(rows("name, filepath, star_rating, SUFID"), before);
    stop();
    ASSERT_TRUE(QDir().rename(at("deep"), outside + "/deep"));
    ASSERT_TRUE(m_database.initialise());
    start();
    EXPECT_TRUE(missing({song, other}));
}

TEST_F(Following, StartsOnceALockedDatabaseAnswers) {
    stop();
    move("Song.logicx", "Renamed.logicx");
    std::optional<Lock> lock(m_database.rootPathsPath());
    m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks, std::chrono::milliseconds(100));
    const LogCapture messages;
    ASSERT_TRUE(
        waitUntil([&] { return messages.count("Could not retrieve root project search paths!") > 0; }, 30));
    lock.reset();
    ASSERT_TRUE(waitUntil([&] { return m_monitor->isWatching() && !m_monitor->isSearching(); }, 30));
    EXPECT_TRUE(shows({"Other", "Renamed"}));
}
