// Which record a bundle has after it was moved, exchanged, copied, deleted and put back.

#include "monitor/BundleMatching.h"
#include "monitor/MonitorFixture.h"
#include "plist/PropertyList.h"
#include "project/NoteFile.h"

#include <filesystem>
#include <fstream>
#include <functional>

using namespace Stemhaven;

namespace {

namespace fs = std::filesystem;

class Identity : public MonitorFixture {
protected:
    void SetUp() override {
        MonitorFixture::SetUp();
        m_database.rootRows(RootPathStatements::insert(m_disk.path() + "/drive"));
        fs::create_directories(path("../drive"));
    }

    fs::path path(const QString& relativePath) const {
        return fs::path(at(relativePath).toStdString()).lexically_normal();
    }

    /// Makes a bundle with the stars that belong to it, and waits for its record.
    void make(const QString& relativePath, int stars) {
        makeBundle(relativePath);
        if (!m_monitor)
            return;
        ASSERT_TRUE(waitUntil([&] { return state().contains(relativePath + "|0"); })) << shown();
        rate(relativePath, stars);
    }

    void rate(const QString& relativePath, int stars) {
        m_database.rows(QString("UPDATE projects SET star_rating=%1 WHERE filepath || filename='%2'")
                            .arg(stars)
                            .arg(QString::fromStdString(path(relativePath).string()).replace("'", "''")));
    }

    void start() {
        QSettings().setValue(SettingsKeys::searchWasInProgress, true);
        m_monitor = std::make_unique<ProjectMonitor>(*m_database.tasks, std::chrono::milliseconds(100));
        settle();
    }

    void settle() {
        ASSERT_TRUE(waitUntil([&] {
            return m_monitor->isWatching() && !m_monitor->isSearching() && !m_monitor->isChecking();
        }));
    }

    void restart(const std::function<void()>& whileStopped) {
        stop();
        whileStopped();
        ASSERT_TRUE(m_database.initialise());
        start();
    }

    static void rename(const fs::path& from, const fs::path& to) {
        fs::create_directories(to.parent_path());
        fs::rename(from, to);
    }

    /// Though a note may be written into it meanwhile.
    static void removeAll(const fs::path& folder) {
        EXPECT_TRUE(waitUntil([&] {
            std::error_code failure;
            fs::remove_all(folder, failure);
            return !fs::exists(folder);
        }));
    }

    static void copy(const fs::path& from, const fs::path& to) {
        fs::create_directories(to.parent_path());
        fs::copy(from, to, fs::copy_options::recursive);
    }

    long long idOf(const QString& name) {
        return m_database.rows("SELECT project_id FROM projects WHERE name='" + name + "'")
            .value(0)
            .toLongLong();
    }

    void writeNote(const fs::path& bundle, long long id, const std::string& sufid) {
        TestBundle::writeList(
            bundle / "Resources/Stemhaven.plist",
            Plist::Dictionary{{"project_id", std::int64_t{id}}, {"SUFID", sufid}});
    }

    void setSaved(const QString& relativePath, std::chrono::hours ago) const {
        fs::last_write_time(
            path(relativePath) / "Resources/ProjectInformation.plist",
            fs::file_time_type::clock::now() - ago);
    }

    /// The path of a bundle outside the roots that is on record and has these stars.
    fs::path startWithStray(const QString& relativePath, int stars) {
        make("In.logicx", 1);
        start();
        const auto stray = path(relativePath);
        TestBundle().write(stray.string());
        m_monitor->directoryChanged(QString::fromStdString(stray.string()), true);
        EXPECT_TRUE(becomes({relativePath + "|0", "In.logicx|0"}));
        rate(relativePath, stars);
        return stray;
    }

