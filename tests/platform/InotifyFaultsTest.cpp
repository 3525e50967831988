#include "WatchedFolder.h"
#include "platform/linux/ClosingStreams.h"
#include "support/LogCapture.h"

#include <sys/inotify.h>
#include <sys/mount.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <future>
#include <thread>

namespace Stemhaven {

namespace fs = std::filesystem;

namespace {

class FaultyCalls : public InotifyCalls {
public:
    int open() override { return m_refusesToOpen ? refuse(EMFILE) : InotifyCalls::open(); }

    int addWatch(int descriptor, const char* path, std::uint32_t mask) override {
        if (!m_mayEnter && std::strstr(path, "NoEntry") != nullptr)
            return refuse(EACCES);
        if (std::strstr(path, "Hung") != nullptr) {
            m_isHanging = true;
            m_answers.get_future().wait();
        }
        if (std::strstr(path, "Big") != nullptr && m_limit-- <= 0)
            return refuse(ENOSPC);
        return InotifyCalls::addWatch(descriptor, path, mask);
    }

    /// Puts an event of the test's own before those of the system, which must have some.
    ssize_t read(int descriptor, void* buffer, std::size_t size) override {
        const auto injected = m_injectedMask.exchange(0);
        if (injected == 0)
            return InotifyCalls::read(descriptor, buffer, size);
        // What the system had to say is lost.
        (void)InotifyCalls::read(descriptor, buffer, size);
        const inotify_event event{(injected & IN_Q_OVERFLOW) != 0 ? -1 : 1'000'000, injected, 0, 0};
        std::memcpy(buffer, &event, sizeof event);
        return sizeof event;
    }

    bool tellsEvents(const char* path) override { return std::strstr(path, "Net") == nullptr; }

    bool m_refusesToOpen = false;
    std::atomic<bool> m_mayEnter = false;
    std::atomic<int> m_limit = 0;
    std::atomic<std::uint32_t> m_injectedMask = 0;
    std::atomic<bool> m_isHanging = false;
    std::promise<void> m_answers;

private:
    static int refuse(int error) {
        errno = error;
        return -1;
    }
};

/// A drive that holds nothing yet, for as long as it lives.
class Mount {
public:
    explicit Mount(const fs::path& point)
        : m_point(point),
          m_isMounted(mount("none", point.c_str(), "tmpfs", 0, "size=1m") == 0) {}

    ~Mount() {
        if (m_isMounted)
            umount2(m_point.c_str(), MNT_DETACH);
    }

    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;

    bool isMounted() const { return m_isMounted; }

private:
    fs::path m_point;
    bool m_isMounted;
};

/// Runs the current test once more, where an ordinary user may mount. Nothing where the system allows that to
/// nobody.
std::optional<int> runWhereMountingIsPermitted() {
    const auto inOwnNamespace = [](const std::string& command) {
        const auto whole = "unshare --user --map-root-user --mount " + command;
        return std::system(whole.c_str()); // NOLINT(cert-env33-c,concurrency-mt-unsafe)
    };
    if (inOwnNamespace("true 2>/dev/null") != 0)
        return std::nullopt;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    return inOwnNamespace(
        fs::read_symlink("/proc/self/exe").string() + " --gtest_filter=" + test->test_suite_name() + "." +
        test->name());
}

class InotifyFaults : public WatchedFolder {
protected:
    static QString text(const fs::path& path) { return QString::fromStdString(path.string()); }

