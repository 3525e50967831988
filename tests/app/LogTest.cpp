#include "app/logging/Log.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <thread>

using Logging::Log;

namespace {

class LogTest : public testing::Test {
protected:
    void SetUp() override {
        Log::setDirectory(folder.path());
        Log::setPrefix("test");
        Log::setLevel(QtCriticalMsg);
        Log::outputToConsole(false);
    }

    void TearDown() override {
        Log::setLevel(QtCriticalMsg);
        Log::outputToConsole(true);
    }

    static void write(QtMsgType type, const QString& message) { Logging::handler(type, {}, message); }

    static QByteArray contents() {
        QFile file(Log::filepath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    static void setContents(const QByteArray& bytes) {
        QFile file(Log::filepath());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    const QTemporaryDir folder;
};

using LogDeathTest = LogTest;

TEST_F(LogTest, StandsWhereItIsToldOneFolderDeep) {
    EXPECT_EQ(Log::filepath(), folder.path() + "/test.log");
    Log::setDirectory(folder.filePath("made/"));
    EXPECT_EQ(Log::filepath(), folder.path() + "/made/test.log");
    EXPECT_TRUE(QDir(folder.filePath("made")).exists());

    Log::setDirectory(folder.filePath("not/made"));
    EXPECT_FALSE(QDir(folder.filePath("not")).exists());
    write(QtCriticalMsg, "to nowhere");
}

TEST_F(LogTest, WritesWhatPassesTheLevelAsANumber) {
    struct Case {
        int level;
        const char* tags;
    };

    const Case cases[] = {
        {0, "(DEBUG)(WARNING)(CRITICAL)(FATAL)(INFO)(UNKNOWN)"},
        {1, "(WARNING)(CRITICAL)(FATAL)(INFO)(UNKNOWN)"},
        {2, "(CRITICAL)(FATAL)(INFO)(UNKNOWN)"},
        {3, "(FATAL)(INFO)(UNKNOWN)"},
        {4, "(INFO)(UNKNOWN)"},
        {5, "(UNKNOWN)"},
    };
    for (const Case& each : cases) {
        QFile::remove(Log::filepath());
        Log::setLevel(static_cast<QtMsgType>(each.level));
        for (const int type : {0, 1, 2, 3, 4, 7})
            write(static_cast<QtMsgType>(type), "grün\nzwei");

        QByteArray tags;
        const QRegularExpression line("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\([A-Z]+\\)): grün$");
        const QList<QByteArray> lines = contents().split('\n');
        for (qsizetype at = 0; at < lines.size(); at += 2) {
            tags += line.match(QString::fromUtf8(lines.at(at))).captured(1).toUtf8();
            EXPECT_EQ(lines.value(at + 1), "zwei");
        }
        EXPECT_EQ(tags, each.tags);
    }
}

TEST_F(LogTest, IsCutToItsTailOnlyAboveTheLimit) {
    QByteArray full(Log::maxLogFileSize(), 'x');
    full.replace(full.size() - 1024, 2, "AB");
    setContents(full);
    write(QtDebugMsg, "filtered");
    EXPECT_TRUE(contents() == full);

    setContents(full + 'y');
    write(QtDebugMsg, "filtered");
    EXPECT_EQ(contents(), "B" + QByteArray(1022, 'x') + "y");

    setContents(full + 'y');
    write(QtInfoMsg, "written");
    EXPECT_TRUE(contents().startsWith("B" + QByteArray(1022, 'x') + "y\n")) << contents().left(1030).data();
    EXPECT_TRUE(contents().endsWith("(INFO): written"));
}

TEST_F(LogTest, LosesAndTearsNoLineOfManyThreadsWhileItIsCut) {
    constexpr int rounds = 20;
    constexpr int threads = 6;
    constexpr int messages = 10;
    for (int round = 0; round < rounds; ++round) {
        setContents(QByteArray(Log::maxLogFileSize() + 1, 'x'));
        std::array<std::thread, threads> writers;
        for (std::thread& writer : writers)
            writer = std::thread([] {
                for (int i = 0; i < messages; ++i)
                    qCritical("%s", QByteArray(300, 'm').constData());
            });
        for (std::thread& writer : writers)
            writer.join();

        const QList<QByteArray> lines = contents().split('\n');
        ASSERT_EQ(lines.size(), 1 + threads * messages);
        EXPECT_EQ(lines.first(), QByteArray(1024, 'x'));
        for (const QByteArray& line : lines.mid(1))
            EXPECT_EQ(line.mid(line.indexOf(':', line.indexOf(')'))), ": " + QByteArray(300, 'm'));
    }
}

TEST_F(LogTest, SendsEachTypeToItsStreamUnlessTheConsoleIsOff) {
    Log::setLevel(QtDebugMsg);
    for (const bool on : {true, false}) {
        Log::outputToConsole(on);
        EXPECT_EQ(Log::shouldOutputToConsole(), on);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        for (const auto type : {QtDebugMsg, QtWarningMsg, QtCriticalMsg, QtFatalMsg, QtInfoMsg})
            write(type, "ü");
        QString out = QString::fromStdString(testing::internal::GetCapturedStdout());
        QString err = QString::fromStdString(testing::internal::GetCapturedStderr());
        const QRegularExpression stamp("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d");
        EXPECT_EQ(out.remove(stamp), on ? "(DEBUG): ü\n(WARNING): ü\n" : "");
        EXPECT_EQ(err.remove(stamp), on ? "(CRITICAL): ü\n(FATAL): ü\n(INFO): ü\n" : "");
    }
}

TEST_F(LogDeathTest, HasAFatalMessageBeforeTheProgramAborts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Log::setDirectory(QDir::homePath());
    Log::setPrefix("fatal");
    EXPECT_EXIT(qFatal("the end"), testing::KilledBySignal(SIGABRT), "");
    EXPECT_TRUE(contents().endsWith("(FATAL): the end")) << contents().data();
}

// Not of the fixture: in the process started for it the log is made after what is to outlive it.
TEST(LogAtExitDeathTest, SurvivesMessagesOfWhatOutlivesTheLog) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            qSetMessagePattern("by Qt itself: %{message}");
            std::atexit([] {
                qCritical("through Qt");
                Logging::handler(QtCriticalMsg, {}, "straight");
            });
            Log::instance();
            std::exit(0); // NOLINT(concurrency-mt-unsafe)
        },
        testing::ExitedWithCode(0), "by Qt itself: through Qt\nstraight");
}

} // namespace
