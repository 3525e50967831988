#include "ui/edits/EditHistory.h"

#include "ProjectsFixture.h"
#include "ui/edits/ProjectEdit.h"
#include "ui/edits/ProjectEdits.h"

#include <QSignalSpy>
#include <QSqlDatabase>

#include <functional>

namespace {

using MakeEdit = std::function<std::unique_ptr<ProjectEdit>(const QList<qint64>&)>;

class EditHistoryTest : public ProjectsFixture {
protected:
    void SetUp() override {
        ProjectsFixture::SetUp();
        insert("A", "star_rating=4, progress=0.25, genre_id=1, notes=x'00ff', UPC='it''s', SUFID='1-7'");
        insert("B", "ignored=1, completed=1, lyrics_status=2");
        insert("C", "star_rating=5");
        for (const char* row :
             {"INSERT INTO collections VALUES(1, 'Album'), (2, 'Live')",
              "INSERT INTO genres VALUES(1, 'Pop', NULL)", "INSERT INTO genres VALUES(2, 'Rock', NULL)",
              "INSERT INTO tags VALUES(1, '#one'), (2, '#two')",
              "INSERT INTO collections_projects_map VALUES(1, 1), (2, 1)",
              "INSERT INTO project_tag_map VALUES(1, 2), (2, 2)"})
            database.rows(QLatin1String(row));
    }

    /// Everything that edits change.
    QStringList state() {
        return database.rows(QStringLiteral("SELECT * FROM projects ORDER BY project_id")) +
            database.rows(QStringLiteral("SELECT project_id, quote(notes), quote(progress), quote(genre_id), "
                                         "quote(SUFID) FROM projects ORDER BY project_id")) +
            database.rows(QStringLiteral("SELECT 'c', * FROM collections_projects_map ORDER BY 2, 3")) +
            database.rows(QStringLiteral("SELECT 't', * FROM project_tag_map ORDER BY 2, 3"));
    }

    QStringList value(const char* expression) {
        return database.rows(
            QStringLiteral("SELECT %1 FROM projects ORDER BY project_id").arg(QLatin1String(expression)));
    }

    /// Has the step done and waits for its end.
    bool settle(const std::function<void()>& step) {
        QSignalSpy written(&history, &EditHistory::written);
        QSignalSpy refused(&history, &EditHistory::refused);
        step();
        return waitUntil([&] { return written.count() + refused.count() > 0; }) && refused.isEmpty();
    }

    bool perform(std::unique_ptr<ProjectEdit> edit) {
        return settle([&] { history.perform(std::move(edit)); });
    }

    bool undo() {
        return settle([this] { history.undo(); });
    }

    bool redo() {
        return settle([this] { history.redo(); });
    }

    EditHistory history{tasks()};
};

} // namespace

