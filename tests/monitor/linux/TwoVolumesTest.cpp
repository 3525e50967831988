#include "monitor/MonitorFixture.h"
#include "support/linux/MountPermission.h"

#include <sys/mount.h>

#include <chrono>
#include <filesystem>
#include <optional>

using namespace Stemhaven;

namespace {

class Volume {
public:
    explicit Volume(std::string point)
        : m_point(std::move(point)),
          m_isMounted(mount("none", m_point.c_str(), "tmpfs", 0, nullptr) == 0) {}

    ~Volume() {
        if (m_isMounted)
            umount2(m_point.c_str(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(Volume)

    bool isMounted() const { return m_isMounted; }

private:
    std::string m_point;
    bool m_isMounted;
};

/// Two roots, each a volume of its own, so that no volume within a root has it searched.
class TwoVolumes : public MonitorFixture {
protected:
    /// False where only another user may mount: the test is over then, having been run as that user.
    bool mountBoth() {
        EXPECT_TRUE(QDir().mkpath(at("one")) && QDir().mkpath(at("two")));
        m_one.emplace(at("one").toStdString());
        m_two.emplace(at("two").toStdString());
        if (!m_one->isMounted() || !m_two->isMounted()) {
            EXPECT_EQ(runWhereMountingIsPermitted(), 0);
            return false;
        }
        m_database.rootRows(
            "UPDATE root_project_search_paths SET root_search_path=root_search_path || '/one'");
        m_database.rootRows(RootPathStatements::insert(at("two")));
        return true;
    }

    void start() {
        QSettings().setValue(SettingsKeys::searchWasInProgress, true);
        m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks, std::chrono::milliseconds(100));
    }

    void TearDown() override { m_monitor.reset(); }

private:
    std::optional<Volume> m_one;
    std::optional<Volume> m_two;
};

} // namespace

TEST_F(TwoVolumes, BundlesOfTheSameNumberAreFollowedAtOnce) {
    LogCapture messages;
    if (!mountBoth())
        return;
    makeBundle("one/0.logicx");
    makeBundle("two/0.logicx");
    ASSERT_EQ(ProjectDetails(at("one/0.logicx")).sufid.inode, ProjectDetails(at("two/0.logicx")).sufid.inode);
    start();
    const auto becomes = [&](const QString& name) {
        return waitUntil(
            [&] {
                const auto paths = m_database.rows("SELECT filepath || filename FROM projects ORDER BY 1");
                return paths == QStringList{at("one/" + name), at("two/" + name)} &&
                    m_monitor->isWatching() && !m_monitor->isSearching() && !m_monitor->isChecking();
            },
            15);
    };
    ASSERT_TRUE(becomes("0.logicx"));
    // A search would find them, and another one may follow each.
    int searches = 0;
    const auto isSearchedAgain = [&] {
        return messages.count("Beginning search") > searches;
    };
    while (waitUntil(isSearchedAgain, 1))
        searches = messages.count("Beginning search");
    ASSERT_TRUE(QFile::rename(at("one/0.logicx"), at("one/1.logicx")));
    ASSERT_TRUE(QFile::rename(at("two/0.logicx"), at("two/1.logicx")));
    EXPECT_TRUE(becomes("1.logicx"));
}

TEST_F(TwoVolumes, ABundleThatIsCopiedToTheOtherAndThenDeletedKeepsItsStars) {
    namespace fs = std::filesystem;
    if (!mountBoth())
        return;
    // As `mv` does it.
    const auto copy = [&](const QString& name) {
        const fs::path from(at("one/" + name).toStdString());
        const fs::path to(at("two/" + name).toStdString());
        fs::copy(from, to, fs::copy_options::recursive);
        const auto* const information = "Resources/ProjectInformation.plist";
        fs::last_write_time(to / information, fs::last_write_time(from / information));
    };
    const auto becomes = [&](const QStringList& expected) {
        return waitUntil(
            [&] {
                return expected ==
                    m_database.rows("SELECT substr(filepath, -4) || filename, star_rating FROM projects "
                                    "ORDER BY filepath || filename");
            },
            15);
    };
    makeBundle("one/0.logicx");
    makeBundle("one/1.logicx");
    makeBundle("one/2.logicx");
    start();
    ASSERT_TRUE(becomes({"one/0.logicx|0", "one/1.logicx|0", "one/2.logicx|0"}));
    m_database.rows("UPDATE projects SET star_rating=5");
    ASSERT_TRUE(waitUntil([&] { return !m_monitor->isSearching() && !m_monitor->isChecking(); }));
    copy("0.logicx");
    copy("1.logicx");
    ASSERT_TRUE(
        becomes({"one/0.logicx|5", "one/1.logicx|5", "one/2.logicx|5", "two/0.logicx|0", "two/1.logicx|0"}));
    m_database.rows("UPDATE projects SET star_rating=2 WHERE filepath || filename LIKE '%two/1.logicx'");
    ASSERT_TRUE(QDir(at("one/1.logicx")).removeRecursively() && QDir(at("one/0.logicx")).removeRecursively());
    EXPECT_TRUE(
        becomes({"one/0.logicx|5", "one/1.logicx|5", "one/2.logicx|5", "two/0.logicx|5", "two/1.logicx|2"}));
}
