#include "ui/edits/EditHistory.h"

#include "ProjectsFixture.h"
#include "ui/edits/ProjectEdit.h"
#include "ui/edits/ProjectEdits.h"

#include <functional>

using namespace ProjectEdits;
using enum FilterType;

namespace {

class EditHistoryTest : public ProjectsFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        insert("A", "star_rating=4, progress=0.25, genre_id=1, notes=x'00ff', UPC='it''s', SUFID='1-7'");
        insert("B", "ignored=1, completed=1, lyrics_status=2");
        insert("C", "star_rating=5");
        database.rows("INSERT INTO collections VALUES(1, 'Album'), (2, 'Live')");
        database.rows("INSERT INTO genres VALUES(1, 'Pop', NULL), (2, 'Rock', NULL)");
        database.rows("INSERT INTO tags VALUES(1, '#one'), (2, '#two')");
        database.rows("INSERT INTO collections_projects_map VALUES(1, 1), (2, 1)");
        database.rows("INSERT INTO project_tag_map VALUES(1, 2), (2, 2)");
    }

    /// Everything that edits change.
    QStringList state() {
        return value("*, quote(notes), quote(progress), quote(genre_id), quote(SUFID)") +
            database.rows("SELECT 'c', * FROM collections_projects_map ORDER BY 2, 3") +
            database.rows("SELECT 't', * FROM project_tag_map ORDER BY 2, 3");
    }

    QStringList value(const QString& expression) {
        return database.rows(QString("SELECT %1 FROM projects ORDER BY project_id").arg(expression));
    }

    /// Has the step done and waits for its end.
    bool settle(const std::function<void(EditHistory&)>& step) {
        QSignalSpy written(&history, &EditHistory::written);
        QSignalSpy refused(&history, &EditHistory::refused);
        step(history);
        return waitUntil([&] { return written.count() + refused.count() > 0; }) && refused.isEmpty();
    }

    bool perform(std::unique_ptr<ProjectEdit> edit) {
        return settle([&](auto& /*history*/) { history.perform(std::move(edit)); });
    }

    bool undo() { return settle(&EditHistory::undo); }

    bool redo() { return settle(&EditHistory::redo); }

    EditHistory history{tasks()};
};

} // namespace

TEST_F(EditHistoryTest, EveryKindOfEditGoesBackAndForth) {
    const QString ofProject = "(SELECT group_concat(%1) FROM %2 m WHERE m.project_id=projects.project_id)";
    const QString collections = ofProject.arg("collection_id", "collections_projects_map");
    const QString tags = ofProject.arg("tag_id", "project_tag_map");
    const QString genre = "quote(genre_id)";
    const QString bothOfProgress = "quote(progress) || completed";
    const QList<qint64> both{1, 2};

    struct {
        const char* name;
        std::unique_ptr<ProjectEdit> edit;
        QString expression;
        QStringList edited;
    } cases[] = {
        {"Rating", starRating(both, 2), "star_rating", {"2", "2", "5"}},
        {"Progress", progress(both, 57, false), bothOfProgress, {"0.570", "0.570", "NULL0"}},
        {"Progress", progress(both, 100, true), bothOfProgress, {"1.01", "1.01", "NULL0"}},
        {"Arrangement Status", status(both, ARRANGEMENT_STATUS, 3), "arrangement_status", {"3", "3", "0"}},
        {"Lyrics Status", status(both, LYRICS_STATUS, 1), "lyrics_status", {"1", "1", "0"}},
        {"Recording Status", status(both, RECORDING_STATUS, 5), "recording_status", {"5", "5", "0"}},
        {"Mix/Master Status", status(both, MIX_MASTER_STATUS, 4), "mix_master_status", {"4", "4", "0"}},
        {"Ignore", ignored(both, true), "ignored", {"1", "1", "0"}},
        {"Set Genre", association(both, GENRES, 2), genre, {"2", "2", "NULL"}},
        {"Remove from Genre", disassociation(both, GENRES, 1), genre, {"NULL", "NULL", "NULL"}},
        {"Add to Collection", association(both, COLLECTIONS, 1), collections, {"1,2", "1", ""}},
        {"Remove from Collection", disassociation(both, COLLECTIONS, 2), collections, {"1", "", ""}},
        {"Add Tag", association(both, TAGS, 1), tags, {"1,2", "1,2", ""}},
        {"Remove from Tag", disassociation(both, TAGS, 2), tags, {"", "", ""}},
        {"Delete record", deletion(both), "name", {"C"}},
    };

    const QStringList before = state();
    for (auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(perform(std::move(c.edit)));
        const QStringList after = state();
        EXPECT_EQ(value(c.expression), c.edited);
        EXPECT_EQ(history.undoText(), c.name);
        for (int round = 0; round < 2; ++round) {
            ASSERT_TRUE(undo());
            EXPECT_EQ(state(), before);
            EXPECT_EQ(history.redoText(), c.name);
            ASSERT_TRUE(redo());
            EXPECT_EQ(state(), after);
        }
        ASSERT_TRUE(undo());
        EXPECT_EQ(state(), before);
    }
}