TEST_F(EditHistoryTest, EveryKindOfEditGoesBackAndForth) {
    const struct {
        const char* name;
        MakeEdit make;
        const char* expression;
        QStringList edited;
    } cases[] = {
        {"Rating",
         [](const auto& ids) { return ProjectEdits::starRating(ids, 2); },
         "star_rating",
         {"2", "2", "5"}},
        {"Progress",
         [](const auto& ids) { return ProjectEdits::progress(ids, 57, false); },
         "quote(progress) || completed",
         {"0.570", "0.570", "NULL0"}},
        {"Progress",
         [](const auto& ids) { return ProjectEdits::progress(ids, 100, true); },
         "quote(progress) || completed",
         {"1.01", "1.01", "NULL0"}},
        {"Arrangement Status",
         [](const auto& ids) { return ProjectEdits::status(ids, FilterType::ARRANGEMENT_STATUS, 3); },
         "arrangement_status",
         {"3", "3", "0"}},
        {"Lyrics Status",
         [](const auto& ids) { return ProjectEdits::status(ids, FilterType::LYRICS_STATUS, 1); },
         "lyrics_status",
         {"1", "1", "0"}},
        {"Recording Status",
         [](const auto& ids) { return ProjectEdits::status(ids, FilterType::RECORDING_STATUS, 5); },
         "recording_status",
         {"5", "5", "0"}},
        {"Mix/Master Status",
         [](const auto& ids) { return ProjectEdits::status(ids, FilterType::MIX_MASTER_STATUS, 4); },
         "mix_master_status",
         {"4", "4", "0"}},
        {"Ignore",
         [](const auto& ids) { return ProjectEdits::ignored(ids, true); },
         "ignored",
         {"1", "1", "0"}},
        {"Set Genre",
         [](const auto& ids) { return ProjectEdits::association(ids, FilterType::GENRES, 2); },
         "quote(genre_id)",
         {"2", "2", "NULL"}},
        {"Remove from Genre",
         [](const auto& ids) { return ProjectEdits::disassociation(ids, FilterType::GENRES, 1); },
         "quote(genre_id)",
         {"NULL", "NULL", "NULL"}},
        {"Add to Collection",
         [](const auto& ids) { return ProjectEdits::association(ids, FilterType::COLLECTIONS, 1); },
         "(SELECT group_concat(collection_id) FROM collections_projects_map m WHERE "
         "m.project_id=projects.project_id)",
         {"1,2", "1", ""}},
        {"Remove from Collection",
         [](const auto& ids) { return ProjectEdits::disassociation(ids, FilterType::COLLECTIONS, 2); },
         "(SELECT group_concat(collection_id) FROM collections_projects_map m WHERE "
         "m.project_id=projects.project_id)",
         {"1", "", ""}},
        {"Add Tag",
         [](const auto& ids) { return ProjectEdits::association(ids, FilterType::TAGS, 1); },
         "(SELECT group_concat(tag_id) FROM project_tag_map m WHERE m.project_id=projects.project_id)",
         {"1,2", "1,2", ""}},
        {"Remove from Tag",
         [](const auto& ids) { return ProjectEdits::disassociation(ids, FilterType::TAGS, 2); },
         "(SELECT group_concat(tag_id) FROM project_tag_map m WHERE m.project_id=projects.project_id)",
         {"", "", ""}},
        {"Delete record", [](const auto& ids) { return ProjectEdits::deletion(ids); }, "name", {"C"}},
    };

    const QStringList before = state();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(perform(c.make({1, 2})));
        const QStringList after = state();
        EXPECT_EQ(value(c.expression), c.edited);
        EXPECT_EQ(history.undoText(), QLatin1String(c.name));
        for (int round = 0; round < 2; ++round) {
            ASSERT_TRUE(undo());
            EXPECT_EQ(state(), before);
            EXPECT_EQ(history.redoText(), QLatin1String(c.name));
            ASSERT_TRUE(redo());
            EXPECT_EQ(state(), after);
        }
        ASSERT_TRUE(undo());
        EXPECT_EQ(state(), before);
    }
}

TEST_F(EditHistoryTest, WhatChangesNothingIsNoStep) {
    ASSERT_TRUE(perform(ProjectEdits::starRating({1}, 4)));
    ASSERT_TRUE(perform(ProjectEdits::progress({1}, 25, false)));
    ASSERT_TRUE(perform(ProjectEdits::association({1}, FilterType::COLLECTIONS, 1)));
    ASSERT_TRUE(perform(ProjectEdits::deletion({77})));
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(
        database.rows(QStringLiteral("SELECT * FROM collections_projects_map WHERE project_id=1")).size(), 2);

    ASSERT_TRUE(perform(ProjectEdits::starRating({1}, 5)));
    ASSERT_TRUE(undo());
    ASSERT_TRUE(perform(ProjectEdits::starRating({1}, 4)));
    EXPECT_TRUE(history.canRedo());
}

TEST_F(EditHistoryTest, StepsQueuedInARowEndWhereTheyShould) {
    for (int stars = 0; stars < 5; ++stars)
        history.perform(ProjectEdits::starRating({1}, stars));
    history.undo();
    history.undo();
    history.redo();
    ASSERT_TRUE(settle([this] { history.undo(); }));
    ASSERT_TRUE(waitUntil([this] { return value("star_rating").constFirst() == QLatin1String("2"); }));
    history.perform(ProjectEdits::starRating({1}, 1));
    EXPECT_FALSE(history.canRedo());
}

