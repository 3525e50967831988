#include "project/ProjectDetails.h"

#include "project/BundleSuffixes.h"
#include "project/LoggedLines.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace Stemhaven;
using testing::StartsWith;

namespace {

SystemUniqueFileID identity(std::int32_t device, std::uint64_t inode) {
    SystemUniqueFileID id;
    id.device = device;
    id.inode = inode;
    return id;
}

} // namespace

TEST(ProjectDetails, takesAPathApart) {
    struct Case {
        QString path, filepath, name;
    };

    const Case cases[] = {
        {"/a/b/Song.logicx", "/a/b/", "Song"},
        {"/a/b/Song.logicx/", "/a/b/", "Song"},
        {"/a/b/Song.logicx/Resources/x", "/a/b/", "Song"},
        {"/a/Song.logicx.old/x", "/a/", "Song"},
        {"/a/Old.logicx/Song.logicx", "/a/", "Old"},
        {"/Song/Song/Song.logicx", "/Song/Song/", "Song"},
        {"/a/My.Song.logicx", "/a/", "My.Song"},
        {"/.logicx", "/", ""},
        {"Song.logicx", "", "Song"},
        {"/a/Mix %2 [1] \"b\" 'c'\\d\ne.logicx", "/a/", "Mix %2 [1] \"b\" 'c'\\d\ne"},
        {"/a/\u00C4 A\u0308 \u97F3\u697D \U0001F3B5.logicx", "/a/", "\u00C4 A\u0308 \u97F3\u697D \U0001F3B5"},
    };
    for (const Case& c : cases) {
        const ProjectDetails details(c.path);
        EXPECT_TRUE(details.isValid) << c.path.toStdString();
        EXPECT_EQ(details.filepath, c.filepath) << c.path.toStdString();
        EXPECT_EQ(details.name, c.name) << c.path.toStdString();
        EXPECT_EQ(details.filename, c.name + ".logicx") << c.path.toStdString();
    }
    for (const QString path : {"", "/", "/a/b/Song", "/a/b/Song.LOGICX", "/a/Songlogicx"}) {
        const ProjectDetails details(path);
        EXPECT_FALSE(details.isValid) << path.toStdString();
        EXPECT_EQ(details.filepath + details.filename + details.name, "") << path.toStdString();
        QString suffix = "kept";
        EXPECT_FALSE(isLogicProjectAssetPath(path, suffix));
        EXPECT_EQ(suffix, "kept");
    }
    EXPECT_TRUE(isBundlePath("/a/Song.logicx"));
    EXPECT_FALSE(isBundlePath("/a/Song.logicx/Resources"));
}

TEST(ProjectDetails, carriesTheIdentityOfThePathAsGiven) {
    const QTemporaryDir folder;
    const QString bundle = folder.filePath(QString(100, u'\u00E9') + QString(48, 'n') + ".logicx");
    ASSERT_TRUE(QDir().mkpath(bundle + "/Resources"));
    struct stat status = {};
    ASSERT_EQ(stat(bundle.toUtf8(), &status), 0);

    const ProjectDetails details(bundle);
    EXPECT_TRUE(details.sufid.valid);
    EXPECT_EQ(details.sufid.inode, status.st_ino);
    EXPECT_EQ(details.sufid.toString(), QString("%1-%2").arg(int(status.st_dev)).arg(status.st_ino));
    EXPECT_NE(ProjectDetails(bundle + "/Resources").sufid, details.sufid);

    const QString moved = folder.filePath("moved.logicx");
    ASSERT_TRUE(QDir().rename(bundle, moved));
    EXPECT_EQ(ProjectDetails(moved).sufid, details.sufid);
    EXPECT_FALSE(ProjectDetails(moved) == details);
}

TEST(ProjectDetails, equalsWhereTextsAndIdentityDo) {
    const ProjectDetails details("/a/Song.logicx");
    ProjectDetails other = details;
    other.isValid = false;
    EXPECT_TRUE(other == details);
    for (QString ProjectDetails::*text :
         {&ProjectDetails::filepath, &ProjectDetails::filename, &ProjectDetails::name}) {
        other = details;
        other.*text += "x";
        EXPECT_FALSE(other == details);
    }
}

TEST(ProjectDetails, isLoggedAsOneRecord) {
    ProjectDetails details;
    details.filepath = "/a/";
    details.filename = "S.logicx";
    details.name = "S";
    details.sufid = identity(-3, 18446744073709551615U);
    QString text;
    QDebug(&text) << details << "end";
    EXPECT_EQ(
        text,
        "Project details: \tName:      \"S\" \tFilename:  \"S.logicx\" \tFilepath:  \"/a/\" "
        "\tSUFID:     -3-18446744073709551615 end ");
}

TEST(SystemUniqueFileID, comparesDeviceAndInodeEachForItself) {
    const auto a = identity(1, 5);
    const auto b = identity(2, 3);
    EXPECT_TRUE(a < b);
    EXPECT_TRUE(b < a);
    EXPECT_FALSE(a < a);
    EXPECT_TRUE(identity(-1, 9) < identity(1, 9));
    EXPECT_FALSE(identity(1, 9) < identity(-1, 9));

    SystemUniqueFileID valid = a;
    valid.valid = true;
    EXPECT_EQ(valid, a);
    EXPECT_NE(a, b);
    EXPECT_NE(a, identity(1, 3));
}

TEST(SystemUniqueFileID, saysWhyAPathHasNone) {
    const QTemporaryDir folder;
    const auto path = [&](const QString& name) {
        return folder.filePath(name).toUtf8();
    };
    ASSERT_TRUE(QFile(folder.filePath("file")).open(QFile::WriteOnly));
    ASSERT_TRUE(QFile::link(folder.filePath("loop"), folder.filePath("loop")));
    ASSERT_TRUE(QFile::link(folder.filePath("gone"), folder.filePath("dangling")));

    const std::string missing =
        "D Could not get SUFID. Path not found, empty string, or dangling symbolic link:  ";
    const QByteArray tooLong(256, 'n');
    const std::pair<QByteArray, std::string> cases[] = {
        {"", missing},
        {path("g\u00F6ne"), missing + path("g\u00F6ne").toStdString()},
        {path("dangling"), missing + path("dangling").toStdString()},
        {path("file/x"), "D Could not get SUFID. Part of path is not a directory! Path:  /"},
        {path(tooLong), "D Could not get SUFID. Path name is too long:  /"},
        {path("loop"), "W Could not get SUFID. Unknown errno: 40  Path:  /"},
    };
    for (const auto& [name, line] : cases) {
        const LoggedLines logged;
        const SystemUniqueFileID id(name.constData());
        EXPECT_THAT(logged.text(), StartsWith(line));
        EXPECT_FALSE(id.valid);
        EXPECT_EQ(id.toString(), "0-0");
    }
    const LoggedLines logged;
    EXPECT_FALSE(SystemUniqueFileID(nullptr).valid);
    EXPECT_THAT(logged.text(), StartsWith("D Could not get SUFID. Bad address. Path: "));
}
