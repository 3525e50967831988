#include "app/logging/Profiler.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <iostream>
#include <mutex>
#include <numeric>
#include <string_view>

namespace Util {

namespace {

using std::chrono::duration_cast;
using std::chrono::nanoseconds;

std::recursive_mutex& profilerMutex() {
    // Never destroyed: timers may end, and the report is printed, while static objects die.
    static const auto only = std::ref(*new std::recursive_mutex);
    return only;
}

template <typename Integer>
void printLine(std::string_view label, Integer duration) {
    constexpr Integer perMillisecond = 1'000'000;
    constexpr Integer perSecond = 1'000'000'000;
    std::cout << label << duration << " ns, " << duration / perMillisecond << " ms, " << duration / perSecond
              << " s" << std::endl;
}

/// Below zero, which only a lone timer reaches, counts as zero.
std::uint64_t truncated(double value) {
    return value > 0 ? static_cast<std::uint64_t>(value) : 0;
}

} // namespace

Profiler::Timer::Timer(Profiler& profiler) : m_start(Clock::now()), m_profiler(profiler) {
    const std::lock_guard lock(profilerMutex());
    if (m_profiler.m_previousStart != Clock::time_point::min())
        m_profiler.m_intervals.push_back(
            duration_cast<nanoseconds>(m_start - m_profiler.m_previousStart).count());
    ++m_profiler.m_timerCount;
    m_profiler.m_previousStart = m_start;
}

Profiler::Timer::~Timer() {
    const auto end = Clock::now();
    const std::lock_guard lock(profilerMutex());
    const std::int64_t duration = duration_cast<nanoseconds>(end - m_start).count();
    m_profiler.m_minDuration = std::min(m_profiler.m_minDuration, duration);
    m_profiler.m_maxDuration = std::max(m_profiler.m_maxDuration, duration);
    m_profiler.m_totalDuration += duration;
}

Profiler::Timer Profiler::scopeTimer() {
    return Timer(instance());
}

void Profiler::printReport() {
    instance().print();
}

Profiler::~Profiler() {
    try {
        print();
    } catch (const std::exception&) {
        // The process ends; there is no one left to tell.
    }
}

Profiler& Profiler::instance() {
    static Profiler profiler;
    return profiler;
}

void Profiler::print() {
    const std::lock_guard lock(profilerMutex());
    std::sort(m_intervals.begin(), m_intervals.end());

    const bool hasEnded = m_minDuration <= m_maxDuration;
    const auto count = static_cast<double>(std::max<std::uint64_t>(m_timerCount, 1));
    const auto sumOfIntervals = std::accumulate(m_intervals.begin(), m_intervals.end(), std::int64_t{0});

    std::cout << "Profiler results:" << std::endl;
    std::cout << "\tScopedTimer count: " << m_timerCount << std::endl;
    printLine("\t\tMax duration: ", hasEnded ? m_maxDuration : 0);
    printLine("\t\tMin duration: ", hasEnded ? m_minDuration : 0);
    printLine("\t\tAvg duration: ", truncated(static_cast<double>(m_totalDuration) / count));
    std::cout << "\tFrequency (time between scoped timer calls)" << std::endl;
    printLine("\t\tMin frequency: ", m_intervals.empty() ? 0 : m_intervals.front());
    printLine("\t\tMax frequency: ", m_intervals.empty() ? 0 : m_intervals.back());
    printLine("\t\tAvg frequency: ", truncated(static_cast<double>(sumOfIntervals) / count - 1.0));
}

} // namespace Util