    /// Each record as its path, seen from the root, and its stars.
    QStringList state() {
        auto rows = m_database.rows("SELECT filepath || filename, star_rating FROM projects");
        for (auto& row : rows) {
            if (row.startsWith(at("")))
                row = row.mid(at("").size());
            else if (row.startsWith(m_disk.path()))
                row = ".." + row.mid(m_disk.path().size());
        }
        rows.sort();
        return rows;
    }

    std::string shown() { return state().join(", ").toStdString(); }

    /// Whether the catalogue comes to hold exactly these, one record a path, each with its bundle's identity.
    testing::AssertionResult becomes(const QStringList& expected) {
        if (!waitUntil([&] { return state() == expected; }, 15))
            return testing::AssertionFailure() << shown();
        const auto wrong = [&] {
            QStringList paths;
            const auto rows = m_database.rows("SELECT filepath || filename, SUFID FROM projects");
            for (const auto& row : rows) {
                const ProjectDetails details(row.section('|', 0, 0));
                if (details.sufid.valid && details.sufid.toString() != row.section('|', 1))
                    paths.append(row);
            }
            return paths;
        };
        if (!waitUntil([&] { return wrong().isEmpty(); }, 5))
            return testing::AssertionFailure()
                << "Another bundle's identity: " << wrong().join(", ").toStdString();
        return testing::AssertionSuccess();
    }
};

struct Case {
    const char* name;
    /// Made before, with 1, 2, 3... stars.
    QStringList bundles;
    std::function<void()> change;
    QStringList expected;
};

} // namespace

TEST_F(Identity, FollowsEachBundleWhetherItIsWatchedOrNot) {
    const auto swapFolders = [&](const QString& a, const QString& b) {
        rename(path(a), path("t"));
        rename(path(b), path(a));
        rename(path("t"), path(b));
    };
    const Case cases[] = {
        {"folders exchanged",
         {"F/Song.logicx", "G/Song.logicx"},
         [&] { swapFolders("F", "G"); },
         {"F/Song.logicx|2", "G/Song.logicx|1"}},
        {"bundles exchanged",
         {"A.logicx", "B.logicx"},
         [&] { swapFolders("A.logicx", "B.logicx"); },
         {"A.logicx|2", "B.logicx|1"}},
        {"up a chain",
         {"v0/Song.logicx", "v1/Song.logicx", "v2/Song.logicx"},
         [&] {
             rename(path("v0"), path("old"));
             rename(path("v1"), path("v0"));
             rename(path("v2"), path("v1"));
         },
         {"old/Song.logicx|1", "v0/Song.logicx|2", "v1/Song.logicx|3"}},
        {"copied with its note, then moved",
         {"Song.logicx"},
         [&] {
             copy(path("Song.logicx"), path("a/Copy.logicx"));
             rename(path("Song.logicx"), path("z/Song.logicx"));
         },
         {"a/Copy.logicx|0", "z/Song.logicx|1"}},
        {"put back without its note",
         {"Song.logicx"},
         [&] {
             copy(path("Song.logicx"), path("../new"));
             fs::remove(path("../new/Resources/Stemhaven.plist"));
             removeAll(path("Song.logicx"));
             rename(path("../new"), path("Song.logicx"));
         },
         {"Song.logicx|1"}},
        {"exchanged by copying, as between two volumes",
         {"F/Song.logicx", "G/Song.logicx"},
         [&] {
             copy(path("F"), path("../F"));
             copy(path("G"), path("../G"));
             removeAll(path("F"));
             removeAll(path("G"));
             rename(path("../G"), path("F"));
             rename(path("../F"), path("G"));
         },
         {"F/Song.logicx|2", "G/Song.logicx|1"}},
        {"moved by copying, as to another volume, and a new song at its path",
         {"Song.logicx"},
         [&] {
             copy(path("Song.logicx"), path("../new/Song.logicx"));
             TestBundle().write(path("../new/Other.logicx").string());
             setSaved("../new/Other.logicx", std::chrono::hours(2));
             removeAll(path("Song.logicx"));
             rename(path("../new/Other.logicx"), path("Song.logicx"));
             rename(path("../new"), path("x"));
         },
         {"Song.logicx|1", "x/Song.logicx|1"}},
        {"two apostrophes, renamed above",
         {"It''s/Song (12'' Mix).logicx"},
         [&] { rename(path("It''s"), path("It''s'''new")); },
         {"It''s'''new/Song (12'' Mix).logicx|1"}},
        {"beside and below a folder that holds the suffix",
         {"A.logicx", "A.logicx backups/A.logicx", "A.logicx backups/B.logicx"},
         [&] { rename(path("A.logicx backups"), path("A.logicx backups 2")); },
         {"A.logicx backups 2/A.logicx|2", "A.logicx backups 2/B.logicx|3", "A.logicx|1"}},
        {"the path occurs again in itself",
         {"m/x/Song.logicx"},
         [&] {
             const auto mirror = path("mirror" + at("m"));
             copy(path("m/x/Song.logicx"), mirror / "Song.logicx");
             fs::remove(mirror / "Song.logicx/Resources/Stemhaven.plist");
             rename(path("m"), path("n"));
             rename(path("mirror"), path("n/mirror"));
         },
         {"n/mirror" + at("m/Song.logicx") + "|0", "n/x/Song.logicx|1"}},
        {"an empty note",
         {"Song.logicx"},
         [&] {
             std::ofstream(path("Song.logicx/Resources/Stemhaven.plist")).close();
             rename(path("Song.logicx"), path("x/Song.logicx"));
         },
         {"x/Song.logicx|1"}},
    };
    for (const auto& [name, bundles, change, expected] : cases) {
        for (const bool isWatched : {true, false}) {
            SCOPED_TRACE(std::string(name) + (isWatched ? ", watched" : ", not watched"));
            TearDown();
            m_monitor.reset();
            removeAll(path(""));
            fs::create_directories(path(""));
            m_database.reopen();
            ASSERT_TRUE(m_database.initialise());
            m_database.rows("DELETE FROM projects");
            start();
            for (qsizetype i = 0; i < bundles.size(); ++i)
                make(bundles[i], static_cast<int>(i) + 1);
            settle();
            if (isWatched)
                change();
            else
                restart(change);
            auto sorted = expected;
            sorted.sort();
            EXPECT_TRUE(becomes(sorted));
        }
    }
}

