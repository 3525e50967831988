#include "platform/TerminationSignals.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

using Stemhaven::TerminationSignals;

namespace {

/// Runs the event loop until the signal has arrived; false when it does not.
bool arrives(const TerminationSignals& termination) {
    QEventLoop loop;
    QObject::connect(&termination, &TerminationSignals::terminationRequested, &loop, [&] {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        loop.quit();
    });
    QTimer::singleShot(std::chrono::seconds(20), &loop, [&] { loop.exit(1); });
    return loop.exec() == 0;
}

TEST(TerminationSignals, ReachTheEventLoopFromAnyThreadAndMoreThanOnce) {
    const TerminationSignals termination;
    for (const int signal : {SIGTERM, SIGINT, SIGTERM}) {
        std::raise(signal);
        EXPECT_TRUE(arrives(termination)) << signal;
        // Far more than the way to the event loop can hold.
        std::thread([signal] {
            for (int i = 0; i < 100'000; ++i)
                pthread_kill(pthread_self(), signal);
        }).join();
        EXPECT_TRUE(arrives(termination)) << signal;
    }
}

TEST(TerminationSignals, EndWithTheObject) {
    static volatile std::sig_atomic_t caughtElsewhere = 0;
    const auto before = std::signal(SIGTERM, [](int) { caughtElsewhere = caughtElsewhere + 1; });
    {
        const TerminationSignals termination;
        std::raise(SIGTERM);
        EXPECT_EQ(caughtElsewhere, 0);
    }
    std::raise(SIGTERM);
    EXPECT_EQ(caughtElsewhere, 1);
    std::signal(SIGTERM, before);
}

} // namespace
