#include "app/Shutdown.h"

#include <QCoreApplication>

#include <atomic>
#include <mutex>
#include <utility>

namespace Stemhaven {

namespace {

struct State {
    std::mutex mutex;
    std::atomic<bool> begun = false;
};

State& state() {
    // Never destroyed: threads that end late may still ask.
    static const auto only = std::ref(*new State);
    return only;
}

} // namespace

void Shutdown::begin() {
    {
        const std::lock_guard lock(state().mutex);
        state().begun = true;
    }
    if (QCoreApplication* application = QCoreApplication::instance())
        QCoreApplication::removePostedEvents(application, QEvent::MetaCall);
}

bool Shutdown::hasBegun() noexcept {
    return state().begun;
}

bool Shutdown::post(std::function<void()> call) {
    const std::lock_guard lock(state().mutex);
    QCoreApplication* application = QCoreApplication::instance();
    if (state().begun || application == nullptr)
        return false;
    auto run = [call = std::move(call)] {
        // Waits for the posting thread to let go of the call, which thus always ends on the GUI thread.
        std::unique_lock(state().mutex).unlock();
        call();
    };
    return QMetaObject::invokeMethod(application, std::move(run), Qt::QueuedConnection);
}

} // namespace Stemhaven
