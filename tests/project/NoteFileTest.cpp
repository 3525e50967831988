#include "project/NoteFile.h"

#include "plist/PropertyList.h"
#include "support/LogCapture.h"
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

    void writeNote(const Plist::Value& root) const {
        TestBundle::writeList(note.toStdString(), root, TestBundle::Form::Xml);
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

TEST(NoteFile, readsBackWhatWasWrittenLastAndKeepsNothingElse) {
    for (const QString& name :
         {QString("Song"), QString("Mix %2 [1] \"b\" 'c'\\d"),
          QString("\u00C4 A\u0308 \u97F3\u697D \U0001F3B5"), QString(124, u'\u00E9')}) {
        SCOPED_TRACE(name.toStdString());
        const Bundle bundle(name);
        EXPECT_EQ(hasStemhavenPlist(bundle.details), std::nullopt);
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        EXPECT_TRUE(lacksNote(bundle.path));

        bundle.writeNote(Plist::Dictionary{{"other", true}});
        for (const std::int64_t id : {INT64_MAX, std::int64_t{7}}) {
            updateStemhavenPlist(bundle.details, id);
            EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(id, bundle.sufid)));
            std::vector<char> bytes;
            Plist::writePlistBinary(bytes, Plist::Dictionary{{"project_id", id}, {"SUFID", bundle.sufid}});
            QFile file(bundle.note);
            ASSERT_TRUE(file.open(QFile::ReadOnly));
            EXPECT_EQ(file.readAll(), QByteArray(bytes.data(), qsizetype(bytes.size())));
        }
        EXPECT_THAT(hasStemhavenPlist(bundle.details), Optional(bundle.note.toStdString()));
        EXPECT_EQ(bundle.resources(), QStringList("Stemhaven.plist"));
        EXPECT_FALSE(lacksNote(bundle.path));
    }
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

    const LogCapture logged;
    updateStemhavenPlist(unknown, 2);
    EXPECT_EQ(logged.messages(), QStringList("W: Could not update Stemhaven.plist. SUFID invalid."));
    EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(1, bundle.sufid)));
}

TEST(NoteFile, isPassedOverWhereItLacksSomethingAndThrowsWhereItIsCorrupt) {
    const Bundle bundle;
    const QString lacking = "W: Stemhaven.plist found with incorrect format:  " + bundle.note;
    const QString mismatch = "C: Type mismatch in Stemhaven.plist. Bad cast!";
    const Plist::Value id = std::int64_t{42};
    const Plist::Value sufid = std::string("16777232-99");
    const std::pair<Plist::Dictionary, QString> cases[] = {
        {{{"SUFID", sufid}}, lacking},
        {{{"project_id", id}}, lacking},
        {{{"project_id", sufid}, {"SUFID", sufid}}, mismatch},
        {{{"project_id", id}, {"SUFID", id}}, mismatch},
    };
    for (const auto& [note, line] : cases) {
        SCOPED_TRACE(note.begin()->first + " of " + note.begin()->second.type().name());
        bundle.writeNote(note);
        const LogCapture logged;
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        EXPECT_EQ(logged.messages(), QStringList(line));
    }
    bundle.writeNote(Plist::Dictionary{{"project_id", id}, {"SUFID", sufid}});
    EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(42, "16777232-99")));

    bundle.writeNote(Plist::Array{});
    EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), std::bad_cast);
    ASSERT_TRUE(QFile::resize(bundle.note, 8));
    EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), Plist::Error);
}

TEST(NoteFile, ignoresAndReplacesWhatIsNoFile) {
    const Bundle bundle;
    const std::pair<const char*, std::function<bool()>> obstacles[] = {
        {"pipe",
         [&] {
             return mkfifo(bundle.note.toUtf8(), 0600) == 0;
         }},
        {"endless",
         [&] {
             return QFile::link("/dev/zero", bundle.note);
         }},
        {"dangling",
         [&] {
             return QFile::link(bundle.folder.filePath("gone"), bundle.note);
         }},
    };
    for (const auto& [name, make] : obstacles) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(make());
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        updateStemhavenPlist(bundle.details, 5);
        EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(5, bundle.sufid)));
        ASSERT_TRUE(QFile::remove(bundle.note));
    }
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

TEST(NoteFile, isPassedOverWhereItCannotBeWritten) {
    const Bundle bundle;
    const LogCapture logged;
    ASSERT_TRUE(QDir().mkdir(bundle.note));
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
    EXPECT_EQ(bundle.resources(), QStringList("Stemhaven.plist"));

    ASSERT_TRUE(QDir(bundle.path).removeRecursively());
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
    EXPECT_FALSE(lacksNote(bundle.path));
    EXPECT_TRUE(logged.messages().isEmpty());
}
