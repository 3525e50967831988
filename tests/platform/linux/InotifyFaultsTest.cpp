#include "WatchedFolder.h"
#include "platform/linux/BundleStamp.h"
#include "support/LogCapture.h"
#include "support/linux/MountPermission.h"

#include <sys/inotify.h>
#include <sys/mount.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <future>
#include <set>
#include <stdexcept>

namespace Stemhaven {

namespace fs = std::filesystem;

namespace {

class FaultyCalls : public CallsWithoutNet {
public:
    int open() override { return m_refusals-- > 0 ? refuse(EMFILE) : InotifyCalls::open(); }

    int addWatch(int descriptor, const char* path, std::uint32_t mask) override {
        const fs::path folder(path);
        if (folder.parent_path().filename() == "Alternatives") {
            const std::lock_guard lock(m_alternativesMutex);
            m_alternatives.insert(folder.filename().string());
        }
        if (std::strstr(path, "New") != nullptr && m_throws.exchange(false))
            throw std::runtime_error("thrown");
        if (!m_mayEnter && std::strstr(path, "NoEntry") != nullptr)
            return refuse(EACCES);
        if (std::strstr(path, "Hung") != nullptr) {
            m_isHanging = true;
            m_answers.get_future().wait();
        }
        if (std::strstr(path, "Big") != nullptr && m_limit-- <= 0)
            return refuse(ENOSPC);
        const int watch = InotifyCalls::addWatch(descriptor, path, mask);
        if (folder.filename() == "Restless.logicx" && fs::exists(folder))
            fs::rename(folder, folder.parent_path() / "Settled.logicx");
        return watch;
    }

    /// Puts an event of the test's own before those of the system, which must have some.
    ssize_t read(int descriptor, void* buffer, std::size_t size) override {
        if (const int error = m_readError.exchange(0))
            return refuse(error);
        const auto injected = m_injectedMask.exchange(0);
        if (injected == 0)
            return InotifyCalls::read(descriptor, buffer, size);
        // What the system had to say is lost.
        (void)InotifyCalls::read(descriptor, buffer, size);
        const inotify_event event{(injected & IN_Q_OVERFLOW) != 0 ? -1 : 1'000'000, injected, 0, 0};
        std::memcpy(buffer, &event, sizeof event);
        return sizeof event;
    }

    std::atomic<int> m_refusals = 0;
    std::atomic<int> m_readError = 0;
    std::atomic<bool> m_throws = false;
    std::atomic<bool> m_mayEnter = false;
    std::atomic<int> m_limit = 0;
    std::atomic<std::uint32_t> m_injectedMask = 0;
    std::atomic<bool> m_isHanging = false;
    std::promise<void> m_answers;

    /// Of all bundles, those that a watch was asked for.
    std::set<std::string> watchedAlternatives() {
        const std::lock_guard lock(m_alternativesMutex);
        return m_alternatives;
    }

private:
    std::mutex m_alternativesMutex;
    std::set<std::string> m_alternatives;