TEST_F(EditHistoryTest, WhatChangesNothingIsNoStep) {
    ASSERT_TRUE(perform(starRating({1}, 4)));
    ASSERT_TRUE(perform(progress({1}, 25, false)));
    ASSERT_TRUE(perform(association({1}, COLLECTIONS, 1)));
    ASSERT_TRUE(perform(deletion({77})));
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(database.rows("SELECT * FROM collections_projects_map WHERE project_id=1").size(), 2);

    ASSERT_TRUE(perform(starRating({1}, 5)));
    ASSERT_TRUE(undo());
    ASSERT_TRUE(perform(starRating({1}, 4)));
    EXPECT_TRUE(history.canRedo());
}

TEST_F(EditHistoryTest, StepsQueuedInARowEndWhereTheyShouldAndAreWrittenAtTheLastMoment) {
    for (int stars = 0; stars < 5; ++stars)
        history.perform(starRating({1}, stars));
    history.undo();
    history.undo();
    history.redo();
    ASSERT_TRUE(undo());
    ASSERT_TRUE(waitUntil([this] { return value("star_rating").constFirst() == "2"; }));
    history.perform(starRating({1}, 1));
    EXPECT_FALSE(history.canRedo());

    history.perform(starRating({2}, 5));
    history.perform(association({3}, TAGS, 1));
    database.reopen();
    EXPECT_EQ(value("star_rating"), (QStringList{"1", "5", "5"}));
    EXPECT_EQ(database.rows("SELECT project_id FROM project_tag_map WHERE tag_id=1"), QStringList("3"));
}