TEST_F(Identity, ARestoredOriginalHasItsRecordAgainThoughItsNumberWentToAnotherSong) {
    make("A.logicx", 1);
    start();
    rate("A.logicx", 5);
    const fs::path backup = m_disk.path().toStdString() + "/backup";
    copy(path("A.logicx"), backup);
    const auto id = idOf("A");
    removeAll(path("A.logicx"));
    make("B.logicx", 4);
    const auto number = ProjectDetails(at("B.logicx")).sufid.toString();
    // File systems give the freed number to one of the next new folders; where this one did not, the
    // catalogue and the note are made to say so.
    const auto loseNumber = [&] {
        m_database.rows("UPDATE projects SET SUFID='' WHERE name='A'");
        m_database.rows(
            "INSERT OR IGNORE INTO former_identities SELECT project_id, '" + number +
            "' FROM projects WHERE name='A'");
        writeNote(backup, id, number.toStdString());
    };
    loseNumber();
    copy(backup, path("A.logicx"));
    EXPECT_TRUE(becomes({"A.logicx|5", "B.logicx|4"}));

    // Elsewhere than at its old path, the id in the note tells.
    removeAll(path("A.logicx"));
    loseNumber();
    copy(backup, path("else/A.logicx"));
    EXPECT_TRUE(becomes({"B.logicx|4", "else/A.logicx|5"}));
}

