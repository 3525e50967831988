#pragma once

#include <QString>

#include <chrono>
#include <cstdio>

/// One sample of a figure on standard output, for the table. unit is "s" or "B".
inline void report(const QString& name, double value, const char* unit = "s") {
    std::printf("%s %.9g %s\n", qUtf8Printable(name), value, unit);
    std::fflush(stdout);
}

class Stopwatch {
public:
    double seconds() const { return std::chrono::duration<double>(Clock::now() - m_begin).count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_begin = Clock::now();
};
