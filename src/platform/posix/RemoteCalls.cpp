#include "platform/RemoteCalls.h"

#include <QDebug>
#include <QFileInfo>
#include <QHash>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace Stemhaven {

namespace {

constexpr std::chrono::seconds patience(2);

/// The calls to one mount, one at a time.
struct Lane {
    std::mutex mutex;
    std::condition_variable changed;
    bool isBusy = false;
    /// The call that keeps it busy has been given up.
    bool isOverdue = false;
};

std::shared_ptr<Lane> laneOf(const QString& mount) {
    // Never destroyed: calls that were left behind end after everything else.
    static auto& mutex = *new std::mutex;
    static auto& lanes = *new QHash<QString, std::shared_ptr<Lane>>;
    const std::lock_guard lock(mutex);
    auto& lane = lanes[mount];
    if (!lane)
        lane = std::make_shared<Lane>();
    return lane;
}

} // namespace

bool RemoteCalls::finishes(const QString& mount, const std::function<void()>& call) {
    const auto lane = laneOf(mount);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::unique_lock lock(lane->mutex);
    lane->changed.wait_until(lock, deadline, [&] { return !lane->isBusy || lane->isOverdue; });
    if (lane->isBusy)
        return false;
    lane->isBusy = true;
    const auto isDone = std::make_shared<bool>(false);
    std::thread([lane, call, isDone] {
        bool succeeded = false;
        try {
            call();
            succeeded = true;
        } catch (const std::exception& error) {
            qWarning() << "A call to a remote file system failed." << error.what();
        }
        const std::lock_guard done(lane->mutex);
        *isDone = succeeded;
        lane->isBusy = false;
        lane->isOverdue = false;
        lane->changed.notify_all();
    }).detach();
    lane->changed.wait_until(lock, deadline, [&] { return !lane->isBusy || *isDone; });
    if (*isDone)
        return true;
    if (lane->isBusy) {
        lane->isOverdue = true;
        lane->changed.notify_all();
        qWarning() << "A remote file system does not answer: " << mount;
    }
    return false;
}

bool pathExists(const QString& path) {
    return RemoteCalls::run(path, [path] { return QFileInfo::exists(path); }).value_or(false);
}

} // namespace Stemhaven