TEST_F(Identity, AnOldBackupHasItsRecordThoughNothingElseIsAsItWas) {
    make("Song.logicx", 1);
    start();
    rate("Song.logicx", 5);
    const fs::path backup = m_disk.path().toStdString() + "/backup";
    copy(path("Song.logicx"), backup);
    restart([&] {
        copy(backup, path("../new"));
        fs::remove(path("../new/Resources/Stemhaven.plist"));
        removeAll(path("Song.logicx"));
        rename(path("../new"), path("Song.logicx"));
        setSaved("Song.logicx", std::chrono::hours(2));
    });
    EXPECT_TRUE(becomes({"Song.logicx|5"}));
    restart([&] { rename(path("Song.logicx"), path("Renamed.logicx")); });
    EXPECT_TRUE(becomes({"Renamed.logicx|5"}));
    restart([&] {
        removeAll(path("Renamed.logicx"));
        rename(backup, path("Restored.logicx"));
    });
    EXPECT_TRUE(becomes({"Restored.logicx|5"}));
}

TEST_F(Identity, ANoteThatAnotherCatalogueWroteSpeaksForNoRecord) {
    const QStringList names{"There.logicx", "Deleted.logicx", "Given up.logicx", "../drive/Away.logicx"};
    for (const auto& name : names)
        makeBundle(name);
    start();
    m_database.rows("UPDATE projects SET star_rating=5, last_modified=1000000000");
    const auto ids = m_database.rows("SELECT project_id FROM projects ORDER BY project_id");
    restart([&] {
        removeAll(path("Deleted.logicx"));
        removeAll(path("Given up.logicx"));
        rename(path("../drive"), path("../unplugged"));
        m_database.rows("UPDATE projects SET SUFID='' WHERE name='Given up'");
        for (const auto& id : ids) {
            TestBundle().write(path("in/" + id + ".logicx"));
            writeNote(path("in/" + id + ".logicx"), id.toLongLong(), "4242-4242");
        }
        // Even where it has the name of the deleted song.
        TestBundle().write(path("in/Deleted.logicx"));
        writeNote(path("in/Deleted.logicx"), idOf("Deleted"), "4242-4242");
        // Even where the file system gives it the number of the deleted song.
        const auto number = ProjectDetails(at("in/" + ids.first() + ".logicx")).sufid.toString();
        m_database.rows("UPDATE projects SET SUFID='" + number + "' WHERE name='Deleted'");
        writeNote(path("in/" + ids.first() + ".logicx"), idOf("Deleted"), "4242-4242");
    });
    QStringList expected{
        "../drive/Away.logicx|5", "Deleted.logicx|5", "Given up.logicx|5", "There.logicx|5",
        "in/Deleted.logicx|0"};
    for (const auto& id : ids)
        expected.append("in/" + id + ".logicx|0");
    expected.sort();
    EXPECT_TRUE(becomes(expected));
}

TEST_F(Identity, ANoteTakesNoRecordOfAVolumeThatIsAwayThoughItsBundleHasTheNumber) {
    // The folder where a volume is mounted can stay, empty, when the volume goes.
    for (const bool staysEmpty : {false, true}) {
        SCOPED_TRACE(staysEmpty);
        make("../drive/Song.logicx", 1);
        start();
        rate("../drive/Song.logicx", 5);
        restart([&] {
            rename(path("../drive"), path("../unplugged"));
            if (staysEmpty)
                fs::create_directories(path("../drive"));
            makeBundle("Strange.logicx");
            setSaved("Strange.logicx", std::chrono::hours(2));
            auto number = ProjectDetails(at("Strange.logicx")).sufid;
            number.device = 99;
            m_database.rows("UPDATE projects SET SUFID='" + number.toString() + "' WHERE name='Song'");
            writeNote(path("Strange.logicx"), idOf("Song"), number.toString().toStdString());
        });
        EXPECT_TRUE(becomes({"../drive/Song.logicx|5", "Strange.logicx|5"}));
        restart([&] {
            removeAll(path("../drive"));
            removeAll(path("../unplugged"));
            fs::create_directories(path("../drive"));
            removeAll(path("Strange.logicx"));
            m_database.rows("DELETE FROM projects");
        });
    }
}

