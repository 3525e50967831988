#include "database/ProjectStatements.h"
#include "database/RootPathStatements.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

class StatementsTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(database.initialise()); }

    TestDatabase database;
};

} // namespace

TEST_F(StatementsTest, CountTheProjectsOfAFolderByItsExactPath) {
    for (const char* folder :
         {"/music/", "/music/Pop/", "/music/Pop/New/", "/Music/Pop/", "/music/Pop 2/", "/music/P_p/", "/mü/",
          "/music/100%/", "/music/It''s/"}) {
        database.rows(
            QString("INSERT INTO projects(filepath, filename, name, bpm, number_of_tracks, sample_rate) "
                    "VALUES('%1', 'a.logicx', 'a', 120, 8, 44100)")
                .arg(folder));
    }
    EXPECT_EQ(
        database.rows(ProjectStatements::countBelow(
            {"/music/", "/music/Pop/", "/music/P_p/", "/music/100%/", "/music/It's/", "/mü/", "/none/",
             "/%1/"})),
        QStringList({"7", "2", "1", "1", "1", "1", "0", "0"}));
}

TEST_F(StatementsTest, RemoveTheWatchedFolderOfThatNameAlone) {
    for (const char* folder : {"/music/It's", "/music", "/music/Its"})
        database.rootRows(RootPathStatements::insert(folder));
    database.rootRows(RootPathStatements::remove("/music/It's"));
    database.rootRows(RootPathStatements::remove("/MUSIC"));
    EXPECT_EQ(database.rootRows(RootPathStatements::selectAll()), QStringList({"/music", "/music/Its"}));
}
