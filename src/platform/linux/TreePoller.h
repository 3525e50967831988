#pragma once

#include "platform/linux/TreeSnapshot.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Stemhaven {

/// Takes a snapshot of a tree every few seconds on a thread of its own, since the file system may not answer.
/// For one thread.
///
/// The thread is left behind when the poller is destroyed. It ends once its file system has answered; until
/// then the next poller of the same tree waits for that answer instead of sending another thread after it.
class TreePoller {
public:
    using Clock = std::chrono::steady_clock;

    struct Answer {
        /// Nothing when the top is not there or cannot be read.
        std::optional<TreeSnapshot> snapshot;
        /// Why the look failed, if it did.
        std::string failure;
    };

    /// The first snapshot is taken after a pause. onAnswer is called on the poller's thread, never after the
    /// poller's end; it must not call the poller.
    TreePoller(
        const TreeSnapshot::Subject& subject, const TreeSnapshot::Taker& take,
        std::chrono::milliseconds interval, std::chrono::milliseconds pause,
        const std::function<void()>& onAnswer);
    /// Does not wait.
    ~TreePoller();
    TreePoller(const TreePoller&) = delete;
    TreePoller& operator=(const TreePoller&) = delete;

    int mount() const;

    /// The newest answer, once.
    std::optional<Answer> takeAnswer();

    /// Since when an answer is awaited; nothing between two looks.
    std::optional<Clock::time_point> waitsSince() const;

private:
    /// What the thread uses. It holds it too, so that it may outlive the poller.
    struct Shared;

    static std::shared_ptr<Shared> begin(
        const TreeSnapshot::Subject& subject, const TreeSnapshot::Taker& take,
        std::chrono::milliseconds interval, std::chrono::milliseconds pause,
        const std::function<void()>& onAnswer);

    std::shared_ptr<Shared> m_shared;
};

} // namespace Stemhaven
