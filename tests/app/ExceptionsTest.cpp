#include "app/errors/DbException.h"
#include "app/errors/IOException.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <optional>
#include <sstream>

using Stemhaven::DbException;
using Stemhaven::Exception;
using Stemhaven::IOException;

namespace {

/// How an exception looks in the log and on a standard stream.
struct Texts {
    template <typename Error>
    explicit Texts(const Error& error) {
        QString text;
        QDebug(&text) << error;
        debug = text.toStdString();
        std::ostringstream output;
        output << error;
        stream = output.str();
    }

    std::string debug;
    std::string stream;
};

TEST(Exceptions, AreWrittenWithWhatTheyCarry) {
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "exceptions");
    db.setDatabaseName(":memory:");
    ASSERT_TRUE(db.open());
    QSqlQuery query(db);
    EXPECT_FALSE(query.exec("SELECT \"ü\" FROM nowhere"));
    QSqlDatabase shut = QSqlDatabase::addDatabase("QSQLITE", "unopened");
    shut.setDatabaseName("/dev/null/x");
    EXPECT_FALSE(shut.open());
    const std::string dbError = shut.lastError().text().toStdString();
    const std::string queryError = query.lastError().text().toStdString();
    ASSERT_NE(queryError.find("no such table"), std::string::npos);

    struct Case {
        Texts actual;
        std::string debug;
        std::string stream;
    };

    const Case cases[] = {
        {Texts(Exception("Ein \"Stück\"\n")), "Ein \"Stück\"\n ", "Ein \"Stück\"\n"},
        {Texts(IOException("Lost. ")), "Lost.  ", "Lost. "},
        {Texts(IOException(QFile("/tmp/x"), "Lost. ")), "Lost. File: /tmp/x ", "Lost. File: /tmp/x"},
        {Texts(DbException("Lost!")),
         "Database Error:  Lost! \tDatabase:   \tDB error:   \tQuery:   \tQuery error:   ",
         "Database Error: Lost!\tDatabase: \tDB error: \tQuery: \tQuery error: "},
        {Texts(DbException(shut, "Lost!")),
         "Database Error:  Lost! \tDatabase:  /dev/null/x \tDB error:  " + dbError +
             " \tQuery:   \tQuery error:   ",
         "Database Error: Lost!\tDatabase: /dev/null/x\tDB error: " + dbError + "\tQuery: \tQuery error: "},
        // A query that failed has a text but was not executed.
        {Texts(DbException(&query, "Lost!")),
         "Database Error:  Lost! \tDatabase:   \tDB error:   \tQuery:   \tQuery error:  " + queryError + " ",
         "Database Error: Lost!\tDatabase: \tDB error: \tQuery: \tQuery error: " + queryError},
        {Texts(DbException(db, &query, "Lost!")),
         "Database Error:  Lost! \tDatabase:  :memory: \tDB error:   \tQuery:  SELECT \"ü\" FROM nowhere "
         "\tQuery error:  " +
             queryError + " ",
         "Database Error: Lost!\tDatabase: :memory:\tDB error: \tQuery: SELECT \"ü\" FROM nowhere"
         "\tQuery error: " +
             queryError},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(each.actual.debug, each.debug);
        EXPECT_EQ(each.actual.stream, each.stream);
    }
}

/// What arrives here when a copy of error is thrown on another thread; nothing when it arrives as another
/// kind.
template <typename Error>
std::optional<Error> acrossThreads(const Error& error) {
    const std::unique_ptr<const Exception> copy(error.clone());
    try {
        std::async(std::launch::async, [&] { copy->raise(); }).get();
    } catch (const Exception& thrown) {
        if (const auto* arrived = dynamic_cast<const Error*>(&thrown))
            return *arrived;
    }
    return std::nullopt;
}

TEST(Exceptions, KeepTheirKindAndContentsAcrossThreads) {
    EXPECT_STREQ(acrossThreads(Exception("plain")).value().what(), "plain");
    EXPECT_STREQ(acrossThreads(IOException(QFile("/x"), "file ")).value().what(), "file File: /x");

    const QSqlDatabase closed = QSqlDatabase::addDatabase("QSQLITE", "across-threads");
    const QSqlQuery query("SELECT 2", closed);
    const DbException error(closed, &query, "gone");
    EXPECT_EQ(Texts(acrossThreads(error).value()).debug, Texts(error).debug);
    EXPECT_NE(Texts(error).debug.find("SELECT 2"), std::string::npos);
}

} // namespace
