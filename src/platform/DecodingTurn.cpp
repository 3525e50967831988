#include "platform/DecodingTurn.h"

#include <chrono>

namespace Stemhaven {

namespace {

// Never destroyed: a call to a remote file system that was left behind may still decode at the end.
std::timed_mutex& onlyTurn() {
    static auto& mutex = *new std::timed_mutex;
    return mutex;
}

} // namespace

DecodingTurn::DecodingTurn(const std::function<bool()>& isWanted) : m_lock(onlyTurn(), std::defer_lock) {
    constexpr std::chrono::milliseconds betweenQuestions(20);
    while (isWanted() && !m_lock.try_lock_for(betweenQuestions)) {
    }
}

} // namespace Stemhaven
