#include "monitor/MonitorFixture.h"
#include "project/NoteFile.h"

using namespace Stemhaven;

namespace {

class ProjectMonitorTest : public MonitorFixture {
protected:
    /// Starts a monitor that searches at once and waits for the search's end. How often it notified by then.
    int search() {
        QSettings().setValue(SettingsKeys::searchWasInProgress, true);
        int notifications = 0;
        bool started = false;
        m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks);
        QObject::connect(m_monitor.get(), &ProjectMonitor::projectsDbModified, [&] { ++notifications; });
        QObject::connect(m_monitor.get(), &ProjectMonitor::wasStarted, [&] { started = true; });
        EXPECT_TRUE(waitUntil([&] { return started && notifications > 0; }));
        settle();
        QObject::disconnect(m_monitor.get(), nullptr, nullptr, nullptr);
        return notifications;
    }

    /// Has one bundle checked as after an event; returns whether the window would have been told.
    bool change(const QString& relativePath) {
        bool notified = false;
        const auto connection =
            QObject::connect(m_monitor.get(), &ProjectMonitor::projectsDbModified, [&] { notified = true; });
        m_monitor->directoryChanged(at(relativePath), true);
        settle();
        QObject::disconnect(connection);
        return notified;
    }

    /// All that was asked for has been checked and told.
    void settle() {
        EXPECT_TRUE(waitUntil([&] { return !m_monitor->isChecking(); }));
        m_database.rows("SELECT 1");
        QCoreApplication::processEvents();
    }

    QStringList names() { return m_database.rows("SELECT name FROM projects ORDER BY name"); }

    QStringList row(const QString& name) {
        return m_database.rows(
            "SELECT project_id, filepath, star_rating FROM projects WHERE name='" + name + "' ORDER BY 1");
    }
};

} // namespace

TEST_F(ProjectMonitorTest, RecordsEveryBundleBelowTheRootsAndNotifiesOnce) {
    for (int i = 0; i < 60; ++i)
        makeBundle(QString("%1/Song %2.logicx").arg(i % 7).arg(i));
    makeBundle("Untitled 3.logicx");
    EXPECT_EQ(search(), 1);
    EXPECT_EQ(names().size(), 60);
    EXPECT_FALSE(names().contains("Untitled 3"));
    const auto note = loadStemhavenPlistDetails(ProjectDetails(at("0/Song 0.logicx")));
    ASSERT_TRUE(note.has_value());
    EXPECT_EQ(row("Song 0").value(0).section('|', 0, 0).toLongLong(), note->first);

    // A second start finds nothing new and writes nothing again.
    const auto before = m_database.rows("SELECT * FROM projects");
    stop();
    ASSERT_TRUE(m_database.initialise());
    search();
    EXPECT_EQ(m_database.rows("SELECT * FROM projects"), before);

    // A note that a killed program did not come to write is written by a later search.
    stop();
    ASSERT_TRUE(QFile::remove(at("0/Song 0.logicx/Resources/Stemhaven.plist")));
    ASSERT_TRUE(m_database.initialise());
    search();
    EXPECT_EQ(loadStemhavenPlistDetails(ProjectDetails(at("0/Song 0.logicx"))), note);
}

TEST_F(ProjectMonitorTest, PassesOverWhatCannotBeReadAndRecordsTheRest) {
    const auto write = [&](const QString& relativePath, const char* text) {
        QFile file(at(relativePath));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) >= 0);
    };
    const QString note = "Damaged note.logicx/Resources/Stemhaven.plist";
    for (const auto* bundle :
         {"Good.logicx", "Damaged.logicx", "Damaged note.logicx", "Last 'one' %1.logicx"})
        makeBundle(bundle);
    ASSERT_TRUE(QDir().mkpath(at("Empty.logicx")));
    write("Plain.logicx", "");
    write("Damaged.logicx/Resources/ProjectInformation.plist", "bplist00 but no more");
    write(note, "bplist00");
    TestBundle wrongType;
    wrongType.metaData["SongKey"] = true;
    makeBundle("Wrong.logicx", wrongType);

    LogCapture messages;
    search();
    EXPECT_EQ(names(), QStringList({"Good", "Last 'one' %1"}));
    for (const auto* skipped :
         {"Empty.logicx", "Plain.logicx", "Damaged.logicx", "Wrong.logicx", "Damaged note.logicx"}) {
        EXPECT_EQ(
            messages.count(
                QString("C: Skipping... Could not read project data for new project: ") + at(skipped)),
            1)
            << skipped;
    }

    ASSERT_TRUE(QFile::remove(at(note)));
    EXPECT_TRUE(change("Damaged note.logicx"));
    EXPECT_EQ(names(), QStringList({"Damaged note", "Good", "Last 'one' %1"}));
}

