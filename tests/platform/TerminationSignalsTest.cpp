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

using Handler = void (*)(int);

Handler handlerOf(int signal) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

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
    const Handler mine = [](int) {
    };
    const Handler before = std::signal(SIGTERM, mine);
    {
        const TerminationSignals termination;
        EXPECT_NE(handlerOf(SIGTERM), mine);
        std::raise(SIGTERM);
    }
    EXPECT_EQ(handlerOf(SIGTERM), mine);
    std::signal(SIGTERM, before);

    // The request that nobody took up does not reach the next object.
    const TerminationSignals termination;
    int requests = 0;
    QObject::connect(&termination, &TerminationSignals::terminationRequested, [&] { ++requests; });
    QCoreApplication::processEvents();
    EXPECT_EQ(requests, 0);
    std::raise(SIGTERM);
    EXPECT_TRUE(arrives(termination));
}

} // namespace
