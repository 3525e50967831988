#include "app/Shutdown.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <memory>
#include <thread>

using Stemhaven::Shutdown;

namespace {

/// Ends the process with 0 when the end of the application went as it must.
void endTheApplicationUnderFire() {
    auto waiting = std::make_shared<int>();
    const std::weak_ptr<int> heldWaiting = waiting;
    Shutdown::post([waiting = std::move(waiting)] {});

    auto token = std::make_shared<int>();
    const std::weak_ptr<int> heldByCalls = token;
    std::atomic<bool> isRun = false;
    std::atomic<int> started = 0;
    std::array<std::thread, 4> posters;
    for (std::thread& poster : posters)
        poster = std::thread([&started, &isRun, token] {
            ++started;
            while (Shutdown::post([&isRun, token] { isRun = true; })) {
            }
        });
    token.reset();
    while (started < static_cast<int>(posters.size()))
        std::this_thread::yield();

    { const Stemhaven::ShutdownGuard guard; }
    const bool waitingIsDropped = heldWaiting.expired();
    qApp->~QCoreApplication();
    for (std::thread& poster : posters)
        poster.join();
    // A call queued on the application after its end would hold the token for ever.
    _exit(waitingIsDropped && heldByCalls.expired() && !isRun && Shutdown::hasBegun() ? 0 : 1);
}

TEST(ShutdownDeathTest, DropsQueuedCallsAndTakesNoMore) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endTheApplicationUnderFire(), testing::ExitedWithCode(0), "");
}

} // namespace
