#include "project/NoteFile.h"

#include "plist/PropertyList.h"
#include "support/LogCapture.h"
#include "support/TestBundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

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

TEST(NoteFile, isPassedOverWhereItLacksSomethingAndThrowsWhereItIsCorrupt) {
    const Bundle bundle;
    const Plist::Value id = std::int64_t{42};
    const Plist::Value sufid = std::string("16777232-99");
    const Plist::Dictionary cases[] = {
        {{"SUFID", sufid}},
        {{"project_id", id}},
        {{"project_id", sufid}, {"SUFID", sufid}},
        {{"project_id", id}, {"SUFID", id}},
        {{"project_id", id}, {"SUFID", std::string(1 << 20, '1')}},
    };
    for (const auto& note : cases) {
        bundle.writeNote(note);
        const LogCapture logged;
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        EXPECT_EQ(logged.messages().size(), 1);
    }
    bundle.writeNote(Plist::Dictionary{{"project_id", id}, {"SUFID", sufid}});
    EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(42, "16777232-99")));

    bundle.writeNote(Plist::Array{});
    EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), std::bad_cast);
    ASSERT_TRUE(QFile::resize(bundle.note, 8));
    EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), Plist::Error);
}

TEST(NoteFile, ignoresAndReplacesWhatIsNoUsableFile) {
    const Bundle bundle;
    const Bundle other("Other");
    updateStemhavenPlist(other.details, 4);
    const auto expectReplaced = [&](const QString& obstacle) {
        SCOPED_TRACE(obstacle.toStdString());
        EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
        EXPECT_TRUE(lacksNote(bundle.path));
        updateStemhavenPlist(bundle.details, 5);
        EXPECT_THAT(loadStemhavenPlistDetails(bundle.details), Optional(Pair(5, bundle.sufid)));
        EXPECT_FALSE(lacksNote(bundle.path));
        EXPECT_FALSE(QFileInfo(bundle.note).isSymLink());
        ASSERT_TRUE(QFile::remove(bundle.note));
    };
    ASSERT_EQ(mkfifo(bundle.note.toUtf8(), 0600), 0);
    expectReplaced("pipe");
    for (const QString& target : {QString("/dev/zero"), bundle.folder.filePath("gone"), other.note}) {
        ASSERT_TRUE(QFile::link(target, bundle.note));
        expectReplaced(target);
    }
    for (const qint64 size : {0, (4 << 20) + 1}) {
        QFile file(bundle.note);
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.resize(size));
        expectReplaced(QString::number(size));
    }
    EXPECT_THAT(loadStemhavenPlistDetails(other.details), Optional(Pair(4, other.sufid)));

    ASSERT_TRUE(QDir().mkdir(bundle.note));
    updateStemhavenPlist(bundle.details, 6);
    EXPECT_EQ(loadStemhavenPlistDetails(bundle.details), std::nullopt);
    EXPECT_EQ(bundle.resources(), QStringList("Stemhaven.plist"));
}

TEST(NoteFile, isLookedForInNoOtherBundle) {
    const Bundle bundle;
    const Bundle other("Other");
    const QString abandoned = other.note + ".4711-0";
    for (const auto* linked : {"/Resources", ""}) {
        SCOPED_TRACE(linked);
        ASSERT_TRUE(QDir(bundle.path + linked).removeRecursively());
        ASSERT_TRUE(QFile::link(other.path + linked, bundle.path + linked));
        updateStemhavenPlist(other.details, 1);
        ASSERT_TRUE(QFile::copy(other.note, abandoned));
        std::filesystem::last_write_time(abandoned.toStdString(), {});

        const ProjectDetails details(bundle.path);
        EXPECT_EQ(hasStemhavenPlist(details), std::nullopt);
        EXPECT_EQ(loadStemhavenPlistDetails(details), std::nullopt);
        updateStemhavenPlist(details, 2);
        EXPECT_THAT(loadStemhavenPlistDetails(other.details), Optional(Pair(1, other.sufid)));
        EXPECT_TRUE(QFile::exists(abandoned));

        ASSERT_TRUE(QFile::remove(other.note));
        EXPECT_FALSE(lacksNote(bundle.path));
        updateStemhavenPlist(details, 2);
        EXPECT_FALSE(QFile::exists(other.note));
        ASSERT_TRUE(QFile::remove(abandoned));
    }

    // A folder of projects may be reached through a link.
    const QString library = bundle.folder.filePath("library");
    ASSERT_TRUE(QFile::link(other.folder.path(), library));
    const ProjectDetails linked(library + "/Other.logicx");
    updateStemhavenPlist(linked, 3);
    EXPECT_THAT(loadStemhavenPlistDetails(linked), Optional(Pair(3, other.sufid)));
}

TEST(NoteFile, isWrittenTogetherWithManyOthers) {
    std::vector<Bundle> bundles(200);
    std::vector<NoteToWrite> notes;
    for (const auto& bundle : bundles)
        notes.push_back({bundle.details, static_cast<std::int64_t>(notes.size())});
    // One that stands already, one of no identity, one that is gone and one that was exchanged.
    updateStemhavenPlist(bundles[0].details, 0);
    const auto inode = SystemUniqueFileID(bundles[0].note.toUtf8()).inode;
    notes[1].details.sufid.valid = false;
    ASSERT_TRUE(QDir(bundles[2].path).removeRecursively());
    notes[3].details.sufid = bundles[4].details.sufid;
    const LogCapture logged;
    writeNotes(notes);
    EXPECT_EQ(logged.messages(), QStringList("W: Could not update Stemhaven.plist. SUFID invalid."));

    EXPECT_EQ(SystemUniqueFileID(bundles[0].note.toUtf8()).inode, inode);
    for (std::size_t i = 0; i < bundles.size(); ++i) {
        SCOPED_TRACE(i);
        std::optional<std::pair<std::int64_t, std::string>> expected;
        if (i < 1 || i > 3)
            expected.emplace(i, bundles[i].sufid);
        EXPECT_EQ(loadStemhavenPlistDetails(bundles[i].details), expected);
        EXPECT_EQ(bundles[i].resources().size(), expected ? 1 : 0);
    }
}

TEST(NoteFile, isNotTakenForMissingWhereItCannotBeOpened) {
    const Bundle bundle;
    updateStemhavenPlist(bundle.details, 8);
    // The sanitizer looks at a type when it is thrown first, and needs a descriptor for it.
    try {
        throw Plist::Error("");
    } catch (const Plist::Error& error) {
        EXPECT_STRNE(error.what(), nullptr);
    }
    const int next = dup(STDERR_FILENO);
    close(next);
    rlimit usual = {};
    getrlimit(RLIMIT_NOFILE, &usual);
    // The bundle, its folder or the note itself is one too many.
    for (const int remaining : {0, 1, 2}) {
        rlimit few = usual;
        few.rlim_cur = static_cast<rlim_t>(next + remaining);
        setrlimit(RLIMIT_NOFILE, &few);
        EXPECT_THROW(loadStemhavenPlistDetails(bundle.details), Plist::Error) << remaining;
        setrlimit(RLIMIT_NOFILE, &usual);
    }
}
