#include "database/QueryBuilder.h"

#include "app/SettingsKeys.h"
#include "database/DerivedFields.h"
#include "support/LogCapture.h"
#include "support/TestDatabase.h"

#include <QSettings>

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

Field field(const QString& name, bool visible, bool searchable, unsigned order) {
    return {name, name.toUpper(), Format::Text, visible ? 1 : 0, searchable ? 1 : 0, order};
}

/// Over the visible and searchable columns name and artist, with nothing hidden.
std::unique_ptr<QueryBuilder> plainBuilder() {
    auto builder = std::make_unique<QueryBuilder>();
    builder->setFields(
        {field("artist", true, true, 1), field("name", true, true, 0), field("album", false, true, 2)});
    builder->hideCompletedTracks(false);
    builder->hideIgnoredTracks(false);
    return builder;
}

const QString head = "SELECT  name as 'NAME ', artist as 'ARTIST ', project_id FROM projects";

} // namespace

TEST(QueryBuilder, PutsTheClausesTogether) {
    using Setup = std::function<void(QueryBuilder&)>;
    const QList<std::pair<Setup, QString>> cases = {
        {[](QueryBuilder&) {}, ""},
        {[](QueryBuilder& b) { b.setGenreID(5); }, " WHERE genre_id='5'"},
        {[](QueryBuilder& b) { b.setTagID(4); },
         " WHERE project_id IN (SELECT project_id FROM project_tag_map WHERE tag_id=4) "},
        {[](QueryBuilder& b) {
             b.setCollectionID(1);
             b.setLyricsStatusID(3);
             b.search("x");
             b.hideCompletedTracks(true);
             b.hideIgnoredTracks(true);
         },
         " WHERE lyrics_status=3 AND (name LIKE '%x%' OR artist LIKE '%x%') AND completed=0 AND ignored=0"},
        {[](QueryBuilder& b) {
             b.setCollectionID(9);
             b.search("%1");
             b.sortBy("bpm", Qt::DescendingOrder);
         },
         " WHERE project_id IN (SELECT project_id FROM collections_projects_map WHERE collection_id=9)  AND "
         "(name LIKE '%%1%' OR artist LIKE '%%1%') ORDER BY bpm COLLATE NOCASE DESC"},
        {[](QueryBuilder& b) {
             b.setArrangementStatusID(2);
             b.clearFilter();
             b.search("x");
             b.clearSearch();
             b.sortBy("bpm", Qt::AscendingOrder);
             b.clearSorting();
         },
         ""},
        {[](QueryBuilder& b) { b.setRecordingStatusID(0); }, " WHERE recording_status=0"},
    };
    for (const auto& [setup, expected] : cases) {
        const auto builder = plainBuilder();
        builder->select();
        setup(*builder);
        EXPECT_EQ(builder->select(), head + expected);
    }
}

TEST(QueryBuilder, ListsADefaultCatalogueWithItsDefaults) {
    QSettings().clear();
    const std::unique_ptr<QueryBuilder> builder(QueryBuilder::defaultProjectsTableBuilder());
    builder->sortBy("name", Qt::AscendingOrder);
    const auto sql = builder->select();
    EXPECT_TRUE(sql.endsWith(
        " project_id FROM projects WHERE completed=0 AND ignored=0 ORDER BY name COLLATE NOCASE ASC"));
    EXPECT_EQ(builder->getFields().size(), 22);

    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    EXPECT_TRUE(database.rows(sql).isEmpty());
}

TEST(QueryBuilder, TakesAStoredListOfTwentySixColumnsAndNoOther) {
    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    const auto names = database.rows("SELECT name FROM pragma_table_info('projects')");
    for (const int count : {25, 26, 27}) {
        QSettings().clear();
        QueryBuilder stored;
        QList<Field> fields;
        for (int i = 0; i < count; ++i)
            fields.append(field(names[i], i % 2 == 0, true, static_cast<unsigned>(count - i)));
        stored.setFields(fields);
        stored.saveSettings();
        QSettings().setValue("fields/no_such_column/order", 3);

        LogCapture messages;
        QueryBuilder loaded;
        loaded.loadSettings();
        EXPECT_EQ(messages.count("C: Invalid field name read from settings!"), 1);
        if (count != 26) {
            EXPECT_EQ(loaded.getFields().size(), 22);
            continue;
        }
        ASSERT_EQ(loaded.getFields().size(), 26);
        EXPECT_EQ(loaded.fieldAt(0).name, names[25]);
        EXPECT_EQ(loaded.visibleFieldAt(1).name, names[22]);
        EXPECT_EQ(loaded.fieldIndexByName(names[22]), 1);
        EXPECT_EQ(loaded.fieldIndexByName(names[25]), 0xFFFF);
    }
}

TEST(QueryBuilder, DerivedFieldsAreNotAmongThoseThatAreStored) {
    QSettings().clear();
    QueryBuilder builder;
    builder.setFields(derivedFields() << field("name", true, true, 9));
    builder.saveSettings();
    QSettings settings;
    settings.beginGroup(SettingsKeys::fields);
    EXPECT_EQ(settings.childGroups(), QStringList("name"));
}

TEST(QueryBuilder, TheFolderIsTheLastPartOfThePath) {
    TestDatabase database;
    ASSERT_TRUE(database.initialise());
    QueryBuilder builder;
    auto fields = derivedFields();
    fields.removeIf([](const Field& field) { return field.name != "folder"; });
    fields.front().visible = 1;
    builder.setFields(fields);
    const std::pair<QString, QString> cases[] = {
        {"/music/", "music"},
        {"/music/no slash", "no slash"},
        {"/a/aaa/a/", "a"},
        {"/", ""},
        {"", ""},
        {"/x/100% ''it'' [1]/", "100% 'it' [1]"},
        {"/music/Ünï/日本/", "日本"},
        {"/music/two  blanks /", "two  blanks "}};
    for (const auto& [path, folder] : cases) {
        database.rows("DELETE FROM projects");
        database.rows(
            "INSERT INTO projects(filepath, filename, bpm, number_of_tracks, sample_rate) "
            "VALUES('" +
            path + "', 'x.logicx', 120, 8, 44100)");
        EXPECT_EQ(database.rows(builder.select()).value(0).section('|', 0, 0), folder) << qPrintable(path);
    }
}
