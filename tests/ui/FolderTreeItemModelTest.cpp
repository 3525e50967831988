#include "ui/sidebar/FolderTreeItemModel.h"

#include "SidebarFixture.h"

#include <QAbstractItemModelTester>

using enum FilterType;

using FolderTreeItemModelTest = SidebarFixture;

TEST_F(FolderTreeItemModelTest, ListsEveryGroupInItsOrderAndTellsIdsOfRows) {
    const QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    addEntries(SAVED_SEARCH, {"b", "A"});
    addEntries(COLLECTIONS, {"pop", "", "Rock", "it's"});
    addEntries(GENRES, {"Techno", "<b>", "ambient", "ambient"});
    addEntries(TAGS, {"#z", "#A", "#b"});
    database.rows("UPDATE lyrics_status SET name='' WHERE lyrics_status_id=2");
    database.rows("DELETE FROM mix_master_status WHERE mix_master_status_id=1");
    reload();

    EXPECT_EQ(
        textsBelow({}),
        (QStringList{
            "All", "Last Search", "Saved Searches", "Collections", "Genres", "Tags", "Arrangement Status",
            "Lyrics Status", "Recording Status", "Mix/Master Status"}));
    EXPECT_EQ(shown(SAVED_SEARCH), (QStringList{"A", "b"}));
    EXPECT_EQ(shown(COLLECTIONS), (QStringList{"it's", "pop", "Rock"}));
    EXPECT_EQ(shown(GENRES), (QStringList{"<b>", "ambient", "ambient", "Techno"}));
    EXPECT_EQ(shown(TAGS), (QStringList{"#A", "#b", "#z"}));
    EXPECT_EQ(
        shown(LYRICS_STATUS),
        (QStringList{"Lyrics Status Unknown", "No Lyrics", "Lyric Writing In Progress", "Lyrics Done"}));
    EXPECT_EQ(model->getEntries(TAGS).constFirst(), (FolderTreeItemModel::Entry{"#A", 2}));

    const QModelIndex tags = model->indexOf(TAGS);
    EXPECT_EQ(model->getTagID(model->index(0, 0, tags)), 2);
    EXPECT_EQ(model->indexOf(TAGS, 1).row(), 2);
    EXPECT_FALSE(model->indexOf(TAGS, 7).isValid());

    const QModelIndex third = model->index(2, 0, model->indexOf(MIX_MASTER_STATUS));
    EXPECT_EQ(model->getMixMasterStatusID(third), 3);
    EXPECT_EQ(model->rowForStatusID(MIX_MASTER_STATUS, 3), 2);
    EXPECT_EQ(model->rowForStatusID(MIX_MASTER_STATUS, 1), -1);

    EXPECT_EQ(model->getTagID(tags), -1);
    EXPECT_EQ(log.count("for tag_id! Ignoring..."), 1);
}

TEST_F(FolderTreeItemModelTest, ReloadsAtOnceAndOnlyAsOftenAsNeeded) {
    QSignalSpy changed(model.get(), &FolderTreeItemModel::changed);
    QSignalSpy resets(model.get(), &QAbstractItemModel::modelReset);
    addEntries(TAGS, {"#a"});
    for (int i = 0; i < 4; ++i)
        model->reload();
    reload();
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(resets.count(), 1);

    // What is written before a reload is asked for is seen, also by one that waits.
    bool written = false;
    QObject::connect(model.get(), &FolderTreeItemModel::changed, model.get(), [&] {
        if (std::exchange(written, true))
            return;
        const QString statement = "INSERT INTO tags VALUES(NULL, '#b')";
        tasks().addTask(std::make_shared<Stemhaven::QueryTask>(statement, tasks().mainDatabase()));
        model->reload();
    });
    reload();
    EXPECT_EQ(shown(TAGS), (QStringList{"#a", "#b"}));
}

TEST_F(FolderTreeItemModelTest, FailedGroupKeepsItsEntries) {
    addEntries(TAGS, {"#a"});
    reload();
    database.rows("ALTER TABLE tags RENAME TO gone");
    addEntries(GENRES, {"Dub"});
    reload();
    EXPECT_EQ(shown(TAGS), QStringList("#a"));
    EXPECT_EQ(shown(GENRES), QStringList("Dub"));
    EXPECT_EQ(log.count("Could not reload the sidebar's entries of FilterType::TAGS"), 1);

    model->reload();
    model.reset();
    EXPECT_EQ(database.rows("SELECT name FROM genres"), QStringList("Dub"));
}
