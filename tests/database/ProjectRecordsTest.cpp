#include "app/SettingsKeys.h"
#include "database/SqlText.h"
#include "project/NoteFile.h"
#include "project/ProjectDetails.h"
#include "support/LogCapture.h"
#include "support/TestBundle.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QSettings>

#include <gtest/gtest.h>

#include <limits>

using namespace Stemhaven;

namespace {

class ProjectRecords : public testing::Test {
protected:
    void SetUp() override {
        QSettings().setValue(SettingsKeys::genreFromDir, false);
        ASSERT_TRUE(m_database.initialise());
    }

    ProjectDetails makeBundle(const QString& relativePath, const TestBundle& bundle = {}) {
        const auto path = m_library.path() + '/' + relativePath;
        bundle.write(path.toStdString());
        return ProjectDetails(path);
    }

    /// Adds records for all, as one burst, and returns the last one's id.
    long long add(const QList<ProjectDetails>& projects) {
        long long id = 0;
        qsizetype answers = 0;
        for (const auto& details : projects) {
            m_database.tasks->addProject(
                details, {},
                [&](const std::shared_ptr<Task>&, long long newId) {
                    id = newId;
                    ++answers;
                },
                [&](const DbException&) { ++answers; });
        }
        EXPECT_TRUE(waitUntil([&] { return answers == projects.size(); }));
        return id;
    }

    /// One record in a folder, whose bundle nobody looks at.
    void insertRecord(const QString& folder, const QString& genreId) {
        const auto path = escape("/music/" + folder + '/');
        m_database.rows(
            "INSERT INTO projects(filepath, filename, bpm, number_of_tracks, sample_rate, genre_id) "
            "VALUES('" +
            path + "', 'Song.logicx', 120, 1, 44100, " + genreId + ')');
    }

    QTemporaryDir m_library;
    TestDatabase m_database;
};

} // namespace

TEST_F(ProjectRecords, HoldWhatTheBundleSaysWhateverItsTextsAre) {
    for (const QString name :
         {"It's %1 [Mix %2]", "Ω ʻokina e\u0301 é", "a';DROP TABLE projects;--", "percent %%L1"}) {
        TestBundle bundle;
        bundle.metaData["BeatsPerMinute"] = 92.5;
        bundle.metaData["SongKey"] = std::string("C'%9");
        bundle.metaData["SongSignatureNumerator"] = std::int64_t{7};
        bundle.metaData["SongSignatureDenominator"] = std::int64_t{8};
        const auto details = makeBundle(name + ".logicx", bundle);
        const auto id = add({details});
        EXPECT_EQ(
            m_database.rows(
                "SELECT filepath, filename, name, project_type, bpm, song_key, song_signature, SUFID, "
                "abs(last_updated-strftime('%s','now'))<100, last_modified>1000000000 FROM projects "
                "WHERE project_id=" +
                QString::number(id)),
            QStringList(
                details.filepath + '|' + name + ".logicx|" + name + "|logicx|92.5|C'%9|7/8|" +
                details.sufid.toString() + "|1|1"));
        const auto note = loadStemhavenPlistDetails(details);
        ASSERT_TRUE(note.has_value());
        EXPECT_EQ(note->first, id);
    }
}

TEST_F(ProjectRecords, AreRewrittenWithoutTouchingWhatIsTheUsers) {
    const auto details = makeBundle("Song.logicx");
    const auto id = add({details});
    const QString users =
        "star_rating=4, progress=0.57, completed=1, arrangement_status=3, lyrics_status=2, "
        "recording_status=1, mix_master_status=5, genre_id=9, notes='n', release_name='r', ISRC='i'";
    m_database.rows("UPDATE projects SET " + users);
    const QString usersSql =
        "SELECT star_rating, progress, completed, arrangement_status, lyrics_status, "
        "recording_status, mix_master_status, genre_id, notes, release_name, ISRC, created FROM projects";
    const auto before = m_database.rows(usersSql);

    TestBundle changed(140);
    changed.metaData["NumberOfTracks"] = std::int64_t{77};
    const auto moved = makeBundle("Elsewhere/New 'Name'.logicx", changed);
    bool updated = false;
    m_database.tasks->updateProject(
        moved, id, {}, [&](const std::shared_ptr<Task>&, long long) { updated = true; });
    ASSERT_TRUE(waitUntil([&] { return updated; }));
    EXPECT_EQ(m_database.rows(usersSql), before);
    EXPECT_EQ(
        m_database.rows("SELECT bpm, number_of_tracks, name, filepath, SUFID FROM projects"),
        QStringList("140|77|New 'Name'|" + moved.filepath + '|' + moved.sufid.toString()));
    EXPECT_EQ(loadStemhavenPlistDetails(moved)->first, id);
}

