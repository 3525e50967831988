#include "macos_double/MacosDouble.h"
#include "platform/FileEventStream.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

using namespace Stemhaven;
using RootState = FileEventStream::RootState;

namespace {

const QStringList startCalls{
    QStringLiteral("FSEventStreamCreate"), QStringLiteral("FSEventStreamSetDispatchQueue default"),
    QStringLiteral("FSEventStreamStart")};
const QStringList stopCalls{
    QStringLiteral("FSEventStreamStop"), QStringLiteral("FSEventStreamSetDispatchQueue null"),
    QStringLiteral("FSEventStreamInvalidate"), QStringLiteral("FSEventStreamRelease")};

FileWatchRequest requestFor(const QStringList& roots) {
    FileWatchRequest request;
    request.roots = roots;
    return request;
}

void fireOne() {
    MacosDouble::fire({{QStringLiteral("/Music/Song.logicx"), 7, {}, FileEvent::ItemModified, 1}});
}

class FSEventsStreamTest : public testing::Test {
protected:
    FSEventsStreamTest() { MacosDouble::reset(); }

    void TearDown() override {
        stream.reset();
        MacosDouble::letGo();
        EXPECT_EQ(MacosDouble::liveObjects(), 0);
        EXPECT_EQ(MacosDouble::heldContexts(), 0);
        EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
    }

    void create(FileEventStream::Handler handler) {
        stream = FileEventStream::create(requestFor({QStringLiteral("/Music/")}), std::move(handler));
    }

    void createCounting() {
        create([this](const QList<FileEvent>&) { ++handled; });
    }

    std::unique_ptr<FileEventStream> stream;
    std::atomic<int> handled = 0;
};

} // namespace

TEST_F(FSEventsStreamTest, CreatesStartsAndStopsInOrder) {
    createCounting();
    EXPECT_TRUE(MacosDouble::calls().isEmpty());
    ASSERT_TRUE(stream->start());
    EXPECT_EQ(MacosDouble::calls(), startCalls);
    EXPECT_FALSE(stream->start());
    EXPECT_EQ(MacosDouble::heldContexts(), 1);

    stream->stop();
    stream->stop();
    EXPECT_EQ(MacosDouble::calls(), startCalls + stopCalls);
    EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
    EXPECT_FALSE(stream->start());
    stream.reset();
    EXPECT_EQ(MacosDouble::calls(), startCalls + stopCalls);
}

TEST_F(FSEventsStreamTest, HandsTheRequestToTheSystem) {
    createCounting();
    ASSERT_TRUE(stream->start());
    auto creation = MacosDouble::lastCreation();
    EXPECT_EQ(creation.paths, QStringList{QStringLiteral("/Music/")});
    EXPECT_EQ(creation.flags, 0x1D3U);
    EXPECT_EQ(creation.latency, 3.0);
    EXPECT_EQ(creation.sinceWhen, 0xFFFFFFFFFFFFFFFFU);
    stream.reset();

    auto request = requestFor({QStringLiteral("/Müsik/"), QStringLiteral("/🎹/")});
    request.ancestors = QStringList{QStringLiteral("/Users/me/")};
    request.strayBundles = QStringList{QStringLiteral("/Users/me/Song.logicx")};
    request.sinceEventID = 77;
    request.latency = std::chrono::milliseconds(1250);
    stream = FileEventStream::create(request, [](const QList<FileEvent>&) {});
    ASSERT_TRUE(stream->start());
    creation = MacosDouble::lastCreation();
    EXPECT_EQ(creation.paths, request.roots + request.ancestors);
    EXPECT_EQ(creation.latency, 1.25);
    EXPECT_EQ(creation.sinceWhen, 77U);

    MacosDouble::setCurrentEventID(1234567890123U);
    EXPECT_EQ(FileEventStream::currentEventID(), 1234567890123U);
}

TEST_F(FSEventsStreamTest, TranslatesABatch) {
    struct Case {
        MacosDouble::Event given;
        QString path;
        std::uint64_t fileID;
        std::uint64_t docID;
    };

    const QString accented = QStringLiteral("/Music/Café 🎹.logicx");
    const QList<Case> cases{
        {{accented, 0x7FFFFFFFFFFFFFFF, 5, FileEvent::ItemRenamed | 0x20000, 41},
         accented,
         0x7FFFFFFFFFFFFFFF,
         5},
        {{QStringLiteral("/Music/Song.logicx/"), 9, {}, 0, 42}, QStringLiteral("/Music/Song.logicx"), 9, 0},
        {{QStringLiteral("/Music//"), {}, 6, FileEvent::ItemCreated | FileEvent::ItemRemoved, 43},
         QStringLiteral("/Music/"),
         0,
         6},
        {{QStringLiteral("/"), {}, {}, FileEvent::MustScanSubDirs | 0x2, 44}, QStringLiteral("/"), 0, 0},
        // Only extended attributes changed: no flag that the program knows, but not 0 either.
        {{QStringLiteral("/Music/a"), 1, {}, 0x8000, 45}, QStringLiteral("/Music/a"), 1, 0},
        {{{}, {}, {}, 0x80000000, 0xFFFFFFFFFFFFFFFE}, QString(), 0, 0}};

    QList<FileEvent> seen;
    create([&](const QList<FileEvent>& events) { seen = events; });
    ASSERT_TRUE(stream->start());
    QList<MacosDouble::Event> given;
    for (const auto& each : cases)
        given.append(each.given);
    MacosDouble::fire(given);

    ASSERT_EQ(seen.size(), cases.size());
    for (qsizetype i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(seen[i].path, cases[i].path);
        EXPECT_EQ(seen[i].fileID, cases[i].fileID);
        EXPECT_EQ(seen[i].docID, cases[i].docID);
        EXPECT_EQ(seen[i].flags, cases[i].given.flags);
        EXPECT_EQ(seen[i].eventID, cases[i].given.id);
    }
}

