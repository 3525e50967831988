#include "platform/DecodingTurn.h"

#include "platform/FreeMemory.h"

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
    m_begin = std::chrono::steady_clock::now();
}

DecodingTurn::~DecodingTurn() {
    // The lists and pictures of honest bundles take less, or are few.
    constexpr std::chrono::milliseconds shortTurn(5);
    if (isHeld() && std::chrono::steady_clock::now() - m_begin > shortTurn)
        returnFreeMemory();
}

} // namespace Stemhaven