TEST_F(ProjectMonitorTest, KeepsTheRecordOfABundleThatMovesAcrossVolumesOrVanishes) {
    makeBundle("sub/Song.logicx");
    makeBundle("Gone.logicx");
    search();
    m_database.rows("UPDATE projects SET star_rating=5 WHERE name='Song'");
    const auto id = row("Song").value(0).section('|', 0, 0);

    // Copied with its note, then the first one deleted.
    std::filesystem::copy(
        at("sub/Song.logicx").toStdString(), at("Moved.logicx").toStdString(),
        std::filesystem::copy_options::recursive);
    ASSERT_TRUE(QDir(at("sub/Song.logicx")).removeRecursively());
    EXPECT_TRUE(change("Moved.logicx"));
    EXPECT_EQ(row("Moved"), QStringList(id + '|' + at("") + "|5"));
    EXPECT_TRUE(row("Song").isEmpty());

    // Vanished: nothing is written, and it can be checked again.
    ASSERT_TRUE(QDir(at("Gone.logicx")).removeRecursively());
    const auto before = m_database.rows("SELECT * FROM projects");
    EXPECT_FALSE(change("Gone.logicx"));
    EXPECT_EQ(m_database.rows("SELECT * FROM projects"), before);
    makeBundle("Gone.logicx");
    EXPECT_TRUE(change("Gone.logicx"));
}

TEST_F(ProjectMonitorTest, ABundleThatIsReachedByALinkAsWellKeepsThePathThatItHas) {
    makeBundle("real/Song.logicx");
    search();
    ASSERT_TRUE(QFile::link(at("real"), at("alias")));
    makeBundle("real/Song.logicx", TestBundle(180));
    EXPECT_TRUE(change("alias/Song.logicx"));
    const auto shown = [&] {
        return m_database.rows("SELECT filepath, bpm FROM projects");
    };
    EXPECT_EQ(shown(), QStringList(at("real/") + "|180"));

    // But not when nobody looks there any more.
    m_database.rootRows("UPDATE root_project_search_paths SET root_search_path='" + at("alias") + "'");
    m_monitor->updateWatchedDirs(true);
    EXPECT_TRUE(waitUntil([&] { return m_monitor->rootSearchPaths() == QStringList(at("alias/")); }));
    EXPECT_TRUE(change("alias/Song.logicx"));
    EXPECT_EQ(shown(), QStringList(at("alias/") + "|180"));
}

TEST_F(ProjectMonitorTest, ReadsANoteOfAnUnknownRecordByItsPath) {
    makeBundle("Song.logicx");
    search();
    // Neither the bundle's identity nor that of its note is on record, but its place is.
    m_database.rows("UPDATE projects SET star_rating=3, SUFID='7-7'");
    EXPECT_TRUE(change("Song.logicx"));
    EXPECT_EQ(m_database.rows("SELECT star_rating, SUFID='7-7' FROM projects"), QStringList("3|0"));
}

TEST_F(ProjectMonitorTest, DoesNotGiveTheStarsOfADeletedSongToTheNextOneWithItsNumber) {
    makeBundle("Old.logicx");
    search();
    m_database.rows("UPDATE projects SET star_rating=5, notes='mine'");
    const auto number = ProjectDetails(at("Old.logicx")).sufid.toString();

    // The file system gives the freed number to one of the next new folders; where it does not, the record is
    // given the new bundle's, which is the same to the program.
    ASSERT_TRUE(QDir(at("Old.logicx")).removeRecursively());
    makeBundle("New.logicx");
    const auto newNumber = ProjectDetails(at("New.logicx")).sufid.toString();
    if (newNumber != number)
        m_database.rows("UPDATE projects SET SUFID='" + newNumber + "'");

    EXPECT_TRUE(change("New.logicx"));
    EXPECT_EQ(
        m_database.rows("SELECT name, star_rating, notes, SUFID FROM projects WHERE name='Old'"),
        QStringList("Old|5|mine|"));
    EXPECT_EQ(
        m_database.rows("SELECT star_rating, SUFID FROM projects WHERE name='New'"),
        QStringList("0|" + newNumber));
}

TEST_F(ProjectMonitorTest, UpdatesTheFirstOfTwoRecordsWithOneIdentityAndStoresNoPair) {
    makeBundle("Song.logicx");
    search();
    m_database.rows(
        "INSERT INTO projects (filepath, filename, name, SUFID, bpm, number_of_tracks, sample_rate) "
        "SELECT filepath, filename, 'Twin', SUFID, 1, 1, 1 FROM projects");
    LogCapture messages;
    EXPECT_TRUE(change("Song.logicx"));
    EXPECT_EQ(messages.count("W: \tPossible duplicate found for 'Song'. project_id:2"), 1);
    EXPECT_EQ(messages.count("C: Possible duplicate insertion failed!"), 1);
    EXPECT_EQ(m_database.rows("SELECT bpm FROM projects WHERE project_id=2"), QStringList("1"));
    EXPECT_EQ(m_database.rows("SELECT count(*) FROM possible_duplicates"), QStringList("0"));
}

