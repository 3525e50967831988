#include "ui/edits/EditHistory.h"

#include "ProjectsFixture.h"
#include "database/ReleaseStatements.h"
#include "ui/edits/EntryPresenceEdit.h"
#include "ui/edits/EntryRenaming.h"
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
            database.rows("SELECT 't', * FROM project_tag_map ORDER BY 2, 3") + entries(TAGS) +
            entries(COLLECTIONS) + entries(GENRES) + entries(LYRICS_STATUS) + entries(SAVED_SEARCH);
    }

    QStringList entries(FilterType type) {
        return database.rows(
            QString("SELECT * FROM %1 ORDER BY %2").arg(filterTypeTable(type), filterTypeIdColumn(type)));
    }

    static std::unique_ptr<Edit> addition(FilterType type, const QString& name) {
        return EntryPresenceEdit::addition({"Add", "", "", ""}, type, name);
    }

    static std::unique_ptr<Edit> removal(FilterType type, qint64 id) {
        return EntryPresenceEdit::removal({"Remove", "", "", ""}, type, id, "");
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

    bool perform(std::unique_ptr<Edit> edit) {
        return settle([&](auto& /*history*/) { history.perform(std::move(edit)); });
    }

    bool undo(int steps = 1) { return steps == 0 || (settle(&EditHistory::undo) && undo(steps - 1)); }

    bool redo(int steps = 1) { return steps == 0 || (settle(&EditHistory::redo) && redo(steps - 1)); }

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
    const Edit::Texts renaming{"Rename", "", "", ""};
    const auto fill = [](const char* text) {
        return QStringList(3, text);
    };
    database.rows("INSERT INTO saved_searches VALUES(4, 'term')");
    Stemhaven::ReleaseDetails details;
    details.artist = "It's";
    details.upc = "0";
    details.isPubliclyReleased = true;
    details.date = {2026, 3, 27};

    struct {
        const char* name;
        std::unique_ptr<Edit> edit;
        QString expression;
        QStringList edited;
    } cases[] = {
        {"Rating", starRating(both, 2), "star_rating", {"2", "2", "5"}},
        {"Progress", progress(both, 57, false), bothOfProgress, {"0.570", "0.570", "NULL0"}},
        {"Progress", progress(both, 100, true), bothOfProgress, {"1.01", "1.01", "NULL0"}},
        {"Lyrics Status", status(both, LYRICS_STATUS, 1), "lyrics_status", {"1", "1", "0"}},
        {"Mix/Master Status", status(both, MIX_MASTER_STATUS, 4), "mix_master_status", {"4", "4", "0"}},
        {"Release Details",
         release(1, details),
         "coalesce(artist, '-') || UPC || publicly_released || (release_date > 0)",
         {"It's011", "", ""}},
        {"Release Date", releaseDate(3, {1969, 3, 27}), "release_date < 0", {"", "", "1"}},
        {"Ignore", ignored(both, true), "ignored", {"1", "1", "0"}},
        {"Set Genre", association(both, GENRES, 2), genre, {"2", "2", "NULL"}},
        {"Remove from Genre", disassociation(both, GENRES, 1), genre, {"NULL", "NULL", "NULL"}},
        {"Add to Collection", association(both, COLLECTIONS, 1), collections, {"1,2", "1", ""}},
        {"Remove from Collection", disassociation(both, COLLECTIONS, 2), collections, {"1", "", ""}},
        {"Add Tag", association(both, TAGS, 1), tags, {"1,2", "1,2", ""}},
        {"Remove from Tag", disassociation(both, TAGS, 2), tags, {"", "", ""}},
        {"Delete record", deletion(both), "name", {"C"}},
        {"Add", addition(TAGS, "#it's %1"), "(SELECT max(tag_id || name) FROM tags)", fill("3#it's %1")},
        {"Add", addition(GENRES, "New"), "(SELECT max(genre_id || name) FROM genres)", fill("3New")},
        {"Rename", std::make_unique<EntryRenaming>(renaming, SAVED_SEARCH, 4, "it's"),
         "(SELECT search_term FROM saved_searches)", fill("it's")},
        {"Remove", removal(SAVED_SEARCH, 4), "(SELECT count(*) FROM saved_searches)", fill("0")},
        {"Remove", removal(COLLECTIONS, 1), collections, {"2", "", ""}},
        {"Remove", removal(GENRES, 1), genre, {"NULL", "NULL", "NULL"}},
        {"Remove", removal(TAGS, 2), tags, {"", "", ""}},
        {"Remove", removal(LYRICS_STATUS, 2), "lyrics_status", {"0", "0", "0"}},
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

TEST_F(EditHistoryTest, ARefusedEditKeepsWhatCouldBeDoneAgain) {
    ASSERT_TRUE(perform(starRating({1}, 1)));
    ASSERT_TRUE(perform(starRating({1}, 2)));
    ASSERT_TRUE(undo());
    ASSERT_TRUE(undo());
    refuse("UPDATE ON projects");
    EXPECT_FALSE(perform(starRating({1}, 5)));
    ASSERT_TRUE(stopWorker());
    // Both are refused, or change nothing, when there is another one behind the first.
    history.perform(starRating({1}, 5));
    history.perform(starRating({1}, 4));
    tasks().restart();
    ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
    refuseNoMore();
    for (const char* stars : {"1", "2"}) {
        ASSERT_TRUE(redo());
        EXPECT_EQ(value("star_rating").constFirst(), stars);
    }
    EXPECT_FALSE(history.canRedo());
}

TEST_F(EditHistoryTest, AnEntryWhoseNumberWasGivenOutAgainComesBackUnderTheNextAndEditsFollow) {
    // Genre, collection and tag; the record of the one has them all.
    for (const FilterType type : {GENRES, COLLECTIONS, TAGS})
        ASSERT_TRUE(perform(association({1, 3}, type, 1)));
    ASSERT_TRUE(perform(association({1}, GENRES, 2)));
    ASSERT_TRUE(perform(deletion({1})));
    for (const FilterType type : {GENRES, COLLECTIONS, TAGS})
        ASSERT_TRUE(perform(removal(type, 1)));
    ASSERT_TRUE(perform(removal(GENRES, 2)));
    database.rows("INSERT INTO genres VALUES(1, 'Of a folder', NULL), (2, 'Of another', NULL)");
    database.rows("INSERT INTO collections VALUES(1, 'Other')");
    database.rows("INSERT INTO tags VALUES(1, '#other')");
    database.rows("UPDATE projects SET genre_id=1 WHERE project_id=2");

    ASSERT_TRUE(undo(4));
    EXPECT_EQ(entries(GENRES), (QStringList{"1|Of a folder|", "2|Of another|", "3|Rock|", "4|Pop|"}));
    EXPECT_EQ(entries(TAGS), (QStringList{"1|#other", "2|#two", "3|#one"}));
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"1", "4"}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"3", "1", "4"}));
    const QString collections = "SELECT * FROM collections_projects_map ORDER BY 1, 2";
    const QString tags = "SELECT * FROM project_tag_map ORDER BY 1, 2";
    EXPECT_EQ(database.rows(collections), (QStringList{"2|1", "3|1", "3|3"}));
    EXPECT_EQ(database.rows(tags), (QStringList{"1|2", "1|3", "2|2", "3|3"}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"4", "1", "4"}));

    ASSERT_TRUE(undo(3));
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"4", "1", "NULL"}));
    EXPECT_EQ(database.rows(tags), (QStringList{"1|2", "2|2"}));
    EXPECT_FALSE(history.canUndo());
    ASSERT_TRUE(redo(9));
    EXPECT_EQ(entries(GENRES), (QStringList{"1|Of a folder|", "2|Of another|"}));
    EXPECT_EQ(value("name, genre_id"), (QStringList{"B|1", "C|"}));
}