TEST_F(Identity, ANoteTakesNoRecordOfAVolumeThatIsAwayWhoseNumberAnotherVolumeHasNow) {
    makeBundle("Strange.logicx");
    auto found = FoundBundle::read(at("Strange.logicx"));
    const auto number = found.details.sufid.toString();
    RecordCandidates candidates;
    // On another device than the one that is in the identity.
    candidates.byIdentity = {{7, "/dev/away/", "Song.logicx", number, found.savedAt - 3600}};
    for (const bool isIdKnown : {true, false}) {
        SCOPED_TRACE(isIdKnown);
        found.note = {isIdKnown ? 7 : 8, number.toStdString()};
        candidates.byNotedId = isIdKnown ? std::optional(candidates.byIdentity[0]) : std::nullopt;
        if (!isIdKnown)
            candidates.byNotedIdentity = candidates.byIdentity;
        BundleMatching matching(Places({}), [](const QString&) { return true; });
        matching.match(found, candidates, {}, BundleMatching::Knowledge::Settled);
        EXPECT_EQ(matching.vacatedPaths(), QStringList());
    }
}

TEST_F(Identity, ACopyOfASongOnADriveThatIsAwayBeginsWithItsUserData) {
    make("../drive/A/Song.logicx", 1);
    make("Other.logicx", 2);
    start();
    rate("../drive/A/Song.logicx", 5);
    m_database.rows("INSERT INTO tags VALUES (7, 'Live')");
    m_database.rows("INSERT INTO project_tag_map SELECT project_id, 7 FROM projects WHERE star_rating=5");
    restart([&] {
        copy(path("../drive/A/Song.logicx"), path("B/Song.logicx"));
        rename(path("../drive"), path("../unplugged"));
    });
    EXPECT_TRUE(becomes({"../drive/A/Song.logicx|5", "B/Song.logicx|5", "Other.logicx|0"}));
    EXPECT_EQ(m_database.rows("SELECT count(*) FROM project_tag_map WHERE tag_id=7"), QStringList("2"));
    m_database.rows("UPDATE projects SET star_rating=1 WHERE filepath LIKE '%/B/'");
    restart([&] { rename(path("../unplugged"), path("../drive")); });
    EXPECT_TRUE(becomes({"../drive/A/Song.logicx|5", "B/Song.logicx|1", "Other.logicx|0"}));

    // So is one whose folder cannot be entered.
    restart([&] {
        copy(path("../drive/A/Song.logicx"), path("D/Song.logicx"));
        rename(path("../drive/A"), path("../barred"));
        fs::create_directory_symlink("A", path("../drive/A"));
    });
    EXPECT_TRUE(
        becomes({"../drive/A/Song.logicx|5", "B/Song.logicx|1", "D/Song.logicx|5", "Other.logicx|0"}));
    restart([&] {
        removeAll(path("D"));
        m_database.rows("DELETE FROM projects WHERE filepath LIKE '%/D/'");
        fs::remove(path("../drive/A"));
        rename(path("../barred"), path("../drive/A"));
    });
    EXPECT_TRUE(becomes({"../drive/A/Song.logicx|5", "B/Song.logicx|1", "Other.logicx|0"}));

    // A folder that was taken off the list is not missing: what was there and is found elsewhere has moved.
    restart([&] {
        copy(path("../drive/A/Song.logicx"), path("C/Song.logicx"));
        removeAll(path("../drive"));
        m_database.rootRows("DELETE FROM root_project_search_paths WHERE root_search_path LIKE '%drive'");
    });
    EXPECT_TRUE(becomes({"B/Song.logicx|1", "C/Song.logicx|5", "Other.logicx|0"}));
}

