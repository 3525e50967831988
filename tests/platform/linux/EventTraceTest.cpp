#include "platform/linux/EventTrace.h"

#include "platform/FileEventStream.h"
#include "support/LogCapture.h"

#include <QLoggingCategory>

#include <gtest/gtest.h>
#include <sys/inotify.h>

using namespace Stemhaven;

TEST(EventTrace, KeepsTheLastThousandStepsInOrderAndWritesThemOnce) {
    EventTrace trace;
    constexpr int steps = 1500;
    constexpr int dropped = steps - static_cast<int>(EventTrace::capacity);
    const LogCapture log;
    for (int i = 0; i < steps; ++i) {
        if (i % 2 == 0)
            trace.noteSystemEvent(
                {i, IN_MOVED_TO | IN_ISDIR | 0x40000, 5, "A \n.logicx"}, "/Music " + std::to_string(i));
        else
            trace.noteFileEvent("/Music " + std::to_string(i), 7, FileEvent::ItemRenamed | 0x1, 9);
    }
    EXPECT_EQ(log.messages(), QStringList());

    trace.write("Something happened.");
    const auto lines = log.messages();
    ASSERT_EQ(lines.size(), 1 + static_cast<int>(EventTrace::capacity));
    EXPECT_EQ(
        lines[0],
        "I: Something happened. The last 1000 steps of the file events, with the seconds since then:");
    EXPECT_TRUE(lines[1].endsWith(
        QString("system: MOVED_TO|ISDIR|0x40000 watch %1 cookie 5 \"/Music %1\" \"A \\n.logicx\"")
            .arg(dropped)))
        << lines[1].toStdString();
    EXPECT_TRUE(
        lines.last().endsWith(QString("told: scan|renamed fileID 7 eventID 9 \"/Music %1\"").arg(steps - 1)))
        << lines.last().toStdString();

    trace.write("Something happened.");
    EXPECT_EQ(log.messages().size(), lines.size());
}

TEST(EventTrace, LogsEachStepAtOnceWhereThatIsAskedFor) {
    EventTrace trace;
    const LogCapture log;
    QLoggingCategory::setFilterRules("stemhaven.events.debug=true");
    trace.noteFileEvent("/Music", 7, FileEvent::ItemCreated, 9);
    QLoggingCategory::setFilterRules({});
    trace.noteFileEvent("/Music", 7, FileEvent::ItemCreated, 10);
    EXPECT_EQ(log.messages(), QStringList("D: File events: told: created fileID 7 eventID 9 \"/Music\""));
}
