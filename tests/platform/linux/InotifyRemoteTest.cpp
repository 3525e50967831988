#include "WatchedFolder.h"
#include "platform/linux/MountTable.h"
#include "support/LogCapture.h"
#include "support/linux/MountPermission.h"

#include <sys/mount.h>

#include <atomic>
#include <future>
#include <sstream>

namespace Stemhaven {

namespace fs = std::filesystem;

namespace {

/// What has "Net" in its path is remote.
class NetIsRemote : public CallsWithoutNet {
public:
    int addWatch(int descriptor, const char* path, std::uint32_t mask) override {
        m_hasEntered = m_hasEntered || std::string(path).find("Net") != std::string::npos;
        return InotifyCalls::addWatch(descriptor, path, mask);
    }

    std::atomic<bool> m_hasEntered = false;
};

/// A file system that answers nothing until it is told to.
class HungFileSystem {
public:
    HungFileSystem() { m_state->mayAnswer = m_answers.get_future().share(); }

    ~HungFileSystem() { answer(); }

    HungFileSystem(const HungFileSystem&) = delete;
    HungFileSystem& operator=(const HungFileSystem&) = delete;

    TreeSnapshot::Taker taker() const {
        return [state =
                    m_state](const TreeSnapshot::Subject& subject, const TreeSnapshot::IsStopped& isStopped) {
            if (subject.top.ends_with("Hung")) {
                ++state->looks;
                state->mayAnswer.wait();
            }
            return TreeSnapshot::take(subject, isStopped);
        };
    }

    int looks() const { return m_state->looks; }

    void answer() {
        if (!std::exchange(m_hasAnswered, true))
            m_answers.set_value();
    }

private:
    struct State {
        std::shared_future<void> mayAnswer;
        std::atomic<int> looks = 0;
    };

    std::promise<void> m_answers;
    bool m_hasAnswered = false;
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

class InotifyRemote : public WatchedFolder {
protected:
    NetIsRemote m_calls;
};

} // namespace

TEST_F(InotifyRemote, IsToldByTheMountThatAPathLeadsTo) {
    fs::create_directories("real/local/nas");
    fs::create_directory_symlink("local", "real/link");
    fs::create_directory_symlink(top() / "real/local/nas", "absolute");
    fs::create_directory_symlink("../real/./link/nas/in", "real/relative");
    fs::create_directory_symlink("round", "round");
    const auto here = top().string();
    const QString mounts = "20 1 8:1 / / rw - ext4 /dev/sda rw\n"
                           "21 20 0:30 / %1/real/local/nas rw shared:1 master:2 - nfs4 server:/ rw\n"
                           "22 20 0:31 / %1/two\\040words\\012 rw - fuse.sshfs host: rw\n"
                           // Covered by the local one on top of it.
                           "23 20 0:32 / %1/stick rw - autofs systemd-1 rw\n"
                           "24 23 8:2 / %1/stick rw - vfat /dev/sdb rw\n"
                           // Not to be reached since something was mounted over the folder above.
                           "25 20 0:33 / %1/over/deep rw - cifs //host rw\n"
                           "26 20 8:3 / %1/over rw - ext4 /dev/sdc rw\n"
                           "broken line\n";
    std::istringstream text(mounts.arg(QString::fromStdString(here)).toStdString());
    const MountTable table(text);
    const std::vector<std::tuple<std::string, int, bool>> places{
        {"/real", 20, false},
        {"/real/local/nas", 21, true},
        {"/real/local/nas/a/b", 21, true},
        {"/real/local/nas2", 20, false},
        {"/real/link/nas/x", 21, true},
        {"/absolute/", 21, true},
        {"/real/relative", 21, true},
        {"/two words\n/x", 22, true},
        {"/stick/Music", 24, false},
        {"/over/deep", 26, false},
        {"/real/local/../local//nas", 21, true},
        {"/round/x", 20, false},
        {"/missing/x", 20, false}};
    for (const auto& [path, mount, isRemote] : places) {
        const auto place = table.find(here + path);
        EXPECT_EQ(place.mount, mount) << path;
        EXPECT_EQ(place.isRemote, isRemote) << path;
    }
    EXPECT_EQ(table.find(here + "/real/link").path, here + "/real/local");
    EXPECT_EQ(table.pointsBelow(here + "/real"), std::vector<std::string>{here + "/real/local/nas"});
    EXPECT_EQ(table.differences(MountTable()).size(), 7U);
    EXPECT_TRUE(table.differences(table).empty());
    // The system's own table has at least the mount that it is itself read from.
    EXPECT_EQ(MountTable::current().find("/proc/self").path.find("/proc/"), 0U);
    EXPECT_NE(MountTable::current().find("/proc/1").mount, MountTable::current().find("/").mount);
}

TEST_F(InotifyRemote, ARootThatDoesNotAnswerHoldsUpNothing) {
    HungFileSystem fileSystem;
    makeBundle("Net/Hung/A.logicx");
    makeBundle("Net/Lively/B.logicx");
    request().roots.append({at("Net/Hung"), at("Net/Lively")});
    request().strayBundles = {at("Net/Hung/Stray.logicx")};
    request().ancestors = {at("Net/Hung/")};
    const LogCapture log;
    // A search that finds something brings another stream, which is no reason for another look.
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(start({m_calls, 20ms, 50ms, fileSystem.taker()}));
        EXPECT_TRUE(becomes("Net/Hung", RootState::Missing));
        EXPECT_EQ(state("Music"), RootState::Watched);
        settle();
        const auto made = "Net/Lively/" + std::to_string(i) + ".logicx";
        makeBundle(made);
        EXPECT_TRUE(waitUntil([&] { return (flags()[made] & (created | modified)) != 0; }));
        EXPECT_EQ(fileSystem.looks(), 1);
        stream()->stop();
        EXPECT_TRUE(waitUntil([] { return !FileEventStream::earlierStreamIsClosing(); }));
    }
    EXPECT_EQ(log.count(QStringLiteral("Folder does not answer")), 1);
    EXPECT_FALSE(m_calls.m_hasEntered);
    EXPECT_FALSE(flags().contains("Net/Hung"));

