#include "platform/linux/TreePoller.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace Stemhaven {

struct TreePoller::Shared {
    Shared(
        TreeSnapshot::Subject whatToTake, TreeSnapshot::Taker howToTake,
        std::chrono::milliseconds leastInterval, std::function<void()> notify)
        : subject(std::move(whatToTake)),
          take(std::move(howToTake)),
          interval(leastInterval),
          onAnswer(std::move(notify)) {}

    void run(std::chrono::milliseconds pause);
    Answer look(bool& wasStopped);
    /// Has the thread of an earlier poller that still waits for its file system work for a new one. False
    /// when it does not wait, or looks at something else.
    bool resume(
        const TreeSnapshot::Subject& wanted, std::chrono::milliseconds leastInterval,
        const std::function<void()>& notify);

    const TreeSnapshot::Subject subject;
    const TreeSnapshot::Taker take;
    std::chrono::milliseconds interval;
    std::mutex mutex;
    std::condition_variable change;
    std::function<void()> onAnswer;
    bool isAbandoned = false;
    bool hasEnded = false;
    std::optional<Clock::time_point> lookBegan;
    std::optional<Answer> answer;
};

void TreePoller::Shared::run(std::chrono::milliseconds pause) {
    using namespace std::chrono_literals;
    // A slow network is not to be kept busy all the time. One slow look alone may have waited for a server
    // that was away.
    constexpr int restFactor = 20;
    constexpr Clock::duration longestRest = 5min;

    std::unique_lock lock(mutex);
    Clock::duration rest = pause;
    Clock::duration lastCost = Clock::duration::zero();
    while (!change.wait_for(lock, rest, [this] { return isAbandoned; })) {
        const auto begin = Clock::now();
        lookBegan = begin;
        lock.unlock();
        bool wasStopped = false;
        Answer found = look(wasStopped);
        lock.lock();
        lookBegan.reset();
        rest = Clock::duration::zero();
        // A look that was stopped has seen only a part, and another poller may have taken this thread over.
        if (wasStopped)
            continue;
        const auto cost = Clock::now() - begin;
        rest = std::max<Clock::duration>(
            interval, std::min(longestRest, restFactor * std::min(cost, std::exchange(lastCost, cost))));
        answer = std::move(found);
        if (onAnswer)
            onAnswer();
    }
    hasEnded = true;
}

TreePoller::Answer TreePoller::Shared::look(bool& wasStopped) {
    const auto isStopped = [&] {
        const std::lock_guard lock(mutex);
        wasStopped = wasStopped || isAbandoned;
        return wasStopped;
    };
    try {
        return {take(subject, isStopped), {}};
    } catch (const std::exception& error) {
        return {std::nullopt, error.what()};
    } catch (...) {
        return {std::nullopt, "unknown exception"};
    }
}

bool TreePoller::Shared::resume(
    const TreeSnapshot::Subject& wanted, std::chrono::milliseconds leastInterval,
    const std::function<void()>& notify) {
    const std::lock_guard lock(mutex);
    const bool waits = isAbandoned && !hasEnded && lookBegan.has_value();
    if (!waits || wanted.passedOver != subject.passedOver)
        return false;
    isAbandoned = false;
    interval = leastInterval;
    onAnswer = notify;
    answer.reset();
    return true;
}

std::shared_ptr<TreePoller::Shared> TreePoller::begin(
    const TreeSnapshot::Subject& subject, const TreeSnapshot::Taker& take, std::chrono::milliseconds interval,
    std::chrono::milliseconds pause, const std::function<void()>& onAnswer) {
    static std::mutex mutex;
    // The latest thread for each tree. A tree whose mount was replaced is another one: the look into the old
    // mount may never end.
    static std::map<std::pair<std::string, int>, std::weak_ptr<Shared>> latest;

    const std::lock_guard lock(mutex);
    std::erase_if(latest, [](const auto& entry) { return entry.second.expired(); });
    auto& known = latest[{subject.top, subject.mount}];
    if (auto shared = known.lock(); shared && shared->resume(subject, interval, onAnswer))
        return shared;
    auto shared = std::make_shared<Shared>(subject, take, interval, onAnswer);
    std::thread([shared, pause] { shared->run(pause); }).detach();
    known = shared;
    return shared;
}

TreePoller::TreePoller(
    const TreeSnapshot::Subject& subject, const TreeSnapshot::Taker& take, std::chrono::milliseconds interval,
    std::chrono::milliseconds pause, const std::function<void()>& onAnswer)
    : m_shared(begin(subject, take, interval, pause, onAnswer)) {}

TreePoller::~TreePoller() {
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->isAbandoned = true;
        m_shared->onAnswer = {};
    }
    m_shared->change.notify_one();
}

int TreePoller::mount() const {
    return m_shared->subject.mount;
}

std::optional<TreePoller::Answer> TreePoller::takeAnswer() {
    const std::lock_guard lock(m_shared->mutex);
    return std::exchange(m_shared->answer, std::nullopt);
}

std::optional<TreePoller::Clock::time_point> TreePoller::waitsSince() const {
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->lookBegan;
}

} // namespace Stemhaven