TEST_F(EditHistoryTest, WhatWasDoneWithAnAddedEntryFollowsItWhenItIsAddedAgain) {
    ASSERT_TRUE(perform(addition(TAGS, "#new")));
    ASSERT_TRUE(perform(association({1}, TAGS, 3)));
    ASSERT_TRUE(
        perform(std::make_unique<EntryRenaming>(Edit::Texts{"Rename", "", "", ""}, TAGS, 3, "#newer")));
    ASSERT_TRUE(undo(3));
    EXPECT_EQ(entries(TAGS).size(), 2);
    database.rows("INSERT INTO tags VALUES(3, '#other')");
    database.rows("INSERT INTO project_tag_map VALUES(2, 3)");
    for (int step = 0; step < 3; ++step)
        history.redo();
    ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
    EXPECT_EQ(entries(TAGS), (QStringList{"1|#one", "2|#two", "3|#other", "4|#newer"}));
    EXPECT_EQ(
        database.rows("SELECT * FROM project_tag_map ORDER BY 1, 2"),
        (QStringList{"1|2", "1|4", "2|2", "2|3"}));
}

TEST_F(EditHistoryTest, NoProjectIsGivenAnEntryWhoseRemovalIsOnItsWay) {
    ASSERT_TRUE(stopWorker());
    history.perform(removal(TAGS, 1));
    history.perform(removal(GENRES, 2));
    history.perform(removal(LYRICS_STATUS, 3));
    history.perform(association({3}, TAGS, 1));
    history.perform(association({3}, GENRES, 2));
    history.perform(status({3}, LYRICS_STATUS, 3));
    tasks().restart();
    ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
    EXPECT_EQ(database.rows("SELECT * FROM project_tag_map WHERE project_id=3"), QStringList());
    EXPECT_EQ(value("quote(genre_id), lyrics_status").constLast(), "NULL|0");
    EXPECT_EQ(history.undoText(), "Remove");
}

TEST_F(EditHistoryTest, WhatIsDoneAgainFollowsARecordWhoseNumberChanged) {
    ASSERT_TRUE(perform(deletion({3})));
    insert("D", {});
    ASSERT_TRUE(perform(starRating({3}, 4)));
    ASSERT_TRUE(perform(association({3}, TAGS, 1)));
    for (int step = 0; step < 3; ++step)
        history.undo();
    for (int step = 0; step < 3; ++step)
        history.redo();
    ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
    EXPECT_EQ(value("project_id, name, star_rating"), (QStringList{"1|A|4", "2|B|0", "4|D|4"}));
    EXPECT_EQ(database.rows("SELECT project_id FROM project_tag_map WHERE tag_id=1"), QStringList("4"));
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
