#include "database/Outage.h"

#include "app/errors/DbException.h"
#include "support/LogCapture.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <gtest/gtest.h>

using namespace Stemhaven;

TEST(Outage, EachErrorIsLoggedOnceInItAndAgainInTheNext) {
    const QString name = "outage";
    {
        auto database = QSqlDatabase::addDatabase("QSQLITE", name);
        database.setDatabaseName(":memory:");
        ASSERT_TRUE(database.open());
        QSqlQuery query(database);
        ASSERT_TRUE(query.exec("CREATE TABLE songs (name TEXT)"));
        const auto failure = [&](const QString& fault, const QString& statement) {
            EXPECT_TRUE(query.exec(fault));
            query.finish();
            EXPECT_FALSE(query.exec(statement));
            return DbException(&query, "Query had an error");
        };
        const QString insert = "INSERT INTO songs VALUES (zeroblob(100000))";
        const auto full = failure("PRAGMA max_page_count=5", insert);
        const auto readOnly = failure("PRAGMA query_only=1", insert);
        const auto wrong = failure("PRAGMA query_only=0", "INSERT INTO");
        ASSERT_NE(full.getQueryErrorMessage(), readOnly.getQueryErrorMessage());

        Outage outage(database);
        LogCapture messages;
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(outage.logged("!", full).isRepeated(), i > 0);
            EXPECT_EQ(outage.logged("!", readOnly).isRepeated(), i > 0);
            EXPECT_FALSE(outage.logged("!", wrong).isRepeated());
        }
        EXPECT_EQ(messages.count("C: "), 5);
        for (const auto& [statement, ends] :
             {std::pair("SELECT * FROM songs", 0),
              {"DELETE FROM songs", 0},
              {"INSERT INTO songs VALUES (1)", 1},
              {"DELETE FROM songs", 1}}) {
            ASSERT_TRUE(query.exec(statement));
            query.finish();
            outage.succeeded();
            EXPECT_EQ(messages.count("The database can be written again."), ends) << statement;
        }
        EXPECT_FALSE(outage.logged("!", full).isRepeated());
    }
    QSqlDatabase::removeDatabase(name);
}