TEST_F(FSEventsStreamTest, GivesNoEmptyBatch) {
    createCounting();
    ASSERT_TRUE(stream->start());
    MacosDouble::fire({});
    EXPECT_EQ(handled, 0);
}

TEST_F(FSEventsStreamTest, SaysWhetherItCouldStart) {
    createCounting();
    MacosDouble::failCreation();
    EXPECT_FALSE(stream->start());
    stream->stop();
    EXPECT_EQ(MacosDouble::calls(), startCalls.first(1));
    stream.reset();

    // One that does not run must not be stopped.
    MacosDouble::reset();
    createCounting();
    MacosDouble::failStart();
    EXPECT_FALSE(stream->start());
    stream->stop();
    EXPECT_EQ(MacosDouble::calls(), startCalls + stopCalls.last(2));
    EXPECT_EQ(MacosDouble::heldContexts(), 0);
    stream.reset();

    MacosDouble::reset();
    createCounting();
    stream->stop();
    EXPECT_FALSE(stream->start());
    stream = FileEventStream::create({}, [](const QList<FileEvent>&) {});
    EXPECT_FALSE(stream->start());
    EXPECT_TRUE(MacosDouble::calls().isEmpty());
}

TEST_F(FSEventsStreamTest, WaitsForAnEarlierStreamToClose) {
    MacosDouble::keepContexts();
    createCounting();
    ASSERT_TRUE(stream->start());
    fireOne();
    EXPECT_EQ(handled, 1);
    stream->stop();
    EXPECT_TRUE(FileEventStream::earlierStreamIsClosing());

    // Calls that the system had queued find the sink, but not the handler; also when the stream is gone.
    fireOne();
    stream.reset();
    fireOne();
    EXPECT_EQ(handled, 1);

    createCounting();
    EXPECT_FALSE(stream->start());
    EXPECT_EQ(MacosDouble::calls(), startCalls + stopCalls);

    MacosDouble::letGo();
    EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
    createCounting();
    EXPECT_TRUE(stream->start());
}

TEST_F(FSEventsStreamTest, CanBeStoppedAndDestroyedByItsHandler) {
    for (const bool destroys : {false, true}) {
        // Kept by the handler alone, so that a handler that is freed too early shows.
        const auto count = std::make_shared<std::atomic<int>>(0);
        create([this, destroys, count](const QList<FileEvent>&) {
            stream->stop();
            if (destroys)
                stream.reset();
            ++*count;
        });
        ASSERT_TRUE(stream->start());
        std::thread(fireOne).join();
        EXPECT_EQ(*count, 1);
        EXPECT_EQ(MacosDouble::heldContexts(), 0);
    }
}

TEST_F(FSEventsStreamTest, StopWaitsForTheHandler) {
    std::promise<void> inHandler;
    create([&](const QList<FileEvent>&) {
        inHandler.set_value();
        // Once the stream is released, only the handler is left to wait for.
        while (!MacosDouble::calls().contains(stopCalls.last()))
            std::this_thread::yield();
        for (int i = 0; i < 1000; ++i)
            std::this_thread::yield();
        ++handled;
    });
    ASSERT_TRUE(stream->start());
    std::thread queue(fireOne);
    inHandler.get_future().wait();
    stream->stop();
    EXPECT_EQ(handled, 1);
    queue.join();
}

TEST_F(FSEventsStreamTest, KnowsWhichRootsAreThere) {
    const QTemporaryDir folder;
    const QString gone = folder.filePath(QStringLiteral("gone/"));
    createCounting();
    EXPECT_EQ(stream->stateOf(folder.path()), RootState::Missing);
    ASSERT_TRUE(stream->start());
    EXPECT_EQ(stream->stateOf(folder.path()), RootState::Watched);
    EXPECT_EQ(stream->stateOf(folder.path() + QLatin1Char('/')), RootState::Watched);
    EXPECT_EQ(stream->stateOf(gone), RootState::Missing);
}
