#include "RestlessTree.h"
#include "WatchedFolder.h"

#include <atomic>
#include <cstdio>
#include <set>
#include <thread>
#include <utility>

namespace Stemhaven {

namespace fs = std::filesystem;

namespace {

/// Things change while the system is asked.
class RestlessCalls : public InotifyCalls {
public:
    explicit RestlessCalls(RestlessTree& tree) : m_tree(tree) {}

    int open() override { return m_descriptor = InotifyCalls::open(); }

    int addWatch(int descriptor, const char* path, std::uint32_t mask) override {
        m_tree.changeByChance();
        const int watch = InotifyCalls::addWatch(descriptor, path, mask);
        m_tree.changeByChance();
        return watch;
    }

    int removeWatch(int descriptor, int watch) override {
        m_tree.changeByChance();
        return InotifyCalls::removeWatch(descriptor, watch);
    }

    ssize_t read(int descriptor, void* buffer, std::size_t size) override {
        m_tree.changeByChance();
        return InotifyCalls::read(descriptor, buffer, size);
    }

    /// Of the folders that the system watches.
    std::multiset<std::uint64_t> watchedInodes() const {
        std::multiset<std::uint64_t> inodes;
        std::ifstream information("/proc/self/fdinfo/" + std::to_string(m_descriptor));
        for (std::string line; std::getline(information, line);) {
            unsigned long long inode = 0;
            if (std::sscanf(line.c_str(), "inotify wd:%*x ino:%llx", &inode) == 1)
                inodes.insert(inode);
        }
        return inodes;
    }

private:
    RestlessTree& m_tree;
    std::atomic<int> m_descriptor = -1;
};

class InotifyRaces : public WatchedFolder, public testing::WithParamInterface<int> {
protected:
    InotifyRaces() {
        request().roots.append(at("Archive"));
        request().latency = 20ms;
        m_tree.populate();
    }

    /// With paths relative to the top.
    using Told = std::vector<std::pair<std::string, FileEvent>>;

    void expectAllTold();
    void expectTold(const RestlessTree::Folder& folder, const Told& all);
    std::multiset<std::uint64_t> inodesInRoots();
    void expectAllWatched();

    const unsigned m_seed = static_cast<unsigned>(GTEST_FLAG_GET(random_seed) * 1000 + GetParam());
    const int m_changes = m_seed % 4 == 1 ? 6 : 60;
    RestlessTree m_tree{m_seed};
    RestlessCalls m_calls{m_tree};
};

void InotifyRaces::expectAllTold() {
    Told all;
    for (const auto& event : events())
        all.emplace_back(fs::path(event.path.toStdString()).lexically_relative(top()).string(), event);
    for (const auto& [path, event] : all)
        EXPECT_TRUE(isInRoot(path)) << path;
    for (const auto& folder : m_tree.folders()) {
        if (isBundle(folder.path) && isInRoot(folder.path))
            expectTold(folder, all);
    }
}

/// Whether those who are told, and look at the disk then, know where the bundle is.
void InotifyRaces::expectTold(const RestlessTree::Folder& folder, const Told& all) {
    bool isTold = folder.isKnown;
    std::set<std::string> halves;
    for (const auto& [path, event] : all) {
        if (event.fileID == folder.inode && (event.flags & renamed) != 0)
            halves.insert(path);
        if (event.eventID <= folder.since)
            continue;
        const bool isSearched = isAbove(path, folder.path) && (event.flags & (scan | renamed)) != 0;
        const bool isChecked = path == folder.path && (event.flags & (created | modified | removed)) != 0;
        const bool isPaired = path == folder.path && event.fileID == folder.inode && halves.size() > 1;
        isTold = isTold || isSearched || isChecked || isPaired;
    }
    EXPECT_TRUE(isTold) << folder.path << ' ' << folder.inode;
}

/// The inodes of all that is to be watched.
std::multiset<std::uint64_t> InotifyRaces::inodesInRoots() {
    std::multiset<std::uint64_t> inodes{inodeOf("/")};
    for (auto above = top(); above != above.parent_path(); above = above.parent_path())
        inodes.insert(inodeOf(above));
    for (const auto& folder : m_tree.folders()) {
        if (!isInRoot(folder.path))
            continue;
        inodes.insert(folder.inode);
        if (!isBundle(folder.path))
            continue;
        std::error_code isMissing;
        for (const fs::path part : {"Resources", "Alternatives"}) {
            if (fs::exists(folder.path / part))
                inodes.insert(inodeOf(folder.path / part));
        }
        for (const auto& part : fs::directory_iterator(folder.path + "/Alternatives", isMissing))
            inodes.insert(inodeOf(part.path()));
    }
    return inodes;
}

void InotifyRaces::expectAllWatched() {
    settleAndForget();
    Flags expected;
    for (const auto& folder : m_tree.folders()) {
        // Told by a bundle that is made in it, or by what is written into it.
        const bool isExpected = isInRoot(folder.path) && !folder.path.starts_with("Music/Sentinel");
        if (!isBundle(folder.path)) {
            fs::create_directory(folder.path + "/Probe.logicx");
            if (isExpected)
                expected[folder.path + "/Probe.logicx"] = created;
            continue;
        }
        for (const std::string part : {"", "/Resources", "/Alternatives/000"}) {
            if (!fs::exists(folder.path + part))
                continue;
            writeFile(folder.path + part + "/new");
            if (isExpected)
                expected[folder.path + part + "/new"] = created | modified;
        }
    }
    EXPECT_EQ(settledFlags(), expected);
}

} // namespace

TEST_P(InotifyRaces, LeaveEachBundleToldAndWatchedWhereItIs) {
    SCOPED_TRACE(m_seed);
    const bool startsInTheStorm = m_seed % 4 == 0;
    if (startsInTheStorm)
        m_tree.begin(m_changes);
    ASSERT_TRUE(start({m_calls, 5000ms}));
    if (!startsInTheStorm) {
        settleAndForget();
        m_tree.begin(m_changes);
    }
    while (m_tree.isRestless()) {
        m_tree.changeByChance();
        if (m_seed % 3 != 0)
            std::this_thread::sleep_for(std::chrono::microseconds(m_seed * 7919 % 2000));
    }
    settle();

    if (!startsInTheStorm)
        expectAllTold();
    EXPECT_TRUE(waitUntil([&] { return m_calls.watchedInodes() == inodesInRoots(); }, 5))
        << testing::PrintToString(m_calls.watchedInodes()) << testing::PrintToString(inodesInRoots());
    expectAllWatched();
}

INSTANTIATE_TEST_SUITE_P(Inotify, InotifyRaces, testing::Range(0, 6));

} // namespace Stemhaven
