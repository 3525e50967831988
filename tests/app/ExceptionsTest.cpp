#include "app/errors/DbException.h"
#include "app/errors/IOException.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <sstream>

using namespace Stemhaven;

namespace {

/// How an exception looks in the log and on a standard stream.
using Texts = std::pair<std::string, std::string>;

template <typename Error>
Texts texts(const Error& error) {
    QString debug;
    QDebug(&debug) << error;
    std::ostringstream stream;
    stream << error;
    return {debug.toStdString(), stream.str()};
}

Texts databaseTexts(
    const std::string& database, const std::string& error, const std::string& query,
    const std::string& queryError) {
    return {
        "Database Error:  Lost! \tDatabase:  " + database + " \tDB error:  " + error + " \tQuery:  " + query +
            " \tQuery error:  " + queryError + " ",
        "Database Error: Lost!\tDatabase: " + database + "\tDB error: " + error + "\tQuery: " + query +
            "\tQuery error: " + queryError};
}

/// The texts of what arrives here when a copy of error is thrown on another thread.
template <typename Error>
Texts textsAcrossThreads(const Error& error) {
    const std::unique_ptr<const Exception> copy(error.clone());
    try {
        std::async(std::launch::async, [&] { copy->raise(); }).get();
    } catch (const Error& arrived) {
        return texts(arrived);
    }
    return {};
}

TEST(Exceptions, AreWrittenWithWhatTheyCarryAlsoAcrossThreads) {
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

    EXPECT_EQ(textsAcrossThreads(Exception("Ein \"Stück\"\n")), Texts("Ein \"Stück\"\n ", "Ein \"Stück\"\n"));
    EXPECT_EQ(texts(IOException("Lost. ")), Texts("Lost.  ", "Lost. "));
    EXPECT_EQ(
        textsAcrossThreads(IOException(QFile("/tmp/x"), "Lost. ")),
        Texts("Lost. File: /tmp/x ", "Lost. File: /tmp/x"));
    EXPECT_EQ(texts(DbException("Lost!")), databaseTexts("", "", "", ""));
    EXPECT_EQ(texts(DbException(shut, "Lost!")), databaseTexts("/dev/null/x", dbError, "", ""));
    // A query that failed has a text but was not executed.
    EXPECT_EQ(texts(DbException(&query, "Lost!")), databaseTexts("", "", "", queryError));
    EXPECT_EQ(
        textsAcrossThreads(DbException(db, &query, "Lost!")),
        databaseTexts(":memory:", "", "SELECT \"ü\" FROM nowhere", queryError));
}

} // namespace
