#include "monitor/CheckQueue.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Stemhaven {

namespace {

/// A group costs one transaction, and what the user does meanwhile waits for it.
constexpr qsizetype largestGroup = 64;

} // namespace

void CheckQueue::merge(CheckRequest& into, CheckRequest&& request) {
    for (const auto& prior : std::as_const(request.priorPaths)) {
        if (!into.priorPaths.contains(prior))
            into.priorPaths.append(prior);
    }
    into.isFromEvent = into.isFromEvent || request.isFromEvent;
    into.isVanished = into.isVanished || request.isVanished;
    if (!into.undecidedSince)
        into.undecidedSince = request.undecidedSince;
    std::move(request.tickets.begin(), request.tickets.end(), std::back_inserter(into.tickets));
}

bool CheckQueue::add(CheckRequest request, bool isRecorded) {
    const auto waiting = m_waiting.find(request.path);
    if (waiting != m_waiting.end()) {
        merge(*waiting, std::move(request));
        return false;
    }
    if (const auto undecided = m_undecided.find(request.path); undecided != m_undecided.end()) {
        merge(request, std::move(undecided->second));
        m_undecided.erase(undecided);
    }
    if (const auto delayed = m_delayed.find(request.path); delayed != m_delayed.end()) {
        merge(request, std::move(delayed->second.second));
        m_delayed.erase(delayed);
    }
    (isRecorded ? m_recorded : m_new).push_back(request.path);
    const QString path = request.path;
    m_waiting.insert(path, std::move(request));
    return true;
}

void CheckQueue::putBack(const Group& group) {
    for (auto it = group.requests.rbegin(); it != group.requests.rend(); ++it) {
        if (group.areUndecided) {
            addUndecided(*it, Clock::now());
            continue;
        }
        if (const auto waiting = m_waiting.find(it->path); waiting != m_waiting.end()) {
            merge(*waiting, CheckRequest(*it));
            continue;
        }
        m_recorded.push_front(it->path);
        m_waiting.insert(it->path, *it);
    }
}

void CheckQueue::addUndecided(CheckRequest request, Clock::time_point notBefore) {
    if (const auto waiting = m_waiting.find(request.path); waiting != m_waiting.end()) {
        merge(*waiting, std::move(request));
        return;
    }
    const QString path = request.path;
    m_undecided[path] = {notBefore, std::move(request)};
}

void CheckQueue::addDelayed(CheckRequest request, Clock::time_point due) {
    const QString path = request.path;
    if (const auto waiting = m_waiting.find(path); waiting != m_waiting.end())
        merge(*waiting, std::move(request));
    else
        m_delayed[path] = {due, std::move(request)};
}

void CheckQueue::takeUpDelayed() {
    const auto now = Clock::now();
    std::vector<CheckRequest> due;
    for (auto it = m_delayed.begin(); it != m_delayed.end();) {
        if (it->second.first > now) {
            ++it;
            continue;
        }
        due.push_back(std::move(it->second.second));
        it = m_delayed.erase(it);
    }
    for (auto& request : due)
        add(std::move(request), false);
}

std::optional<CheckQueue::Clock::time_point> CheckQueue::nextDelayed() const {
    std::optional<Clock::time_point> next;
    for (const auto& [path, delayed] : m_delayed)
        next = next ? std::min(*next, delayed.first) : delayed.first;
    return next;
}

CheckQueue::Group CheckQueue::take(bool mayDecideAll) {
    Group group;
    auto& paths = m_recorded.empty() ? m_new : m_recorded;
    while (!paths.empty() && group.requests.size() < largestGroup) {
        group.requests.append(m_waiting.take(paths.front()));
        paths.pop_front();
    }
    if (!group.requests.isEmpty() || !mayDecideAll)
        return group;
    group.areUndecided = true;
    const auto now = Clock::now();
    const bool isByPath = std::all_of(m_undecided.cbegin(), m_undecided.cend(), [](const auto& undecided) {
        return undecided.second.isDecidedByPath;
    });
    for (auto it = m_undecided.begin(); it != m_undecided.end() && group.requests.size() < largestGroup;) {
        if (it->second.isDecidedByPath != isByPath || it->first > now) {
            ++it;
            continue;
        }
        group.requests.append(std::move(it->second));
        it = m_undecided.erase(it);
    }
    return group;
}

void CheckQueue::abandonAll() {
    const auto abandon = [](const CheckRequest& request) {
        for (const auto& ticket : request.tickets)
            ticket->abandon();
    };
    std::for_each(m_waiting.begin(), m_waiting.end(), abandon);
    for (const auto& [notBefore, request] : std::as_const(m_undecided))
        abandon(request);
    for (const auto& [path, delayed] : m_delayed)
        abandon(delayed.second);
    *this = {};
}

} // namespace Stemhaven