TEST_F(EditHistoryTest, ARefusedStepLeavesTheRecordAndTheHistoryAsTheyWere) {
    ASSERT_TRUE(perform(ProjectEdits::starRating({1}, 1)));
    ASSERT_TRUE(perform(ProjectEdits::starRating({1, 3}, 2)));
    database.rows(
        QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON projects WHEN OLD.project_id=3 BEGIN "
                       "SELECT RAISE(FAIL, 'refused'); END"));
    const QStringList before = state();
    EXPECT_FALSE(perform(ProjectEdits::starRating({1, 3}, 5)));
    EXPECT_EQ(state(), before);

    // The second rests on the first, which fails.
    QSignalSpy refused(&history, &EditHistory::refused);
    history.undo();
    history.undo();
    ASSERT_TRUE(waitUntil([&] { return !refused.isEmpty(); }));
    EXPECT_EQ(state(), before);
    database.rows(QStringLiteral("DROP TRIGGER refuse"));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("star_rating"), (QStringList{"1", "0", "5"}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("star_rating"), (QStringList{"4", "0", "5"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditHistoryTest, StepsThatCannotBeWrittenAtAllKeepTheirOrder) {
    ASSERT_TRUE(perform(ProjectEdits::starRating({1}, 1)));
    ASSERT_TRUE(perform(ProjectEdits::progress({1}, 50, false)));
    ASSERT_TRUE(perform(ProjectEdits::ignored({1}, true)));
    database.rows(QStringLiteral("PRAGMA busy_timeout=0"));
    const QString name = QStringLiteral("writer elsewhere");
    {
        auto elsewhere = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        elsewhere.setDatabaseName(database.mainPath());
        ASSERT_TRUE(elsewhere.open());
        QSqlQuery lock(elsewhere);
        ASSERT_TRUE(lock.exec(QStringLiteral("BEGIN IMMEDIATE")));
        QSignalSpy refused(&history, &EditHistory::refused);
        for (int step = 0; step < 3; ++step)
            history.undo();
        ASSERT_TRUE(waitUntil([this] { return !history.isWriting(); }));
        // The user is told once.
        EXPECT_EQ(refused.count(), 1);
        lock.exec(QStringLiteral("ROLLBACK"));
    }
    QSqlDatabase::removeDatabase(name);
    for (const char* next : {"Ignore", "Progress", "Rating"}) {
        EXPECT_EQ(history.undoText(), QLatin1String(next));
        ASSERT_TRUE(undo());
    }
}

TEST_F(EditHistoryTest, NothingRefersToARemovedEntryAgain) {
    ASSERT_TRUE(perform(ProjectEdits::association({2}, FilterType::TAGS, 1)));
    ASSERT_TRUE(perform(ProjectEdits::association({1}, FilterType::GENRES, 2)));
    ASSERT_TRUE(perform(ProjectEdits::deletion({1})));
    // Genre 1, collection 2 and tag 1 go, and others get their ids.
    for (const char* statement :
         {"DELETE FROM project_tag_map WHERE tag_id=1",
          "DELETE FROM collections_projects_map WHERE collection_id=2"})
        database.rows(QLatin1String(statement));
    history.forgetEntry(FilterType::GENRES, 1);
    history.forgetEntry(FilterType::COLLECTIONS, 2);
    history.forgetEntry(FilterType::TAGS, 1);

    ASSERT_TRUE(undo());
    EXPECT_EQ(database.rows(QStringLiteral("SELECT * FROM collections_projects_map")), QStringList("1|1"));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("quote(genre_id)"), (QStringList{"NULL", "NULL", "NULL"}));
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditHistoryTest, ADeletedRecordComesBackBesideThoseThatCameMeanwhile) {
    // The last record's id is given out again: once to another bundle, once to the same one.
    ASSERT_TRUE(perform(ProjectEdits::starRating({3}, 3)));
    ASSERT_TRUE(perform(ProjectEdits::deletion({3})));
    insert("D", "star_rating=1, SUFID='1-9'");
    database.rows(QStringLiteral("INSERT INTO project_tag_map VALUES(3, 2)"));
    insert("C", "SUFID='1-8'");
    ASSERT_EQ(
        database.rows(QStringLiteral("SELECT name, project_id FROM projects ORDER BY 1")),
        (QStringList{"A|1", "B|2", "C|4", "D|3"}));

    ASSERT_TRUE(undo());
    EXPECT_EQ(
        database.rows(QStringLiteral("SELECT name, project_id, star_rating FROM projects ORDER BY 1")),
        (QStringList{"A|1|4", "B|2|0", "C|3|3", "D|5|1"}));
    EXPECT_EQ(
        database.rows(QStringLiteral("SELECT project_id FROM project_tag_map ORDER BY 1")),
        (QStringList{"1", "2", "5"}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(value("star_rating"), (QStringList{"4", "0", "5", "1"}));
}

TEST_F(EditHistoryTest, AnEditOfTheLastMomentIsWritten) {
    history.perform(ProjectEdits::starRating({2}, 5));
    history.perform(ProjectEdits::association({3}, FilterType::TAGS, 1));
    database.reopen();
    EXPECT_EQ(value("star_rating"), (QStringList{"4", "5", "5"}));
    EXPECT_EQ(
        database.rows(QStringLiteral("SELECT project_id FROM project_tag_map WHERE tag_id=1")),
        QStringList("3"));
}
