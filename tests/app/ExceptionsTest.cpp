#include "app/errors/DbException.h"
#include "app/errors/IOException.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <future>
#include <memory>

using namespace Stemhaven;

namespace {

/// What the log shows of what arrives here when a copy of error is thrown on another thread.
template <typename Error>
QString textAcrossThreads(const Error& error) {
    const std::unique_ptr<const Exception> copy(error.clone());
    QString text;
    try {
        std::async(std::launch::async, [&] { copy->raise(); }).get();
    } catch (const Error& arrived) {
        QDebug(&text) << arrived;
    }
    return text;
}

TEST(Exceptions, AreWrittenWithWhatTheyCarryAlsoAcrossThreads) {
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "exceptions");
    db.setDatabaseName(":memory:");
    ASSERT_TRUE(db.open());
    QSqlQuery query(db);
    EXPECT_FALSE(query.exec("SELECT \"ü\" FROM nowhere"));

    EXPECT_EQ(textAcrossThreads(Exception("Ein \"Stück\"\n")), "Ein \"Stück\"\n ");
    EXPECT_EQ(textAcrossThreads(IOException(QFile("/tmp/x"), "Lost. ")), "Lost. File: /tmp/x ");
    EXPECT_EQ(
        textAcrossThreads(DbException(db, &query, "Lost!")),
        "Database Error:  Lost! \tDatabase:  :memory: \tDB error:   \tQuery:  SELECT \"ü\" FROM nowhere "
        "\tQuery error:  " +
            query.lastError().text() + " ");
}

} // namespace
