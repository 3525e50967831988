#include "monitor/CheckQueue.h"

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

CheckRequest request(const QString& path, const QStringList& priorPaths = {}) {
    return {path, priorPaths, false, {}};
}

QStringList paths(const CheckQueue::Group& group) {
    QStringList found;
    for (const auto& request : group.requests)
        found.append(request.path);
    return found;
}

} // namespace

TEST(CheckQueue, TakesWhatIsOnRecordFirstAndEachPathOnce) {
    CheckQueue queue;
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(queue.add(request(QString("new %1").arg(i)), false));
    EXPECT_FALSE(queue.add(request("new 7", {"old"}), false));
    EXPECT_TRUE(queue.add(request("saved"), true));
    EXPECT_EQ(paths(queue.take(false)), QStringList("saved"));
    const auto next = queue.take(false);
    EXPECT_EQ(next.requests.first().path, "new 0");
    EXPECT_EQ(next.requests.at(7).priorPaths, QStringList("old"));

    queue.putBack(next);
    EXPECT_EQ(paths(queue.take(false)), paths(next));
}

TEST(CheckQueue, KeepsTheUndecidedToTheEndAndThoseDecidedByTheirPathAfterAllOthers) {
    CheckQueue queue;
    auto noted = request("noted");
    auto putBack = request("put back");
    putBack.isDecidedByPath = true;
    const auto now = CheckQueue::Clock::now();
    queue.addUndecided(noted, now);
    queue.addUndecided(putBack, now);
    queue.addUndecided(request("saved since", {"old"}), now);
    queue.addUndecided(request("not settled"), now + std::chrono::hours(1));
    queue.add(request("saved since"), true);
    const auto first = queue.take(true);
    EXPECT_EQ(paths(first), QStringList("saved since"));
    EXPECT_EQ(first.requests.first().priorPaths, QStringList("old"));
    EXPECT_TRUE(queue.take(false).requests.isEmpty());
    EXPECT_EQ(queue.size(), 3);
    const auto last = queue.take(true);
    EXPECT_TRUE(last.areUndecided);
    EXPECT_EQ(paths(last), QStringList("noted"));
    EXPECT_TRUE(queue.take(true).requests.isEmpty());
    queue.addUndecided(request("not settled"), now);
    EXPECT_EQ(paths(queue.take(true)), QStringList("not settled"));
    EXPECT_EQ(paths(queue.take(true)), QStringList("put back"));
}

TEST(CheckQueue, ADelayedOneIsTakenUpWhenItIsDue) {
    CheckQueue queue;
    queue.addDelayed(request("due"), CheckQueue::Clock::now());
    queue.addDelayed(request("later"), CheckQueue::Clock::now() + std::chrono::hours(1));
    queue.addDelayed(request("saved since"), CheckQueue::Clock::now() + std::chrono::hours(1));
    queue.add(request("saved since"), true);
    EXPECT_EQ(queue.size(), 1);
    queue.takeUpDelayed();
    EXPECT_EQ(paths(queue.take(false)), QStringList("saved since"));
    EXPECT_EQ(paths(queue.take(false)), QStringList("due"));
    EXPECT_EQ(queue.size(), 0);
    EXPECT_GT(queue.nextDelayed().value(), CheckQueue::Clock::now() + std::chrono::minutes(50));
}
