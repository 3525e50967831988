#pragma once

#include <chrono>
#include <cstdint>
#include <limits>
#include <vector>

namespace Util {

/// Measures how long timed scopes take and how often they begin, and prints a report when the process ends.
class Profiler {
public:
    using Clock = std::chrono::steady_clock;

    /// Times the scope that it lives in.
    class Timer {
    public:
        explicit Timer(Profiler& profiler);
        ~Timer();
        Timer(const Timer&) = delete;
        Timer& operator=(const Timer&) = delete;

    private:
        Clock::time_point m_start;
        Profiler& m_profiler;
    };

    static Timer scopeTimer();
    static void printReport();

    Profiler(const Profiler&) = delete;
    Profiler& operator=(const Profiler&) = delete;

private:
    Profiler() = default;
    ~Profiler();

    static Profiler& instance();
    void print();

    std::int64_t m_totalDuration = 0;
    std::int64_t m_minDuration = std::numeric_limits<std::int64_t>::max();
    std::int64_t m_maxDuration = std::numeric_limits<std::int64_t>::min();
    Clock::time_point m_previousStart = Clock::time_point::min();
    std::vector<std::int64_t> m_intervals;
    std::uint64_t m_timerCount = 0;
};

} // namespace Util
