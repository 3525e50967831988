#include "project/NoteFile.h"

#include "plist/PropertyList.h"
#include "project/LoggedLines.h"
#include "support/TestBundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace Stemhaven;
using testing::Optional;
using testing::Pair;

namespace {

/// A bundle of the given name with an empty Resources folder.
struct Bundle {
    explicit Bundle(const QString& name = "Song") {
        path = folder.filePath(name + ".logicx");
        note = path + "/Resources/Stemhaven.plist";
        QDir().mkpath(path + "/Resources");
        details = ProjectDetails(path);
        sufid = details.sufid.toString().toStdString();
    }

    QStringList resources() const {
        return QDir(path + "/Resources").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
    QString path, note;
    ProjectDetails details;
    std::string sufid;
};

} // namespace

TEST(NoteFile, readsBackWhatWasWrittenLast) {
    for (const QString& name :
         {QString("Song"), QString("Mix %2 [1] \"b\" 'c'\\d"),
          QString("\u00C4 A\u0308 \u97F3\u697D \U0001F3B5"), QString(124, u'\u00E9')}) {
        const Bundle bundle(name);
        EXPECT_EQ(hasStemhavenPlist(bundle.details), std::nullopt);
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        for (const std::int64_t id : {INT64_MAX, std::int64_t{7}}) {
            updateStemhavenPlist(bundle.details, id);
            EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(id, bundle.sufid)));
        }
        EXPECT_THAT(hasStemhavenPlist(bundle.details), Optional(bundle.note.toStdString()));
        EXPECT_EQ(bundle.resources(), QStringList("Stemhaven.plist"));
    }
}

TEST(NoteFile, keepsNothingOfAnOlderNote) {
    const Bundle bundle;
    TestBundle::writeList(bundle.note.toStdString(), Plist::Dictionary{{"other", true}});
    updateStemhavenPlist(bundle.details, 42);
    std::vector<char> expected;
    Plist::writePlistBinary(
        expected, Plist::Dictionary{{"project_id", std::int64_t{42}}, {"SUFID", bundle.sufid}});
    QFile file(bundle.note);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray(expected.data(), qsizetype(expected.size())));
}

TEST(NoteFile, isLeftAloneWhereItStandsAsItShould) {
    const Bundle bundle;
    const auto inode = [&] {
        return SystemUniqueFileID(bundle.note.toUtf8()).inode;
    };
    updateStemhavenPlist(bundle.details, 42);
    const std::uint64_t first = inode();
    updateStemhavenPlist(bundle.details, 42);
    EXPECT_EQ(inode(), first);
    updateStemhavenPlist(bundle.details, 43);
    EXPECT_NE(inode(), first);

    const QString elsewhere = bundle.folder.filePath("elsewhere");
    ASSERT_TRUE(QFile::rename(bundle.note, elsewhere) && QFile::link(elsewhere, bundle.note));
    EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(43, bundle.sufid)));
    updateStemhavenPlist(bundle.details, 43);
    EXPECT_FALSE(QFileInfo(bundle.note).isSymLink());
}

TEST(NoteFile, needsAValidBundle) {
    const Bundle bundle;
    updateStemhavenPlist(bundle.details, 1);

    ProjectDetails outside = bundle.details;
    outside.isValid = false;
    EXPECT_EQ(hasStemhavenPlist(outside), std::nullopt);
    ProjectDetails unknown = bundle.details;
    unknown.sufid.valid = false;
    EXPECT_EQ(loadStemhavenPlistDetails(unknown), std::nullopt);

    const LoggedLines logged;
    updateStemhavenPlist(unknown, 2);
    EXPECT_EQ(logged.text(), "W Could not update Stemhaven.plist. SUFID invalid.");
    EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(1, bundle.sufid)));
}

TEST(NoteFile, isPassedOverWhereItLacksSomething) {
    const Bundle bundle;
    const std::string lacking =
        "W Stemhaven.plist found with incorrect format:  " + bundle.note.toStdString();
    const std::string mismatch = "C Type mismatch in Stemhaven.plist. Bad cast!";
    const Plist::Value id = std::int64_t{42};
    const Plist::Value sufid = std::string("16777232-99");
    const std::pair<Plist::Dictionary, std::string> cases[] = {
        {{}, lacking},
        {{{"SUFID", sufid}}, lacking},
        {{{"project_id", id}}, lacking},
        {{{"project_id", sufid}, {"SUFID", sufid}}, mismatch},
        {{{"project_id", id}, {"SUFID", id}}, mismatch},
    };
    for (const auto& [note, line] : cases) {
        TestBundle::writeList(bundle.note.toStdString(), note, TestBundle::Form::Xml);
        const LoggedLines logged;
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        EXPECT_EQ(logged.text(), line);
    }
    TestBundle::writeList(
        bundle.note.toStdString(), Plist::Dictionary{{"project_id", id}, {"SUFID", sufid}},
        TestBundle::Form::Xml);
    EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(42, "16777232-99")));
}

TEST(NoteFile, throwsWhereItIsCorrupt) {
    const Bundle bundle;
    QFile file(bundle.note);
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write("bplist00") == 8 && file.flush());
    EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), Plist::Error);
    TestBundle::writeList(bundle.note.toStdString(), Plist::Array{});
    EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), std::bad_cast);
}

TEST(NoteFile, ignoresAndReplacesWhatIsNoFile) {
    const Bundle bundle;
    const QString outside = bundle.folder.filePath("outside");
    QFile file(outside);
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write("kept") == 4 && file.flush());
    const std::function<bool()> obstacles[] = {
        [&] { return mkfifo(bundle.note.toUtf8(), 0600) == 0; },
        [&] { return QFile::link("/dev/zero", bundle.note); },
        [&] { return QFile::link(bundle.folder.filePath("gone"), bundle.note); },
    };
    for (const auto& make : obstacles) {
        ASSERT_TRUE(make());
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        updateStemhavenPlist(bundle.details, 5);
        EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(5, bundle.sufid)));
        ASSERT_TRUE(QFile::remove(bundle.note));
    }
    ASSERT_TRUE(QFile::link(outside, bundle.note));
    updateStemhavenPlist(bundle.details, 5);
    EXPECT_EQ(QFileInfo(outside).size(), 4);
}

TEST(NoteFile, isNotWrittenIntoAnotherBundleThatTookThePlace) {
    const Bundle bundle;
    ASSERT_TRUE(QDir().rename(bundle.path, bundle.path + ".moved"));
    ASSERT_TRUE(QDir().mkpath(bundle.path + "/Resources"));
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_TRUE(bundle.resources().isEmpty());
    updateStemhavenPlist(ProjectDetails(bundle.path), 7);
    EXPECT_EQ(bundle.resources(), QStringList("Stemhaven.plist"));
}

TEST(NoteFile, isLackingOnlyWhereItCouldBeWritten) {
    const Bundle bundle;
    EXPECT_TRUE(lacksNote(bundle.path));
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_FALSE(lacksNote(bundle.path));
    ASSERT_TRUE(QDir(bundle.path + "/Resources").removeRecursively());
    EXPECT_FALSE(lacksNote(bundle.path));
}

TEST(NoteFile, isPassedOverWhereItCannotBeWritten) {
    const Bundle bundle;
    const LoggedLines logged;
    ASSERT_TRUE(QDir().mkdir(bundle.note));
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
    EXPECT_EQ(bundle.resources(), QStringList("Stemhaven.plist"));

    ASSERT_TRUE(QDir(bundle.path).removeRecursively());
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
    EXPECT_EQ(logged.text(), "");
}
