#include "app/logging/Log.h"

#include "app/logging/PrintableText.h"

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

    static void write(QtMsgType type, const QString& message) { Logging::handler(type, {}, message); }

    static QByteArray contents() {
        QFile file(Log::filepath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    static void setContents(const QByteArray& bytes) {
        QFile file(Log::filepath());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    /// Each time stamp at the begin of a line becomes an at sign.
    static QString withoutTimes(const std::string& lines) {
        const QRegularExpression time("(^|\n)\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d");
        return QString::fromStdString(lines).replace(time, "\\1@");
    }

    const QTemporaryDir folder;
};

using LogDeathTest = LogTest;

TEST_F(LogTest, WritesWhatPassesTheLevelAsANumber) {
    const QStringList tags = {"(DEBUG)", "(WARNING)", "(CRITICAL)", "(FATAL)", "(INFO)", "(UNKNOWN)"};
    for (int level = 0; level < tags.size(); ++level) {
        QFile::remove(Log::filepath());
        Log::setLevel(static_cast<QtMsgType>(level));
        for (const int type : {0, 1, 2, 3, 4, 7})
            write(static_cast<QtMsgType>(type), "grün\tzwei");
        const QString expected = "@" + tags.mid(level).join(": grün\tzwei\n@") + ": grün\tzwei";
        EXPECT_EQ(withoutTimes(contents().toStdString()), expected) << level;
    }
}

TEST_F(LogTest, ShowsControlCharactersOfANameAndLetsNoneBeginALine) {
    const std::pair<const char16_t*, const char*> cases[] = {
        {u"Song\n2026-01-01T00:00:00(INFO): All is well", "Song\\n2026-01-01T00:00:00(INFO): All is well"},
        {u"a\r\nb\tc\\n\"ü\" \u05d0", "a\\r\\nb\tc\\n\"ü\" \u05d0"},
        {u"\u001b[2J\u009b1A\u007f\u0085\u0008", "\\u001b[2J\\u009b1A\\u007f\\u0085\\u0008"},
        {u"\u2028\u2029\u202a\u202e\u2066\u2069\u200e", "\\u2028\\u2029\\u202a\\u202e\\u2066\\u2069\u200e"},
    };
    for (const auto& [name, shown] : cases) {
        QFile::remove(Log::filepath());
        Log::outputToConsole(true);
        testing::internal::CaptureStderr();
        qCritical().noquote() << "Gone:" << QString::fromUtf16(name);
        const auto console = testing::internal::GetCapturedStderr();
        EXPECT_EQ(withoutTimes(contents().toStdString()), QString("@(CRITICAL): Gone: ") + shown);
        EXPECT_EQ(console, contents().toStdString() + '\n');
    }
    EXPECT_EQ(Logging::printable(QString("a\nb\x1b"), Logging::LineBreaks::Keep), "a\nb\\u001b");
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
