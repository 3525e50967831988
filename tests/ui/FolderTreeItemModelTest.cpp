#include "ui/sidebar/FolderTreeItemModel.h"

#include "SidebarFixture.h"

#include <QAbstractItemModelTester>

namespace {

class FolderTreeItemModelTest : public SidebarFixture {};

} // namespace

TEST_F(FolderTreeItemModelTest, ListsEveryGroupInItsOrder) {
    const QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    addEntries(FilterType::SAVED_SEARCH, list({"b", "A"}));
    addEntries(FilterType::COLLECTIONS, list({"pop", "", "Rock", "it's"}));
    addEntries(FilterType::GENRES, list({"Techno", "<b>", "ambient", "ambient"}));
    addEntries(FilterType::TAGS, list({"#z", "#A", "#b"}));
    database.rows(QStringLiteral("UPDATE lyrics_status SET name='' WHERE lyrics_status_id=2"));
    reload();

    QStringList labels;
    for (int row = 0; row < model->rowCount(); ++row)
        labels.append(model->index(row, 0).data().toString());
    EXPECT_EQ(
        labels,
        list(
            {"All", "Last Search", "Saved Searches", "Collections", "Genres", "Tags", "Arrangement Status",
             "Lyrics Status", "Recording Status", "Mix/Master Status"}));
    EXPECT_EQ(shown(FilterType::ALL), QStringList());
    EXPECT_EQ(shown(FilterType::SAVED_SEARCH), list({"A", "b"}));
    EXPECT_EQ(shown(FilterType::COLLECTIONS), list({"it's", "pop", "Rock"}));
    EXPECT_EQ(shown(FilterType::GENRES), list({"<b>", "ambient", "ambient", "Techno"}));
    EXPECT_EQ(shown(FilterType::TAGS), list({"#A", "#b", "#z"}));
    EXPECT_EQ(
        shown(FilterType::LYRICS_STATUS),
        list({"Lyrics Status Unknown", "No Lyrics", "Lyric Writing In Progress", "Lyrics Done"}));
    EXPECT_EQ(model->getEntries(FilterType::TAGS).constFirst(), (FolderTreeItemModel::Entry{"#A", 2}));
}

TEST_F(FolderTreeItemModelTest, TellsIdsOfRows) {
    addEntries(FilterType::TAGS, list({"#b", "#a"}));
    database.rows(QStringLiteral("DELETE FROM mix_master_status WHERE mix_master_status_id=1"));
    reload();
    const QModelIndex tags = model->indexOf(FilterType::TAGS);
    EXPECT_EQ(model->getTagID(model->index(0, 0, tags)), 2);
    EXPECT_EQ(model->indexOf(FilterType::TAGS, 1).row(), 1);
    EXPECT_FALSE(model->indexOf(FilterType::TAGS, 7).isValid());

    const QModelIndex third = model->index(2, 0, model->indexOf(FilterType::MIX_MASTER_STATUS));
    EXPECT_EQ(model->getMixMasterStatusID(third), 3);
    EXPECT_EQ(model->rowForStatusID(FilterType::MIX_MASTER_STATUS, 3), 2);
    EXPECT_EQ(model->rowForStatusID(FilterType::MIX_MASTER_STATUS, 1), -1);
    EXPECT_EQ(model->rowForStatusID(FilterType::MIX_MASTER_STATUS, -1), -1);

    EXPECT_EQ(model->getTagID(tags), -1);
    EXPECT_EQ(model->getCollectionID({}), -1);
    EXPECT_EQ(model->getLyricsStatusID(model->index(9, 0)), -1);
    EXPECT_EQ(log.count(QStringLiteral("for tag_id! Ignoring...")), 1);
    EXPECT_EQ(log.count(QStringLiteral("for collection_id! Ignoring...")), 1);
    EXPECT_EQ(log.count(QStringLiteral("W: Lyrics status index is out of range! Received: 9")), 1);
}

TEST_F(FolderTreeItemModelTest, ReloadsAtOnceAndOnlyAsOftenAsNeeded) {
    QSignalSpy changed(model.get(), &FolderTreeItemModel::changed);
    QSignalSpy resets(model.get(), &QAbstractItemModel::modelReset);
    addEntries(FilterType::TAGS, list({"#a"}));
    for (int i = 0; i < 5; ++i)
        model->reload();
    ASSERT_TRUE(waitUntil([&] { return !model->isReloading(); }));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(resets.count(), 1);

    // What is written before a reload is asked for is seen, also by one that waits.
    bool written = false;
    QObject::connect(model.get(), &FolderTreeItemModel::changed, model.get(), [&] {
        if (!std::exchange(written, true)) {
            auto task = std::make_shared<Stemhaven::QueryTask>(
                QStringLiteral("INSERT INTO tags VALUES(NULL, '#b')"), tasks().mainDatabase());
            tasks().addTask(task);
            model->reload();
        }
    });
    reload();
    EXPECT_EQ(shown(FilterType::TAGS), list({"#a", "#b"}));
}

TEST_F(FolderTreeItemModelTest, FailedGroupKeepsItsEntries) {
    addEntries(FilterType::TAGS, list({"#a"}));
    reload();
    database.rows(QStringLiteral("ALTER TABLE tags RENAME TO gone"));
    addEntries(FilterType::GENRES, list({"Dub"}));
    reload();
    EXPECT_EQ(shown(FilterType::TAGS), list({"#a"}));
    EXPECT_EQ(shown(FilterType::GENRES), list({"Dub"}));
    EXPECT_EQ(log.count(QStringLiteral("Could not reload the sidebar's entries of FilterType::TAGS")), 1);

    model->reload();
    model.reset();
    EXPECT_EQ(database.rows(QStringLiteral("SELECT name FROM genres")), list({"Dub"}));
}
