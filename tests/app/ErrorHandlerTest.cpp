#include "app/errors/ErrorHandler.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "app/errors/IOException.h"
#include "app/logging/Log.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <thread>
#include <vector>

using Stemhaven::DbException;
using Stemhaven::ErrorHandler;
using Stemhaven::Exception;
using Stemhaven::IOException;

namespace {

/// Collects what the handler presents, and runs the event loop until there is enough of it.
class Presented {
public:
    ErrorHandler::Presenter presenter() {
        return [this](const ErrorHandler::ErrorDetails& error) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            m_errors.push_back(error);
            if (m_errors.size() == m_expected)
                m_loop.quit();
        };
    }

    const std::vector<ErrorHandler::ErrorDetails>& waitFor(std::size_t count) {
        m_expected = count;
        QTimer::singleShot(std::chrono::seconds(60), &m_loop, [this] {
            ADD_FAILURE() << "only " << m_errors.size() << " errors arrived";
            m_loop.quit();
        });
        if (m_errors.size() < count)
            m_loop.exec();
        return m_errors;
    }

private:
    QEventLoop m_loop;
    std::vector<ErrorHandler::ErrorDetails> m_errors;
    std::size_t m_expected = 0;
};

TEST(ErrorHandler, PresentsOnTheGuiThreadInTheOrderOfTheReports) {
    Presented presented;
    ErrorHandler handler;
    std::thread([&] {
        handler.reportError("1", Exception("\"plain\""), QtInfoMsg);
        handler.reportError("2", DbException("lost"), QtFatalMsg);
        handler.reportError("3", IOException(QFile("/x"), "unreadable "), QtCriticalMsg);
        handler.reportError("4", std::runtime_error("stray "), QtWarningMsg);
    }).join();
    handler.setPresenter(presented.presenter());

    struct Case {
        const char* title;
        const char* message;
        bool critical;
    };

    const Case cases[] = {
        {"1", "\"plain\"", false},
        {"2", "Database Error:  lost \tDatabase:   \tDB error:   \tQuery:   \tQuery error:  ", true},
        {"3", "unreadable File: /x", true},
        {"4", "stray ", false},
    };
    const auto& errors = presented.waitFor(std::size(cases));
    ASSERT_EQ(errors.size(), std::size(cases));
    auto error = errors.begin();
    for (const Case& each : cases) {
        EXPECT_EQ(error->title, each.title);
        EXPECT_EQ(error->message, each.message);
        EXPECT_EQ(error->isCritical(), each.critical) << each.title;
        ++error;
    }
}

TEST(ErrorHandler, LosesNothingOfManyThreads) {
    constexpr int threads = 4;
    constexpr int reports = 500;
    Presented presented;
    ErrorHandler handler;
    handler.setPresenter(presented.presenter());
    std::array<std::thread, threads> reporters;
    for (unsigned thread = 0; thread < threads; ++thread)
        reporters.at(thread) = std::thread([&handler, thread] {
            for (int report = 0; report < reports; ++report)
                handler.reportError(
                    QString::number(thread), Exception(QString::number(report)), QtWarningMsg);
        });
    std::array<int, threads> next = {};
    for (const auto& error : presented.waitFor(static_cast<std::size_t>(threads) * reports))
        EXPECT_EQ(error.message.toInt(), next.at(error.title.toUInt())++);
    for (std::thread& reporter : reporters)
        reporter.join();
}

TEST(ErrorHandler, EndsWithAQueueThatNobodyTookUp) {
    int presented = 0;
    {
        ErrorHandler handler;
        handler.reportError("never", Exception("shown"), QtCriticalMsg);
    }
    {
        ErrorHandler handler;
        handler.setPresenter([&](const auto&) { ++presented; });
        handler.setPresenter(nullptr);
        handler.reportError("never", Exception("shown"), QtCriticalMsg);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(presented, 0);
}

/// The lines that the log holds after its time stamps.
std::vector<QString> loggedLines() {
    QFile file(Logging::Log::filepath());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<QString> lines;
    for (const QByteArray& line : file.readAll().split('\n'))
        lines.push_back(line.mid(QByteArrayLiteral("2024-05-01T14:03:22").size()));
    return lines;
}

TEST(Guarded, LogsAndReportsWhateverIsThrownByItsKind) {
    struct Case {
        std::function<void()> body;
        const char* log;
        const char* report;
    };

    const char* database = "Database Error:  lost \tDatabase:   \tDB error:   \tQuery:   \tQuery error:  ";
    const Case cases[] = {
        {[] { throw IOException("file"); }, "file", "file"},
        {[] { throw DbException("lost"); }, database, database},
        {[] { throw Exception("plain"); }, "plain", "plain"},
        {[] { throw std::logic_error("stray"); }, "stray", "stray"},
        {[] { throw 7; }, "Unknown exception caught...", "Unknown exception caught..."},
    };
    Logging::Log::setDirectory(QDir::tempPath());
    Logging::Log::setPrefix("guarded");
    Logging::Log::outputToConsole(false);
    Presented presented;
    ErrorHandler::instance().setPresenter(presented.presenter());

    int untouched = 0;
    Stemhaven::guarded("nothing", [&] { ++untouched; });
    EXPECT_TRUE(Stemhaven::loggingFailures("nothing", [&] { ++untouched; }));
    EXPECT_EQ(untouched, 2);

    std::vector<QString> expectedLog;
    for (const Case& each : cases) {
        Stemhaven::guarded("Save \"A\"", each.body);
        EXPECT_FALSE(Stemhaven::loggingFailures("Callback", each.body));
        for (const char* headline : {"Save \"A\"", "Callback"}) {
            expectedLog.push_back(QString("(CRITICAL): ") + headline);
            expectedLog.push_back(QString("(CRITICAL): ") + each.log);
        }
    }
    Logging::Log::outputToConsole(true);
    EXPECT_EQ(loggedLines(), expectedLog);

    const auto& errors = presented.waitFor(std::size(cases));
    ASSERT_EQ(errors.size(), std::size(cases));
    auto error = errors.begin();
    for (const Case& each : cases) {
        EXPECT_EQ(error->title, "Save \"A\"");
        EXPECT_EQ(error->message, each.report);
        EXPECT_EQ(error->type, QtCriticalMsg);
        ++error;
    }
    ErrorHandler::instance().setPresenter(nullptr);
}

} // namespace