TEST_F(ProjectRecords, AreNotMadeFromWhatCannotBeRead) {
    auto gone = makeBundle("Gone.logicx");
    QDir(gone.bundlePath()).removeRecursively();
    EXPECT_THROW(m_database.tasks->addProject(gone), Exception);
    EXPECT_THROW(m_database.tasks->updateProject(gone, 1), Exception);
    EXPECT_THROW(m_database.tasks->addProject(ProjectDetails(m_library.path())), Exception);
    TestBundle incomplete;
    incomplete.metaData.erase("NumberOfTracks");
    EXPECT_THROW(m_database.tasks->addProject(makeBundle("Incomplete.logicx", incomplete)), Exception);
    EXPECT_EQ(m_database.rows("SELECT count(*) FROM projects"), QStringList("0"));

    TestBundle strange;
    strange.metaData["BeatsPerMinute"] = std::numeric_limits<double>::infinity();
    add({makeBundle("Strange.logicx", strange)});
    EXPECT_EQ(m_database.rows("SELECT name FROM projects"), QStringList("Strange"));
}

TEST_F(ProjectRecords, GetOneGenreAFolderNameWhenTheUserWishesIt) {
    LogCapture messages;
    add({makeBundle("Jazz/Before.logicx")});
    EXPECT_EQ(m_database.rows("SELECT count(*) FROM genres"), QStringList("0"));

    QSettings().setValue(SettingsKeys::genreFromDir, true);
    add(
        {makeBundle("Pop/A.logicx"), makeBundle("x/Pop/B.logicx"), makeBundle("Rock 'n' %1/C.logicx"),
         makeBundle("Logic/D.logicx"), makeBundle("GarageBand/E.logicx")});
    m_database.rows("SELECT 1");
    EXPECT_EQ(m_database.rows("SELECT name FROM genres ORDER BY name"), QStringList({"Pop", "Rock 'n' %1"}));
    EXPECT_EQ(
        m_database.rows("SELECT projects.name FROM projects JOIN genres USING(genre_id) ORDER BY 1"),
        QStringList({"A", "B", "C"}));
}

TEST_F(ProjectRecords, GetTheGenreOfExactlyTheirFolderRetroactivelyWhereTheyHaveNone) {
    LogCapture messages;
    const QStringList folders{"a_b",       "axb",     "50%",     "50 and more", "Pop",   "pop", "deep/Pop",
                              "deep/nPop", "Größe 🎹", "it's %1", "Logic",       "Taken", "zz"};
    for (const auto& folder : folders)
        insertRecord(folder, folder == "Taken" ? "99" : "NULL");
    m_database.rows("INSERT INTO genres VALUES(7, 'Pop', NULL)");
    m_database.tasks->retroactivelyAssignGenreByDir();

    // Names come in their order, so the last one's assignment is the end of all.
    EXPECT_TRUE(waitUntil([&] { return messages.count("I: Genre 'zz' with genre_id:") > 0; }));
    const auto genres = m_database.rows(
        "SELECT filepath, (SELECT name FROM genres WHERE genres.genre_id=projects.genre_id) FROM projects");
    for (qsizetype i = 0; i < folders.size(); ++i) {
        const auto name = folders[i].section('/', -1);
        const QString expected = name == "Logic" || name == "Taken" ? QString() : name;
        EXPECT_EQ(genres[i].section('|', 1), expected) << folders[i].toStdString();
    }
    EXPECT_EQ(
        m_database.rows("SELECT genre_id FROM projects WHERE genre_id IN (7, 99)"),
        QStringList({"7", "7", "99"}));
    EXPECT_EQ(m_database.rows("SELECT count(*) FROM genres"), QStringList("10"));
}