    ASSERT_TRUE(start({m_calls, 20ms, 50ms, fileSystem.taker()}));
    ASSERT_TRUE(becomes("Net/Hung", RootState::Missing));
    fileSystem.answer();
    EXPECT_TRUE(becomes("Net/Hung", RootState::Polled));
    EXPECT_TRUE(waitFor("Net/Hung", scan));
    EXPECT_TRUE(waitFor("Net/Hung/A.logicx", modified));
    fs::remove_all("Net/Hung/A.logicx");
    EXPECT_TRUE(waitFor("Net/Hung/A.logicx", removed));
}

TEST_F(InotifyRemote, AMountInsideAWatchedFolderIsPolledAndTheRestIsWatched) {
    fs::create_directories("Music/Net");
    makeBundle("Music/A.logicx");
    for (const bool isThereFirst : {true, false}) {
        SCOPED_TRACE(isThereFirst);
        if (!isThereFirst) {
            ASSERT_TRUE(start({m_calls, 20ms}));
        }
        if (mount("none", "Music/Net", "tmpfs", 0, "size=1m") != 0) {
            EXPECT_EQ(runWhereMountingIsPermitted(), 0);
            return;
        }
        if (isThereFirst) {
            ASSERT_TRUE(start({m_calls, 20ms}));
        } else {
            EXPECT_TRUE(waitFor("Music/Net", scan));
        }
        m_calls.m_hasEntered = false;
        makeBundle("Music/Net/Deep/B.logicx");
        EXPECT_TRUE(waitUntil([&] { return flags().contains("Music/Net/Deep/B.logicx"); }));
        settleAndForget();
        fs::rename("Music/Net/Deep/B.logicx", "Music/Net/C.logicx");
        // As one move, or as two changes where a look was under way.
        EXPECT_TRUE(waitUntil([&] { return (flags()["Music/Net/C.logicx"] & (renamed | created)) != 0; }));
        EXPECT_TRUE(
            waitUntil([&] { return (flags()["Music/Net/Deep/B.logicx"] & (renamed | removed)) != 0; }));
        EXPECT_EQ(state("Music"), RootState::Watched);
        EXPECT_TRUE(isFollowed("Music/A.logicx"));
        EXPECT_FALSE(m_calls.m_hasEntered);

        settleAndForget();
        umount2("Music/Net", MNT_DETACH);
        EXPECT_TRUE(waitFor("Music", scan));
        settle();
        EXPECT_FALSE(flags().contains("Music/Net/C.logicx"));
        forgetEvents();
    }
}

} // namespace Stemhaven
