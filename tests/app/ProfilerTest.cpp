#include "app/logging/Profiler.h"

#include <QMap>
#include <QRegularExpression>
#include <QString>

#include <gtest/gtest.h>

namespace {

/// The nanoseconds of each line of a report that counts so many timers.
QMap<QString, qint64> report(int timers) {
    testing::internal::CaptureStdout();
    Util::Profiler::printReport();
    const QString text = QString::fromStdString(testing::internal::GetCapturedStdout());
    EXPECT_TRUE(text.startsWith(QString("Profiler results:\n\tScopedTimer count: %1\n").arg(timers)));

    QMap<QString, qint64> values;
    const QRegularExpression line(
        "^\\t\\t(\\w+ \\w+): (\\d+) ns, (\\d+) ms, (\\d+) s$", QRegularExpression::MultilineOption);
    for (const QRegularExpressionMatch& match : line.globalMatch(text)) {
        const qint64 nanoseconds = match.captured(2).toLongLong();
        EXPECT_EQ(match.captured(3).toLongLong(), nanoseconds / 1'000'000);
        EXPECT_EQ(match.captured(4).toLongLong(), nanoseconds / 1'000'000'000);
        values[match.captured(1)] = nanoseconds;
    }
    return values;
}

TEST(Profiler, ReportsDurationsAndIntervals) {
    EXPECT_EQ(report(0).values(), QList<qint64>(6, 0));

    { const auto timer = Util::Profiler::scopeTimer(); }
    const auto one = report(1);
    const qint64 only = one["Max duration"];
    EXPECT_EQ(one.values(), QList<qint64>({only, 0, only, 0, only, 0}));

    { const auto timer = Util::Profiler::scopeTimer(); }
    { const auto timer = Util::Profiler::scopeTimer(); }
    const auto three = report(3);
    EXPECT_LE(three["Min frequency"], three["Max frequency"]);
    // Two intervals, divided by three timers, less one.
    const qint64 sum = three["Min frequency"] + three["Max frequency"];
    EXPECT_EQ(three["Avg frequency"], static_cast<qint64>(static_cast<double>(sum) / 3 - 1.0));
}

} // namespace