TEST_F(ProjectMonitorTest, TakesUpAnInterruptedSearchAndForgetsNoRestart) {
    for (int i = 0; i < 200; ++i)
        makeBundle(QString("Song %1.logicx").arg(i));
    QSettings().setValue(SettingsKeys::searchWasInProgress, true);
    m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks);
    ASSERT_TRUE(waitUntil([&] { return !names().isEmpty(); }));
    stop();
    EXPECT_TRUE(QSettings().value(SettingsKeys::searchWasInProgress).toBool());

    ASSERT_TRUE(m_database.initialise());
    EXPECT_LT(names().size(), 200);
    int starts = 0;
    m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks);
    QObject::connect(m_monitor.get(), &ProjectMonitor::wasStarted, [&] { ++starts; });
    ASSERT_TRUE(waitUntil([&] { return !names().isEmpty() && !m_monitor->rootSearchPaths().isEmpty(); }));
    m_monitor->searchForProjects(true);
    m_monitor->searchForProjects(false);
    ASSERT_TRUE(waitUntil([&] { return names().size() == 200 && starts > 0; }));
    EXPECT_TRUE(waitUntil([] { return !QSettings().value(SettingsKeys::searchWasInProgress).toBool(); }));
}

TEST_F(ProjectMonitorTest, ReadsTheRootsAnewWhenAskedTo) {
    const QTemporaryDir second;
    makeBundle("Song.logicx");
    search();
    TestBundle().write((second.path() + "/Other.logicx").toStdString());
    m_database.rootRows(RootPathStatements::insert(second.path()));
    m_monitor->requestUpdateWatchedDirs();
    m_monitor->restartMonitoring();
    EXPECT_TRUE(waitUntil([&] { return names() == QStringList({"Other", "Song"}); }));
    EXPECT_EQ(m_monitor->rootSearchPaths(), QStringList({at(""), second.path() + '/'}));

    m_database.rootRows("DELETE FROM root_project_search_paths");
    m_monitor->updateWatchedDirs(true);
    EXPECT_TRUE(waitUntil([&] { return m_monitor->rootSearchPaths().isEmpty(); }));
    EXPECT_EQ(names().size(), 2);
}

TEST_F(ProjectMonitorTest, SaysThatTheLastRootIsGoneAndFollowsItsProjectsStill) {
    makeBundle("Album/Song.logicx");
    search();
    const QString root = m_disk.path() + "/root";
    using State = ProjectMonitor::FolderState;
    EXPECT_EQ(m_monitor->stateOfFolder(root), State::Watched);
    EXPECT_EQ(m_monitor->stateOfFolder(root + "/Album"), State::Waiting);

    int changes = 0;
    bool ended = false;
    QObject::connect(m_monitor.get(), &ProjectMonitor::watchedFoldersChanged, [&] { ++changes; });
    QObject::connect(m_monitor.get(), &ProjectMonitor::searchEnded, [&] { ended = true; });
    m_database.rootRows(RootPathStatements::remove(root));
    m_monitor->requestUpdateWatchedDirs();
    m_monitor->restartMonitoring();
    ASSERT_TRUE(waitUntil([&] { return ended && m_monitor->isWatching(); }));
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(m_monitor->isSearching());
    EXPECT_EQ(m_monitor->stateOfFolder(root), State::Waiting);

    ASSERT_TRUE(QDir().rename(at("Album"), at("Best of")));
    EXPECT_TRUE(waitUntil(
        [&] { return m_database.rows("SELECT filepath FROM projects") == QStringList(at("Best of/")); }));
}

TEST_F(ProjectMonitorTest, RecordsAProjectOnceWhoseFolderIsWatchedTwice) {
    makeBundle("Album/Song.logicx");
    m_database.rootRows(RootPathStatements::insert(m_disk.path() + "/root/Album"));
    m_database.rootRows(RootPathStatements::insert(m_disk.path() + "/none"));
    search();
    EXPECT_EQ(m_monitor->stateOfFolder(m_disk.path() + "/root/Album"), ProjectMonitor::FolderState::Watched);
    EXPECT_EQ(m_monitor->stateOfFolder(m_disk.path() + "/none"), ProjectMonitor::FolderState::Missing);
    makeBundle("Album/Other.logicx");
    EXPECT_TRUE(waitUntil([&] { return names() == QStringList({"Other", "Song"}); }));
    change("Album/Other.logicx");
    EXPECT_EQ(names(), QStringList({"Other", "Song"}));
}

TEST_F(ProjectMonitorTest, EndsTheSearchOfARootThatIsTakenOffTheListMeanwhile) {
    for (int i = 0; i < 300; ++i)
        makeBundle(QString("%1/Song %2.logicx").arg(i % 7).arg(i));
    QSettings().setValue(SettingsKeys::searchWasInProgress, true);
    m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks);
    const QString root = m_disk.path() + "/root";
    ASSERT_TRUE(waitUntil([&] {
        return m_monitor->stateOfFolder(root) == ProjectMonitor::FolderState::Searched && !names().isEmpty();
    }));
    m_database.rootRows(RootPathStatements::remove(root));
    m_monitor->requestUpdateWatchedDirs();
    m_monitor->restartMonitoring();
    EXPECT_TRUE(waitUntil([&] { return !m_monitor->isSearching() && m_monitor->isWatching(); }));
    EXPECT_TRUE(m_monitor->rootSearchPaths().isEmpty());
    const auto recorded = names();
    EXPECT_EQ(QSet<QString>(recorded.begin(), recorded.end()).size(), recorded.size());
}