TEST_F(Identity, AStrayIsFollowedThroughEachRenamingOfAFolderAboveIt) {
    startWithStray("../one/deep/Stray.logicx", 3);
    restart([] {});
    for (const auto& [from, to] :
         {std::pair("one", "two"), {"two", "three"}, {"three/deep", "three/deeper"}}) {
        rename(path(QString("../%1").arg(from)), path(QString("../%1").arg(to)));
        const QString folder = QString(to).contains('/') ? QString(to) : QString(to) + "/deep";
        EXPECT_TRUE(becomes({"../" + folder + "/Stray.logicx|3", "In.logicx|0"}));
    }
    restart([&] { rename(path("../three"), path("../four")); });
    EXPECT_TRUE(becomes({"../four/deeper/Stray.logicx|3", "In.logicx|0"}));
}

TEST_F(Identity, IsKeptThroughANewNumberOfTheDevice) {
    make("v1/Song.logicx", 1);
    make("v2/Song.logicx", 2);
    start();
    rate("v1/Song.logicx", 1);
    rate("v2/Song.logicx", 2);
    restart([&] {
        // Two apart, so that it is no device of this machine.
        m_database.rows("UPDATE projects SET SUFID='99' || substr(SUFID, instr(SUFID, '-'))");
        for (const auto* name : {"v1/Song.logicx", "v2/Song.logicx"}) {
            const auto details = ProjectDetails(at(name));
            auto noted = details;
            noted.sufid.device = 99;
            const auto id = m_database
                                .rows(QString("SELECT project_id FROM projects WHERE filepath LIKE '%/%1/'")
                                          .arg(QString(name).left(2)))
                                .value(0)
                                .toLongLong();
            writeNote(path(name), id, noted.sufid.toString().toStdString());
        }
        rename(path("v1"), path("v0"));
        rename(path("v2"), path("v1"));
    });
    EXPECT_TRUE(becomes({"v0/Song.logicx|1", "v1/Song.logicx|2"}));
}

TEST_F(Identity, BundlesWithoutANoteThatExchangeTheirNames) {
    start();
    for (const auto* name : {"A.logicx", "B.logicx"}) {
        // Their note cannot be written.
        fs::create_directories(path(name) / "Resources/Stemhaven.plist/x");
        make(name, QString(name) == "A.logicx" ? 1 : 2);
    }
    settle();
    rename(path("A.logicx"), path("t.logicx"));
    rename(path("B.logicx"), path("A.logicx"));
    rename(path("t.logicx"), path("B.logicx"));
    EXPECT_TRUE(becomes({"A.logicx|2", "B.logicx|1"}));
}

TEST_F(Identity, ABackupThatIsOlderThanTheRecordsIdentityHasItsRecord) {
    start();
    make("Song.logicx", 5);
    settle();
    const fs::path backup = m_disk.path().toStdString() + "/backup";
    restart([&] {
        rename(path("Song.logicx"), backup);
        copy(backup, path("Song.logicx"));
        setSaved("Song.logicx", std::chrono::hours(2));
    });
    restart([&] {
        removeAll(path("Song.logicx"));
        copy(backup, path("restored/Song.logicx"));
    });
    EXPECT_TRUE(becomes({"restored/Song.logicx|5"}));
}