    static int refuse(int error) {
        errno = error;
        return -1;
    }
};

class InotifyFaults : public WatchedFolder {
protected:
    FaultyCalls m_calls;
};

} // namespace

TEST_F(InotifyFaults, AfterLostEventsTheDiskIsLookedAt) {
    struct Fault {
        const char* reason;
        std::uint32_t injectedMask = 0;
        int readError = 0;
        bool throws = false;
        int refusals = 0;
    };

    makeBundle("Music/A.logicx");
    const Fault faults[] = {
        {"were lost.", IN_Q_OVERFLOW},
        {"were lost.", IN_CREATE},
        {.reason = "cannot be read: read: ", .readError = EIO},
        {.reason = "could not be handled.", .throws = true},
        {.reason = "gives no file system events", .injectedMask = IN_Q_OVERFLOW, .refusals = 2},
    };
    int made = 0;
    for (const auto& [reason, injectedMask, readError, throws, refusals] : faults) {
        SCOPED_TRACE(reason);
        const LogCapture log;
        ASSERT_TRUE(start({m_calls}));
        settleAndForget();
        m_calls.m_refusals = refusals;
        m_calls.m_readError = readError;
        m_calls.m_throws = throws;
        m_calls.m_injectedMask = injectedMask;
        fs::create_directory("Music/New" + std::to_string(++made));
        writeFile("Music/A.logicx/Resources/ProjectInformation.plist", "lost");
        EXPECT_TRUE(waitFor("Music", scan));
        EXPECT_TRUE(waitFor("Music/A.logicx", modified));
        EXPECT_EQ(log.count(QStringLiteral("Looking at all folders again.")), 1);
        EXPECT_GE(log.count(reason), 1);
        // What led to it.
        EXPECT_EQ(log.count(QStringLiteral("steps of the file events")), 1);
        EXPECT_GE(log.count(QStringLiteral("system: CREATE|ISDIR watch ")), 1);
        EXPECT_GE(log.count(QStringLiteral("told: created fileID ")), 1);

        expectAllFollowed();
    }
}

TEST_F(InotifyFaults, OnlyWhatCanBeAnAlternativeTakesAWatchHoweverMuchLiesBesideIt) {
    const fs::path alternatives = "Music/A.logicx/Alternatives";
    const auto fill = [&](int first, int last) {
        for (int i = first; i < last; ++i)
            fs::create_directory(alternatives / ("1" + std::to_string(1000 + i)));
    };
    makeBundle("Music/A.logicx");
    fs::create_directory(alternatives / "001");
    fs::create_directory(alternatives / "7");
    fs::create_directory_symlink("001", alternatives / "002");
    writeFile(alternatives / "003");
    for (const int others : {0, 5000}) {
        SCOPED_TRACE(others);
        fill(0, others);
        ASSERT_TRUE(start({m_calls}));
        EXPECT_EQ(m_calls.watchedAlternatives(), (std::set<std::string>{"000", "001"}));
        const auto before = BundleStamp::of("Music/A.logicx");
        writeFile(alternatives / "001/MetaData.plist", std::string(1 + others, 'x'));
        EXPECT_NE(BundleStamp::of("Music/A.logicx"), before);
    }
    settleAndForget();
    fill(5000, 5050);
    fs::create_directory(alternatives / "010");
    ASSERT_TRUE(waitFor(alternatives / "010", created));
    EXPECT_EQ(m_calls.watchedAlternatives(), (std::set<std::string>{"000", "001", "010"}));
    // Together they are one event.
    EXPECT_EQ(flags(), (Flags{{alternatives, modified}, {alternatives / "010", created}}));
    writeFile(alternatives / "010/MetaData.plist");
    EXPECT_TRUE(waitFor(alternatives / "010/MetaData.plist", modified));
}

TEST_F(InotifyFaults, AHandlerThatThrowsIsCalledAgain) {
    std::atomic<int> calls = 0;
    const LogCapture log;
    const auto throwing = FileEventStream::create(request(), [&](const QList<FileEvent>&) {
        ++calls;
        throw std::runtime_error("thrown by the handler");
    });
    ASSERT_TRUE(throwing->start());
    for (int i = 1; i <= 2; ++i) {
        makeBundle("Music/" + std::to_string(i) + ".logicx");
        EXPECT_TRUE(waitUntil([&] { return calls >= i; }));
    }
    EXPECT_TRUE(waitUntil([&] { return log.count(QStringLiteral("thrown by the handler")) >= 2; }));
}

TEST_F(InotifyFaults, ABundleThatLeavesWhileItsWatchIsSetKeepsItsIdentity) {
    for (const std::string from : {"Music/A.logicx", "Outside/B.logicx"}) {
        SCOPED_TRACE(from);
        const bool isNew = from.starts_with("Outside");
        makeBundle(from);
        const auto inode = inodeOf(from);
        ASSERT_TRUE(start({m_calls}));
        fs::rename(from, "Music/Restless.logicx");
        EXPECT_TRUE(waitFor("Music/Settled.logicx", renamed));
        EXPECT_EQ(settledFlags()["Music/Settled.logicx"], isNew ? renamed | created : renamed);
        EXPECT_EQ(fileID("Music/Settled.logicx", renamed), inode);
        expectAllFollowed();
        fs::remove_all("Music/Settled.logicx");
        settleAndForget();
    }
}

TEST_F(InotifyFaults, ARootBeyondTheLimitOrWithoutEventsIsPolledAndNothingIsDeletedWithIt) {
    for (int i = 0; i < 10; ++i)
        makeBundle("Big/" + std::to_string(i) + ".logicx");
    makeBundle("Bigger/A.logicx");
    makeBundle("Net/A.logicx");
    request().roots.append({at("Big"), at("Bigger"), at("Net")});
    m_calls.m_limit = 12;
    const LogCapture log;
    // The second stream, as after a search that found something, has nothing new to say of them.
    ASSERT_TRUE(start({m_calls, 20ms}));
    ASSERT_TRUE(start({m_calls, 20ms}));
    EXPECT_EQ(state("Big/"), RootState::Polled);
    EXPECT_EQ(state("Bigger"), RootState::Polled);
    EXPECT_EQ(state("Net"), RootState::Polled);
    EXPECT_EQ(state("Music"), RootState::Watched);
    EXPECT_EQ(log.count(QStringLiteral("fs.inotify.max_user_watches=")), 1);

    const auto inode = inodeOf("Big/1.logicx");
    writeFile("Big/0.logicx/Alternatives/000/MetaData.plist", "longer text");
    EXPECT_TRUE(waitFor("Big/0.logicx", modified));
    fs::create_directory("Big/Deep");
    fs::rename("Big/1.logicx", "Big/Deep/New.logicx");
    EXPECT_TRUE(waitFor("Big/Deep/New.logicx", renamed));
    EXPECT_EQ(fileID("Big/1.logicx", renamed), inode);
    EXPECT_EQ(fileID("Big/Deep/New.logicx", renamed), inode);
    makeBundle("Big/More.logicx");
    EXPECT_TRUE(waitFor("Big/More.logicx", created));
    fs::remove_all("Big/2.logicx");
    EXPECT_TRUE(waitFor("Big/2.logicx", removed));

    forgetEvents();
    fs::rename("Net", "Away");
    EXPECT_TRUE(becomes("Net", RootState::Missing));
    fs::rename("Away", "Net");
    EXPECT_TRUE(becomes("Net", RootState::Polled));
    writeFile("Net/A.logicx/Resources/ProjectInformation.plist", "longer text");
    EXPECT_TRUE(waitFor("Net/A.logicx", modified));
    EXPECT_EQ(flags(), (Flags{{"Net", scan}, {"Net/A.logicx", modified}}));
    // Once for each.
    EXPECT_EQ(log.count(QStringLiteral("every few seconds: ")), 3);
}

TEST_F(InotifyFaults, TheLimitCanBeReachedLater) {
    fs::create_directory("Big");
    request().roots.prepend(at("Big"));
    m_calls.m_limit = 3;
    const LogCapture log;
    ASSERT_TRUE(start({m_calls, 20ms}));
    ASSERT_EQ(state("Big"), RootState::Watched);
    makeBundle("Big/A.logicx");
    makeBundle("Big/B.logicx");
    EXPECT_TRUE(waitUntil([&] { return (flags()["Big/B.logicx"] & (modified | created)) != 0; }));
    EXPECT_TRUE(waitFor("Big", scan));
    EXPECT_EQ(state("Big"), RootState::Polled);
    EXPECT_EQ(log.count(QStringLiteral("fs.inotify.max_user_watches=")), 1);
}

TEST_F(InotifyFaults, ARootIsFoundHoweverDeepItComesAndWhenItComesBack) {
    const std::string deep = "Media/user/Drive/Music";
    request().roots.prepend(at(deep));
    ASSERT_TRUE(start());
    EXPECT_EQ(state(deep), RootState::Missing);
    makeBundle(deep + "/Songs/A.logicx");
    EXPECT_TRUE(waitFor(deep, scan));
    EXPECT_TRUE(becomes(deep, RootState::Watched));

    // The root itself goes, or a folder above it.
    for (const auto& [gone, flags] : {std::pair{deep, renamed | scan}, {std::string("Media"), scan}}) {
        SCOPED_TRACE(gone);
        expectAllFollowed();
        forgetEvents();
        fs::rename(gone, "Away");
        EXPECT_TRUE(waitFor(deep, flags));
        EXPECT_EQ(state(deep), RootState::Missing);
        settleAndForget();
        // Changed while it is away.
        const auto bundle = deep + "/Songs/A.logicx";
        writeFile("Away" + bundle.substr(gone.size()) + "/Resources/ProjectInformation.plist", "unseen");
        fs::rename("Away", gone);
        EXPECT_TRUE(waitFor(deep, scan));
        EXPECT_TRUE(waitFor(bundle, modified));
        EXPECT_EQ(state(deep), RootState::Watched);
        EXPECT_EQ(settledFlags(), (Flags{{deep, scan}, {bundle, modified}}));
    }
    expectAllFollowed();
}

TEST_F(InotifyFaults, ADriveIsPluggedInAndPulledOut) {
    request().roots.append({at("Drive"), at("My Songs")});
    fs::create_directory("Drive");
    fs::create_directories("My Songs/Drive");
    ASSERT_TRUE(start());
    // At the place of the root itself, and of a folder below it.
    for (const auto& [drive, searched] : {std::pair{"Drive", "Drive"}, {"My Songs/Drive", "My Songs"}}) {
        SCOPED_TRACE(drive);
        if (mount("none", drive, "tmpfs", 0, "size=1m") != 0) {
            EXPECT_EQ(runWhereMountingIsPermitted(), 0);
            return;
        }
        const auto bundle = drive + std::string("/A.logicx");
        EXPECT_TRUE(waitFor(searched, scan));
        makeBundle(bundle);
        EXPECT_TRUE(waitFor(bundle, created));
        settle();
        EXPECT_TRUE(isFollowed(bundle));
        settleAndForget();

        umount2(drive, MNT_DETACH);
        EXPECT_TRUE(waitFor(searched, scan));
        EXPECT_EQ(settledFlags(), (Flags{{searched, scan}}));
        forgetEvents();
    }
}

TEST_F(InotifyFaults, AFolderThatMayNotBeReadIsLoggedOnceAndWatchedWhenItMay) {
    makeBundle("Music/NoEntry/A.logicx");
    makeBundle("Music/Open/B.logicx");
    const LogCapture log;
    ASSERT_TRUE(start({m_calls}));
    m_calls.m_injectedMask = IN_Q_OVERFLOW;
    writeFile("Music/Open/B.logicx/Resources/lost");
    EXPECT_TRUE(waitFor("Music", scan));
    EXPECT_TRUE(isFollowed("Music/Open/B.logicx"));
    ASSERT_TRUE(start({m_calls}));
    EXPECT_EQ(log.count(QStringLiteral("NoEntry")), 1);

    m_calls.m_mayEnter = true;
    fs::permissions("Music/NoEntry", fs::perms::owner_all);
    EXPECT_TRUE(waitFor("Music/NoEntry/A.logicx", created));
    EXPECT_TRUE(isFollowed("Music/NoEntry/A.logicx"));
    m_calls.m_mayEnter = false;
    ASSERT_TRUE(start({m_calls}));
    EXPECT_EQ(log.count(QStringLiteral("NoEntry")), 2);
}

TEST_F(InotifyFaults, ASystemThatGivesNoDescriptorIsToldAtTheStart) {
    m_calls.m_refusals = 1;
    const LogCapture log;
    EXPECT_FALSE(start({m_calls}));
    EXPECT_EQ(log.count(QStringLiteral("max_user_instances")), 1);
}

TEST_F(InotifyFaults, TheStreamCanBeStoppedAndDestroyedByItsHandler) {
    for (const bool destroys : {false, true}) {
        SCOPED_TRACE(destroys);
        std::unique_ptr<FileEventStream> stopped;
        std::promise<void> entered;
        std::promise<void> mayLeave;
        std::atomic<int> calls = 0;
        stopped = FileEventStream::create(request(), [&](const QList<FileEvent>&) {
            if (destroys)
                stopped.reset();
            else
                stopped->stop();
            if (++calls == 1)
                entered.set_value();
            mayLeave.get_future().wait();
        });
        ASSERT_TRUE(stopped->start());
        makeBundle(destroys ? "Music/B.logicx" : "Music/A.logicx");
        entered.get_future().wait();
        EXPECT_TRUE(FileEventStream::earlierStreamIsClosing());
        mayLeave.set_value();
        stopped.reset();
        EXPECT_TRUE(waitUntil([] { return !FileEventStream::earlierStreamIsClosing(); }));
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(InotifyFaults, StopIsForGoodAndDoesNotWaitForAFileSystemThatDoesNotAnswer) {
    ASSERT_TRUE(start({m_calls, 5000ms, 10ms}));
    fs::create_directory("Music/Hung");
    ASSERT_TRUE(waitUntil([&] { return m_calls.m_isHanging.load(); }));
    stream()->stop();
    EXPECT_FALSE(stream()->start());
    stream()->stop();
    stream().reset();
    EXPECT_TRUE(FileEventStream::earlierStreamIsClosing());
    m_calls.m_answers.set_value();
    EXPECT_TRUE(waitUntil([] { return !FileEventStream::earlierStreamIsClosing(); }));
    EXPECT_TRUE(events().empty());
}

} // namespace Stemhaven