    FaultyCalls m_calls;
};

} // namespace

TEST_F(InotifyFaults, AfterLostEventsTheDiskIsLookedAt) {
    makeBundle(root() / "A.logicx");
    for (const std::uint32_t mask : {std::uint32_t{IN_Q_OVERFLOW}, std::uint32_t{IN_CREATE}}) {
        const LogCapture log;
        ASSERT_TRUE(start({m_calls, 5000ms}));
        settle();
        forgetEvents();
        m_calls.m_injectedMask = mask;
        writeFile(root() / "A.logicx/Resources/ProjectInformation.plist", "lost");
        EXPECT_TRUE(waitFor("Music", scan));
        EXPECT_TRUE(waitFor("Music/A.logicx", modified));
        EXPECT_EQ(log.count(QStringLiteral("were lost")), 1);

        settle();
        forgetEvents();
        writeFile(root() / "A.logicx/Alternatives/000/MetaData.plist", "seen");
        EXPECT_TRUE(waitFor("Music/A.logicx/Alternatives/000/MetaData.plist", modified));
    }
}

TEST_F(InotifyFaults, ARootBeyondTheLimitIsPolled) {
    const auto big = top() / "Big";
    for (int i = 0; i < 10; ++i)
        makeBundle(big / (std::to_string(i) + ".logicx"));
    request().roots.append(text(big));
    m_calls.m_limit = 12;
    const LogCapture log;
    ASSERT_TRUE(start({m_calls, 20ms}));
    EXPECT_EQ(stream()->stateOf(text(big) + QLatin1Char('/')), FileEventStream::RootState::Polled);
    EXPECT_EQ(stream()->stateOf(text(root())), FileEventStream::RootState::Watched);
    EXPECT_EQ(log.count(QStringLiteral("fs.inotify.max_user_watches=")), 1);

    const auto inode = inodeOf(big / "1.logicx");
    writeFile(big / "0.logicx/Alternatives/000/MetaData.plist", "longer text");
    EXPECT_TRUE(waitFor("Big/0.logicx", modified));
    fs::create_directory(big / "Deep");
    fs::rename(big / "1.logicx", big / "Deep/New.logicx");
    EXPECT_TRUE(waitFor("Big/Deep/New.logicx", renamed));
    EXPECT_EQ(fileID("Big/1.logicx", renamed), inode);
    EXPECT_EQ(fileID("Big/Deep/New.logicx", renamed), inode);
    makeBundle(big / "More.logicx");
    EXPECT_TRUE(waitFor("Big/More.logicx", created));
    fs::remove_all(big / "2.logicx");
    EXPECT_TRUE(waitFor("Big/2.logicx", removed));
    EXPECT_EQ(log.count(QStringLiteral("every few seconds: ")), 1);
}

TEST_F(InotifyFaults, TheLimitCanBeReachedLater) {
    fs::create_directories(top() / "Big");
    request().roots = {text(top() / "Big"), text(root())};
    m_calls.m_limit = 3;
    const LogCapture log;
    ASSERT_TRUE(start({m_calls, 20ms}));
    ASSERT_EQ(stream()->stateOf(text(top() / "Big")), FileEventStream::RootState::Watched);
    makeBundle(top() / "Big/A.logicx");
    makeBundle(top() / "Big/B.logicx");
    EXPECT_TRUE(waitFor("Big/B.logicx", modified) || waitFor("Big/B.logicx", created));
    EXPECT_TRUE(waitFor("Big", scan));
    EXPECT_EQ(stream()->stateOf(text(top() / "Big")), FileEventStream::RootState::Polled);
    EXPECT_EQ(log.count(QStringLiteral("fs.inotify.max_user_watches=")), 1);
}

TEST_F(InotifyFaults, AFileSystemWithoutEventsIsPolledAndNothingIsDeletedWithIt) {
    const auto net = top() / "Net";
    makeBundle(net / "A.logicx");
    request().roots.append(text(net));
    ASSERT_TRUE(start({m_calls, 20ms}));
    EXPECT_EQ(stream()->stateOf(text(net)), FileEventStream::RootState::Polled);

    fs::rename(net, top() / "Away");
    EXPECT_TRUE(
        waitUntil([&] { return stream()->stateOf(text(net)) == FileEventStream::RootState::Missing; }));
    fs::rename(top() / "Away", net);
    EXPECT_TRUE(
        waitUntil([&] { return stream()->stateOf(text(net)) == FileEventStream::RootState::Polled; }));
    writeFile(net / "A.logicx/Resources/ProjectInformation.plist", "longer text");
    EXPECT_TRUE(waitFor("Net/A.logicx", modified));
    EXPECT_EQ(flags(), (Flags{{"Net", scan}, {"Net/A.logicx", modified}}));
}

TEST_F(InotifyFaults, ARootGoesAndComesBack) {
    makeBundle(root() / "Songs/A.logicx");
    const auto state = [this] {
        return stream()->stateOf(text(root()));
    };
    ASSERT_TRUE(start());

    fs::rename(root(), top() / "Away");
    EXPECT_TRUE(waitFor("Music", renamed | scan));
    EXPECT_EQ(state(), FileEventStream::RootState::Missing);
    forgetEvents();
    writeFile(top() / "Away/Songs/A.logicx/Resources/ProjectInformation.plist", "unseen");
    fs::rename(top() / "Away", root());
    EXPECT_TRUE(waitFor("Music", scan));
    // Changed while it was away.
    EXPECT_TRUE(waitFor("Music/Songs/A.logicx", modified));
    EXPECT_EQ(state(), FileEventStream::RootState::Watched);
    EXPECT_EQ(flags().size(), 2U) << testing::PrintToString(flags());

    settle();
    forgetEvents();
    saveOver(root() / "Songs/A.logicx/Resources/ProjectInformation.plist");
    EXPECT_TRUE(waitFor("Music/Songs/A.logicx/Resources/ProjectInformation.plist", renamed));
}

TEST_F(InotifyFaults, ARootThatIsMissingIsFoundHoweverDeepItComes) {
    const auto deep = top() / "Media/user/Drive/Music";
    request().roots = {text(deep), text(root())};
    ASSERT_TRUE(start());
    EXPECT_EQ(stream()->stateOf(text(deep)), FileEventStream::RootState::Missing);

    for (int round = 0; round < 2; ++round) {
        makeBundle(deep / "A.logicx");
        EXPECT_TRUE(waitFor("Media/user/Drive/Music", scan));
        EXPECT_TRUE(
            waitUntil([&] { return stream()->stateOf(text(deep)) == FileEventStream::RootState::Watched; }));
        settle();
        forgetEvents();
        writeFile(deep / "A.logicx/Resources/new");
        EXPECT_TRUE(waitFor("Media/user/Drive/Music/A.logicx/Resources/new", created));

        // A folder above goes.
        fs::rename(top() / "Media", top() / ("Gone" + std::to_string(round)));
        EXPECT_TRUE(
            waitUntil([&] { return stream()->stateOf(text(deep)) == FileEventStream::RootState::Missing; }));
        settle();
        forgetEvents();
    }
}

TEST_F(InotifyFaults, ADriveIsPluggedInAndPulledOut) {
    // At the place of the root itself, and of a folder below it.
    for (const auto& [folder, searched] : {std::pair{"Drive", "Drive"}, std::pair{"Music/Drive", "Music"}}) {
        const auto drive = top() / folder;
        fs::create_directories(drive);
        if (folder == std::string("Drive"))
            request().roots.append(text(drive));
        forgetEvents();
        ASSERT_TRUE(start());
        {
            const Mount mount(drive);
            if (!mount.isMounted()) {
                const auto status = runWhereMountingIsPermitted();
                if (!status)
                    GTEST_SKIP() << "The system lets nobody but the administrator mount.";
                EXPECT_EQ(*status, 0);
                return;
            }
            EXPECT_TRUE(waitFor(searched, scan));
            makeBundle(drive / "A.logicx");
            EXPECT_TRUE(waitFor(folder + std::string("/A.logicx"), created));
            settle();
            forgetEvents();
            writeFile(drive / "A.logicx/Resources/new");
            EXPECT_TRUE(waitFor(folder + std::string("/A.logicx/Resources/new"), created));
            settle();
            forgetEvents();
        }
        EXPECT_TRUE(waitFor(searched, scan));
        EXPECT_EQ(settledFlags(), (Flags{{searched, scan}}));
    }
}

TEST_F(InotifyFaults, AFolderThatMayNotBeReadIsLoggedOnceAndWatchedWhenItMay) {
    makeBundle(root() / "NoEntry/A.logicx");
    makeBundle(root() / "Open/B.logicx");
    const LogCapture log;
    ASSERT_TRUE(start({m_calls, 5000ms}));
    m_calls.m_injectedMask = IN_Q_OVERFLOW;
    writeFile(root() / "Open/B.logicx/Resources/lost");
    EXPECT_TRUE(waitFor("Music", scan));
    writeFile(root() / "Open/B.logicx/Resources/new");
    EXPECT_TRUE(waitFor("Music/Open/B.logicx/Resources/new", created));
    EXPECT_EQ(log.count(QStringLiteral("NoEntry")), 1);

    m_calls.m_mayEnter = true;
    fs::permissions(root() / "NoEntry", fs::perms::owner_all);
    EXPECT_TRUE(waitFor("Music/NoEntry/A.logicx", created));
    writeFile(root() / "NoEntry/A.logicx/Resources/new");
    EXPECT_TRUE(waitFor("Music/NoEntry/A.logicx/Resources/new", created));
}

TEST_F(InotifyFaults, FoldersMayVanishWhileTheyAreLookedAt) {
    ASSERT_TRUE(start());
    for (int i = 0; i < 50; ++i) {
        makeBundle(root() / "Passing/Deep/A.logicx");
        fs::remove_all(root() / "Passing");
    }
    makeBundle(root() / "Passing/Deep/A.logicx");
    settle();
    forgetEvents();
    writeFile(root() / "Passing/Deep/A.logicx/Resources/new");
    EXPECT_TRUE(waitFor("Music/Passing/Deep/A.logicx/Resources/new", created));
}

TEST_F(InotifyFaults, ASystemThatGivesNoDescriptorIsToldAtTheStart) {
    m_calls.m_refusesToOpen = true;
    const LogCapture log;
    EXPECT_FALSE(start({m_calls, 5000ms}));
    EXPECT_EQ(log.count(QStringLiteral("max_user_instances")), 1);
}

TEST_F(InotifyFaults, TheStreamCanBeStoppedAndDestroyedByItsHandler) {
    for (const bool destroys : {false, true}) {
        std::unique_ptr<FileEventStream> stopped;
        std::promise<void> entered;
        std::promise<void> mayLeave;
        std::promise<void> left;
        std::atomic<int> calls = 0;
        stopped = FileEventStream::create(request(), [&](const QList<FileEvent>&) {
            ++calls;
            if (destroys)
                stopped.reset();
            else
                stopped->stop();
            entered.set_value();
            mayLeave.get_future().wait();
            left.set_value();
        });
        ASSERT_TRUE(stopped->start());
        makeBundle(root() / (destroys ? "B.logicx" : "A.logicx"));
        entered.get_future().wait();
        EXPECT_TRUE(FileEventStream::earlierStreamIsClosing());
        mayLeave.set_value();
        left.get_future().wait();
        stopped.reset();
        EXPECT_TRUE(waitUntil([] { return !FileEventStream::earlierStreamIsClosing(); }));
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(InotifyFaults, StopDoesNotWaitForAFileSystemThatDoesNotAnswer) {
    ASSERT_TRUE(start({m_calls, 5000ms, 10ms}));
    fs::create_directory(root() / "Hung");
    ASSERT_TRUE(waitUntil([&] { return m_calls.m_isHanging.load(); }));
    stream()->stop();
    stream().reset();
    EXPECT_TRUE(FileEventStream::earlierStreamIsClosing());
    m_calls.m_answers.set_value();
    EXPECT_TRUE(waitUntil([] { return !FileEventStream::earlierStreamIsClosing(); }));
}

TEST_F(InotifyFaults, StopWaitsForTheHandlerAndEndsAStart) {
    ASSERT_TRUE(start());
    makeBundle(root() / "A.logicx");
    stream()->stop();
    const auto told = events().size();
    makeBundle(root() / "B.logicx");
    EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
    EXPECT_FALSE(stream()->start());
    stream()->stop();
    EXPECT_EQ(events().size(), told);
    {
        const ClosingStreams::Hold hold;
        EXPECT_TRUE(FileEventStream::earlierStreamIsClosing());
    }
    EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
}

} // namespace Stemhaven
