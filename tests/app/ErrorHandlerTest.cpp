#include "app/errors/ErrorHandler.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "app/errors/IOException.h"
#include "support/LogCapture.h"
#include "support/Waiting.h"

#include <QFile>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace Stemhaven;

namespace {

using Errors = std::vector<ErrorHandler::ErrorDetails>;

/// What handler presents until there are count errors.
Errors presented(ErrorHandler& handler, std::size_t count) {
    // Shared, since one more may be on its way when this returns.
    const auto errors = std::make_shared<Errors>();
    handler.setPresenter([errors](const auto& error) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        errors->push_back(error);
    });
    EXPECT_TRUE(waitUntil([&] { return errors->size() >= count; })) << "only " << errors->size();
    handler.setPresenter(nullptr);
    return *errors;
}

TEST(ErrorHandler, LosesNothingOfManyThreads) {
    constexpr std::array types = {QtInfoMsg, QtCriticalMsg, QtWarningMsg, QtFatalMsg};
    constexpr int reports = 500;
    ErrorHandler handler;
    std::array<std::thread, types.size()> reporters;
    for (std::size_t thread = 0; thread < types.size(); ++thread)
        reporters.at(thread) = std::thread([&handler, thread, type = types.at(thread)] {
            for (int report = 0; report < reports; ++report)
                handler.reportError(QString::number(thread), Exception(QString::number(report)), type);
        });
    std::array<int, types.size()> next = {};
    for (const auto& error : presented(handler, types.size() * reports)) {
        const std::size_t thread = error.title.toUInt();
        EXPECT_EQ(error.message.toInt(), next.at(thread)++) << thread;
        EXPECT_EQ(error.isCritical(), thread % 2 == 1) << thread;
    }
    for (std::thread& reporter : reporters)
        reporter.join();
}

TEST(Guarded, LogsAndReportsWhateverIsThrownByItsKind) {
    const std::pair<std::function<void()>, QString> cases[] = {
        {[] { throw IOException(QFile("/x"), "file "); }, "file File: /x"},
        {[] { throw DbException("lost"); },
         "Database Error:  lost \tDatabase:   \tDB error:   \tQuery:   \tQuery error:  "},
        {[] { throw Exception("\"plain\" "); }, "\"plain\" "},
        {[] { throw std::logic_error("stray "); }, "stray "},
        {[] { throw 7; }, "Unknown exception caught..."},
    };
    const LogCapture logged;
    QStringList expectedLog;
    for (const auto& [body, text] : cases) {
        guarded("Save \"A\"", body);
        EXPECT_FALSE(loggingFailures("Callback", body));
        expectedLog += {"C: Save \"A\"", "C: " + text, "C: Callback", "C: " + text};
    }
    EXPECT_EQ(logged.messages(), expectedLog);

    // Errors wait for a presenter.
    const Errors errors = presented(ErrorHandler::instance(), std::size(cases));
    ASSERT_EQ(errors.size(), std::size(cases));
    for (std::size_t at = 0; at < errors.size(); ++at) {
        EXPECT_EQ(errors[at].title, "Save \"A\"");
        EXPECT_EQ(errors[at].message, cases[at].second);
        EXPECT_EQ(errors[at].type, QtCriticalMsg);
    }
}

} // namespace