TEST_F(Identity, ABundleWithoutANoteOfItsOwnIsKnownByItsNumberAndItsLastSave) {
    enum Notes { None, Foreign, ForeignWithUnknownId, OfTheOriginal, OfTheOriginalAndAsOld };

    for (const auto notes : {None, Foreign, ForeignWithUnknownId, OfTheOriginal, OfTheOriginalAndAsOld}) {
        SCOPED_TRACE(notes);
        restart([&] {
            removeAll(path(""));
            m_database.rows("DELETE FROM projects");
            // Where a folder has the note's place, none can be written.
            for (const auto* name : {"A.logicx", "B.logicx"}) {
                if (notes == None)
                    fs::create_directories(path(name) / "Resources/Stemhaven.plist/x");
                makeBundle(name);
            }
            makeBundle("Original.logicx");
            if (notes != OfTheOriginalAndAsOld)
                setSaved("Original.logicx", std::chrono::hours(2));
        });
        for (int i = 0; i < 3; ++i)
            rate(QStringList{"A.logicx", "B.logicx", "Original.logicx"}[i], i + 1);
        restart([&] {
            const auto id = idOf("Original");
            for (const auto* name : {"A.logicx", "B.logicx"}) {
                if (notes == Foreign || notes == ForeignWithUnknownId)
                    writeNote(path(name), id + (notes == Foreign ? 0 : 1000), "4242-4242");
                else if (notes != None)
                    writeNote(
                        path(name), id, ProjectDetails(at("Original.logicx")).sufid.toString().toStdString());
            }
            rename(path("A.logicx"), path("t.logicx"));
            rename(path("B.logicx"), path("A.logicx"));
            rename(path("t.logicx"), path("B.logicx"));
        });
        EXPECT_TRUE(becomes({"A.logicx|2", "B.logicx|1", "Original.logicx|3"}));
    }
}

TEST_F(Identity, AProjectThatIsCalledUntitledAgainKeepsItsRecord) {
    start();
    make("Song.logicx", 5);
    settle();
    rename(path("Song.logicx"), path("Untitled idea.logicx"));
    makeBundle("Song.logicx");
    EXPECT_TRUE(becomes({"Song.logicx|0", "Untitled idea.logicx|5"}));
}

TEST_F(Identity, WhatMovedOutOfSightLeavesItsNumberButNotItsRecord) {
    makeBundle("In.logicx");
    const auto found = FoundBundle::read(at("In.logicx"));
    RecordCandidates candidates;
    const QString out = at("Out.logicx");
    candidates.byIdentity = {{1, at(""), "Out.logicx", found.details.sufid.toString(), 0}};
    for (const bool isSameSave : {false, true}) {
        candidates.byIdentity[0].lastModified = found.savedAt - (isSameSave ? 0 : 3600);
        candidates.byPriorPath = candidates.byIdentity;
        BundleMatching matching(Places({}), [](const QString&) { return true; });
        matching.match(found, candidates, {out}, BundleMatching::Knowledge::Partial);
        EXPECT_EQ(matching.vacatedPaths(), isSameSave ? QStringList(out) : QStringList());
    }
}

TEST_F(Identity, AStrayIsNotTakenForANewBundleWithItsNumber) {
    const auto stray = startWithStray("../one/Fav.logicx", 5);
    restart([&] {
        removeAll(stray);
        TestBundle().write(path("../one/Other.logicx").string());
        const auto number =
            ProjectDetails(QString::fromStdString(path("../one/Other.logicx").string())).sufid;
        m_database.rows("UPDATE projects SET SUFID='" + number.toString() + "' WHERE name='Fav'");
    });
    EXPECT_EQ(state(), QStringList({"../one/Fav.logicx|5", "In.logicx|0"}));
}

TEST_F(Identity, ABundleAtRestIsNotWrittenAgain) {
    const auto waitForNextSecond = [] {
        const auto begin = QDateTime::currentSecsSinceEpoch();
        return waitUntil([&] { return QDateTime::currentSecsSinceEpoch() > begin + 1; });
    };
    const auto written = [&] {
        return m_database.rows("SELECT * FROM projects");
    };
    make("Song.logicx", 1);
    ASSERT_TRUE(waitForNextSecond());
    LogCapture messages;
    start();
    const auto before = written();
    // So that a second writing shows.
    ASSERT_TRUE(waitForNextSecond());
    settle();
    restart([] {});
    EXPECT_EQ(written(), before);
    EXPECT_EQ(messages.count("UPDATE projects"), 0);
}
