#include "monitor/MonitorFixture.h"
#include "support/linux/DeadMount.h"

#include <filesystem>
#include <optional>

using namespace Stemhaven;

using RemoteRoot = MonitorFixture;

TEST_F(RemoteRoot, ThatDoesNotAnswerHoldsUpNeitherTheOthersNorTheEnd) {
    const QString remote = m_disk.path() + "/remote";
    ASSERT_TRUE(QDir().mkpath(remote));
    m_database.rootRows("DELETE FROM root_project_search_paths");
    m_database.rootRows(RootPathStatements::insert(remote));
    m_database.rootRows(RootPathStatements::insert(at("")));
    TestBundle().write((remote + "/Far.logicx").toStdString());
    makeBundle("Near.logicx");
    const auto records = [&] {
        return m_database.rows("SELECT name, star_rating FROM projects ORDER BY name");
    };
    const auto start = [&] {
        m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks, std::chrono::milliseconds(100));
        return waitUntil([&] { return m_monitor->isWatching() && !m_monitor->isSearching(); });
    };
    QSettings().setValue(SettingsKeys::searchWasInProgress, true);
    ASSERT_TRUE(start());
    ASSERT_EQ(records(), QStringList({"Far|0", "Near|0"}));
    m_database.rows("UPDATE projects SET star_rating=5 WHERE name='Far'");
    // A copy of the song whose place will not answer.
    std::filesystem::copy(
        (remote + "/Far.logicx").toStdString(), (m_disk.path() + "/Copy.logicx").toStdString(),
        std::filesystem::copy_options::recursive);
    stop();

    std::optional<DeadMount> mount(remote.toStdString());
    if (!mount->isMounted()) {
        GTEST_SKIP() << "no FUSE here, or no right to mount";
    }
    ASSERT_TRUE(m_database.initialise());
    QSettings().setValue(SettingsKeys::searchWasInProgress, true);
    ASSERT_TRUE(start());
    EXPECT_TRUE(m_monitor->missingBundles().contains(remote + "/Far.logicx"));
    ASSERT_TRUE(QDir().rename(m_disk.path() + "/Copy.logicx", at("Copy.logicx")));
    makeBundle("Near.logicx", TestBundle(180));
    EXPECT_TRUE(waitUntil([&] { return records().contains("Copy|5"); }));
    EXPECT_TRUE(waitUntil([&] { return m_database.rows("SELECT bpm FROM projects").contains("180"); }));
    // The end waits for a call that is under way, for as long as it would have been waited for.
    const QDeadlineTimer deadline(std::chrono::seconds(8));
    stop();
    EXPECT_FALSE(deadline.hasExpired());

    mount.reset();
    ASSERT_TRUE(m_database.initialise());
    ASSERT_TRUE(start());
    EXPECT_TRUE(waitUntil([&] { return m_monitor->missingBundles().isEmpty(); }));
    EXPECT_EQ(records(), QStringList({"Copy|5", "Far|5", "Near|0"}));
}