TEST_F(EditHistoryTest, ARefusedStepLeavesTheRecordAndTheHistoryAsTheyWere) {
    ASSERT_TRUE(perform(starRating({1}, 1)));
    ASSERT_TRUE(perform(starRating({1, 3}, 2)));
    refuse("UPDATE ON projects WHEN OLD.project_id=3");
    const QStringList before = state();
    EXPECT_FALSE(perform(starRating({1, 3}, 5)));
    EXPECT_EQ(state(), before);

    // The second rests on the first, which fails.
    QSignalSpy refused(&history, &EditHistory::refused);
    history.undo();
    history.undo();
    ASSERT_TRUE(waitUntil([&] { return !refused.isEmpty(); }));
    EXPECT_EQ(state(), before);
    refuseNoMore();
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("star_rating"), (QStringList{"1", "0", "5"}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("star_rating"), (QStringList{"4", "0", "5"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditHistoryTest, StepsThatCannotBeWrittenAtAllKeepTheirOrder) {
    ASSERT_TRUE(perform(starRating({1}, 1)));
    ASSERT_TRUE(perform(progress({1}, 50, false)));
    ASSERT_TRUE(perform(ignored({1}, true)));
    database.rows("PRAGMA busy_timeout=0");
    const QString name = "writer elsewhere";
    {
        auto elsewhere = QSqlDatabase::addDatabase("QSQLITE", name);
        elsewhere.setDatabaseName(database.mainPath());
        ASSERT_TRUE(elsewhere.open());
        QSqlQuery lock(elsewhere);
        ASSERT_TRUE(lock.exec("BEGIN IMMEDIATE"));
        QSignalSpy refused(&history, &EditHistory::refused);
        for (int step = 0; step < 3; ++step)
            history.undo();
        ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
        // The user is told once.
        EXPECT_EQ(refused.count(), 1);
        lock.exec("ROLLBACK");
    }
    QSqlDatabase::removeDatabase(name);
    for (const char* next : {"Ignore", "Progress", "Rating"}) {
        EXPECT_EQ(history.undoText(), next);
        ASSERT_TRUE(undo());
    }
}

TEST_F(EditHistoryTest, NothingRefersToARemovedEntryAgain) {
    ASSERT_TRUE(perform(association({2}, TAGS, 1)));
    ASSERT_TRUE(perform(association({1}, GENRES, 2)));
    ASSERT_TRUE(perform(deletion({1})));
    // Genre 1, collection 2 and tag 1 go, and others get their ids.
    database.rows("DELETE FROM project_tag_map WHERE tag_id=1");
    database.rows("DELETE FROM collections_projects_map WHERE collection_id=2");
    history.forgetEntry(GENRES, 1);
    history.forgetEntry(COLLECTIONS, 2);
    history.forgetEntry(TAGS, 1);

    ASSERT_TRUE(undo());
    EXPECT_EQ(database.rows("SELECT * FROM collections_projects_map"), QStringList("1|1"));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"NULL", "NULL", "NULL"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditHistoryTest, StepsThatWaitBehindTheRemovalOfAnEntryDoNotReferToItEither) {
    ASSERT_TRUE(perform(association({2}, TAGS, 1)));
    ASSERT_TRUE(undo());
    ASSERT_TRUE(stopWorker());
    // It changes nothing, and what could be done again before it can be done again after it.
    history.perform(starRating({1}, 4));
    history.forgetEntry(TAGS, 1);
    tasks().restart();
    ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
    EXPECT_FALSE(history.canRedo());

    ASSERT_TRUE(perform(disassociation({1}, COLLECTIONS, 2)));
    ASSERT_TRUE(stopWorker());
    history.undo();
    history.perform(association({1}, GENRES, 2));
    history.forgetEntry(COLLECTIONS, 2);
    history.forgetEntry(GENRES, 2);
    tasks().restart();
    ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
    EXPECT_EQ(database.rows("SELECT * FROM collections_projects_map"), QStringList("1|1"));
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"1", "NULL", "NULL"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditHistoryTest, ADeletedRecordComesBackBesideThoseThatCameMeanwhile) {
    // The last record's id is given out again: once to another bundle, once to the same one.
    ASSERT_TRUE(perform(starRating({3}, 3)));
    ASSERT_TRUE(perform(deletion({3})));
    insert("D", "star_rating=1, SUFID='1-9'");
    database.rows("INSERT INTO project_tag_map VALUES(3, 2)");
    insert("C", "SUFID='1-8'");
    ASSERT_EQ(value("project_id, name"), (QStringList{"1|A", "2|B", "3|D", "4|C"}));

    ASSERT_TRUE(undo());
    EXPECT_EQ(value("project_id, name, star_rating"), (QStringList{"1|A|4", "2|B|0", "3|C|3", "5|D|1"}));
    EXPECT_EQ(
        database.rows("SELECT project_id FROM project_tag_map ORDER BY 1"), (QStringList{"1", "2", "5"}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("star_rating"), (QStringList{"4", "0", "5", "1"}));
}
