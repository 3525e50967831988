#include "app/logging/Profiler.h"

#include <QRegularExpression>
#include <QString>

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace {

QString report() {
    std::ostringstream output;
    std::streambuf* const console = std::cout.rdbuf(output.rdbuf());
    Util::Profiler::printReport();
    std::cout.rdbuf(console);
    return QString::fromStdString(output.str());
}

qint64 nanoseconds(const QString& text, const QString& label) {
    const QRegularExpression line(
        "^\\t\\t" + label + ": (\\d+) ns, (\\d+) ms, (\\d+) s$", QRegularExpression::MultilineOption);
    const auto match = line.match(text);
    EXPECT_TRUE(match.hasMatch()) << label.toStdString();
    EXPECT_EQ(match.captured(2).toLongLong(), match.captured(1).toLongLong() / 1'000'000);
    EXPECT_EQ(match.captured(3).toLongLong(), match.captured(1).toLongLong() / 1'000'000'000);
    return match.captured(1).toLongLong();
}

TEST(Profiler, ReportsDurationsAndIntervals) {
    const QStringList labels = {"Max duration",  "Min duration",  "Avg duration",
                                "Min frequency", "Max frequency", "Avg frequency"};
    for (const QString& label : labels)
        EXPECT_EQ(nanoseconds(report(), label), 0) << "before any timer";

    { const auto timer = Util::Profiler::scopeTimer(); }
    const QString one = report();
    EXPECT_EQ(nanoseconds(one, "Max duration"), nanoseconds(one, "Min duration"));
    EXPECT_EQ(nanoseconds(one, "Max duration"), nanoseconds(one, "Avg duration"));
    for (const QString& label : labels.mid(3))
        EXPECT_EQ(nanoseconds(one, label), 0) << "a lone timer";

    { const auto timer = Util::Profiler::scopeTimer(); }
    { const auto timer = Util::Profiler::scopeTimer(); }
    const QString three = report();
    EXPECT_TRUE(three.startsWith("Profiler results:\n\tScopedTimer count: 3\n")) << three.toStdString();
    EXPECT_LE(nanoseconds(three, "Min frequency"), nanoseconds(three, "Max frequency"));
    // Two intervals, divided by three timers, less one.
    const qint64 sum = nanoseconds(three, "Min frequency") + nanoseconds(three, "Max frequency");
    EXPECT_EQ(nanoseconds(three, "Avg frequency"), static_cast<qint64>(static_cast<double>(sum) / 3 - 1.0));
}

} // namespace
