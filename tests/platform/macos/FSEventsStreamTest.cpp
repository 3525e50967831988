#include "double/MacosDouble.h"
#include "platform/FileEventStream.h"

#include <gtest/gtest.h>

#include <CoreServices/CoreServices.h>
#include <atomic>
#include <future>
#include <thread>

using namespace Stemhaven;
using MacosDouble::Fault;
using RootState = FileEventStream::RootState;

namespace {

const QStringList startCalls{
    QStringLiteral("FSEventStreamCreate /Music/ since 18446744073709551615, latency 3, flags 467"),
    QStringLiteral("FSEventStreamSetDispatchQueue default"), QStringLiteral("FSEventStreamStart")};
const QStringList stopCalls{
    QStringLiteral("FSEventStreamStop"), QStringLiteral("FSEventStreamSetDispatchQueue null"),
    QStringLiteral("FSEventStreamInvalidate"), QStringLiteral("FSEventStreamRelease")};

void fireOne() {
    MacosDouble::fire({{QStringLiteral("/Music/Song.logicx"), 7, 0, FileEvent::ItemModified, 1}});
}

class FSEventsStreamTest : public testing::Test {
protected:
    FSEventsStreamTest() {
        MacosDouble::reset();
        request.roots = QStringList{QStringLiteral("/Music/")};
    }

    void TearDown() override {
        stream.reset();
        MacosDouble::letGo();
        EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
    }

    void create(FileEventStream::Handler handler) {
        stream = FileEventStream::create(request, std::move(handler));
    }

    void createCounting() {
        create([this](const QList<FileEvent>&) { ++handled; });
    }

    FileWatchRequest request;
    std::unique_ptr<FileEventStream> stream;
    std::atomic<int> handled = 0;
};

} // namespace

TEST_F(FSEventsStreamTest, StartsAndStopsInOrderAndKnowsWhichRootsAreThere) {
    const QString there = QStringLiteral("/proc/");
    createCounting();
    EXPECT_TRUE(MacosDouble::calls().isEmpty());
    EXPECT_EQ(stream->stateOf(there), RootState::Missing);
    ASSERT_TRUE(stream->start());
    EXPECT_EQ(MacosDouble::calls(), startCalls);
    EXPECT_EQ(stream->stateOf(there), RootState::Watched);
    EXPECT_EQ(stream->stateOf(QStringLiteral("/nowhere/")), RootState::Missing);
    EXPECT_FALSE(stream->start());

    stream->stop();
    stream->stop();
    EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
    EXPECT_FALSE(stream->start());
    stream.reset();
    EXPECT_EQ(MacosDouble::calls(), startCalls + stopCalls);
}

TEST_F(FSEventsStreamTest, HandsTheRequestToTheSystem) {
    request.roots = QStringList{QStringLiteral("/Müsik/"), QStringLiteral("/🎹/")};
    request.ancestors = QStringList{QStringLiteral("/Users/me/")};
    request.strayBundles = QStringList{QStringLiteral("/Users/me/Song.logicx")};
    request.sinceEventID = 77;
    request.latency = std::chrono::milliseconds(1250);
    createCounting();
    ASSERT_TRUE(stream->start());
    EXPECT_EQ(
        MacosDouble::calls().first(),
        QStringLiteral("FSEventStreamCreate /Müsik/ /🎹/ /Users/me/ since 77, latency 1.25, flags 467"));
}

TEST_F(FSEventsStreamTest, TranslatesABatchUnlessItIsEmpty) {
    const std::pair<FileEvent, QString> cases[] = {
        {{QStringLiteral("/Music/Café 🎹.logicx"), 0x7FFFFFFFFFFFFFFF, 5, FileEvent::ItemRenamed | 0x20000,
          41},
         QStringLiteral("/Music/Café 🎹.logicx")},
        // Decomposed, as HFS+ stores names.
        {{QStringLiteral("/Music/Cafe\u0301/U\u0308ber\u1112\u1161\u11ab.logicx/"), 8, 0,
          FileEvent::ItemModified, 42},
         QStringLiteral("/Music/Caf\u00e9/\u00dcber\ud55c.logicx")},
        {{QStringLiteral("/Music//"), 0, 6, FileEvent::ItemCreated | FileEvent::ItemRemoved, 43},
         QStringLiteral("/Music/")},
        {{QStringLiteral("/"), 0, 0, FileEvent::MustScanSubDirs | 0x2, 44}, QStringLiteral("/")},
        {{QString(), 0, 0, 0x80000000, 0xFFFFFFFFFFFFFFFE}, QString()}};
    QList<FileEvent> given;
    for (const auto& each : cases)
        given.append(each.first);
    QList<FileEvent> seen;
    create([&](const QList<FileEvent>& events) {
        ++handled;
        seen = events;
    });
    ASSERT_TRUE(stream->start());
    MacosDouble::fire({});
    EXPECT_EQ(handled, 0);
    MacosDouble::fire(given);
    ASSERT_EQ(seen.size(), given.size());
    for (qsizetype i = 0; i < seen.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(seen[i].path, cases[i].second);
        EXPECT_EQ(seen[i].fileID, given[i].fileID);
        EXPECT_EQ(seen[i].docID, given[i].docID);
        EXPECT_EQ(seen[i].flags, given[i].flags);
        EXPECT_EQ(seen[i].eventID, given[i].eventID);
    }
}

TEST_F(FSEventsStreamTest, SaysWhetherItCouldStart) {
    const std::pair<Fault, QStringList> faults[] = {
        {Fault::Creation, startCalls.first(1)},
        // One that does not run must not be stopped.
        {Fault::Start, startCalls + stopCalls.last(2)}};
    for (const auto& [fault, calls] : faults) {
        MacosDouble::reset(fault);
        createCounting();
        EXPECT_FALSE(stream->start());
        stream->stop();
        EXPECT_EQ(MacosDouble::calls(), calls);
        EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
        stream.reset();
    }
    MacosDouble::reset();
    request = {};
    createCounting();
    EXPECT_FALSE(stream->start());
}

TEST_F(FSEventsStreamTest, WaitsForAnEarlierStreamToClose) {
    MacosDouble::reset(Fault::ContextIsKept);
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
        EXPECT_FALSE(FileEventStream::earlierStreamIsClosing());
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
