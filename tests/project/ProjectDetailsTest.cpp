#include "project/ProjectDetails.h"

#include "project/BundleSuffixes.h"
#include "support/LogCapture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Stemhaven;

namespace {

SystemUniqueFileID identity(std::int32_t device, std::uint64_t inode) {
    SystemUniqueFileID id;
    id.device = device;
    id.inode = inode;
    return id;
}

} // namespace

TEST(ProjectDetails, takesAPathApart) {
    const std::tuple<QString, QString, QString> cases[] = {
        {"/a/b/Song.logicx", "/a/b/", "Song"},
        {"/a/b/Song.logicx/Resources/x", "/a/b/", "Song"},
        {"/a/Song.logicx.old/x", "/a/", "Song"},
        {"/a/Old.logicx/Song.logicx", "/a/", "Old"},
        {"/a/A.logicx backups/A.logicx/Resources/x", "/a/A.logicx backups/", "A"},
        {"/Song/Song/Song.logicx", "/Song/Song/", "Song"},
        {"/.logicx", "/", ""},
        {"/a/\u00C4 A\u0308 %2 [1] \"b\" 'c'\\d\ne.logicx", "/a/", "\u00C4 A\u0308 %2 [1] \"b\" 'c'\\d\ne"},
    };

    for (const auto& [path, filepath, name] : cases) {
        SCOPED_TRACE(path.toStdString());
        const ProjectDetails details(path);
        EXPECT_TRUE(details.isValid);
        EXPECT_EQ(details.filepath, filepath);
        EXPECT_EQ(details.name, name);
        EXPECT_EQ(details.filename, name + ".logicx");
    }
    for (const QString path : {"", "/a/b/Song", "/a/b/Song.LOGICX", "/a/Songlogicx"}) {
        const ProjectDetails details(path);
        EXPECT_FALSE(details.isValid) << path.toStdString();
        EXPECT_EQ(details.filepath + details.filename + details.name, "") << path.toStdString();
    }
    EXPECT_EQ(
        bundlePathIn("/a/A.logicx backups/B.logicx/Alternatives/C.logicx"), "/a/A.logicx backups/B.logicx");
    EXPECT_EQ(bundlePathIn("/a/A.logicx backups/notes.txt"), "");
}

TEST(ProjectDetails, carriesTheIdentityOfThePathAsGiven) {
    const QTemporaryDir folder;
    const QString bundle = folder.filePath(QString(100, u'\u00E9') + QString(48, 'n') + ".logicx");
    ASSERT_TRUE(QDir().mkpath(bundle + "/Resources"));
    struct stat status = {};
    ASSERT_EQ(stat(bundle.toUtf8(), &status), 0);

    const ProjectDetails details(bundle);
    EXPECT_TRUE(details.sufid.valid);
    EXPECT_EQ(details.sufid.toString(), QString("%1-%2").arg(int(status.st_dev)).arg(status.st_ino));
    EXPECT_NE(ProjectDetails(bundle + "/Resources").sufid, details.sufid);

    const QString moved = folder.filePath("moved.logicx");
    ASSERT_TRUE(QDir().rename(bundle, moved));
    EXPECT_EQ(ProjectDetails(moved).sufid, details.sufid);
    const LogCapture logged;
    EXPECT_FALSE(ProjectDetails(bundle).sufid.valid);
    EXPECT_EQ(ProjectDetails(bundle).sufid.toString(), "0-0");
}

TEST(SystemUniqueFileID, comparesDeviceAndInodeEachForItself) {
    EXPECT_TRUE(identity(1, 5) < identity(2, 3));
    EXPECT_TRUE(identity(2, 3) < identity(1, 5));
    EXPECT_TRUE(identity(-1, 9) < identity(1, 9));
    EXPECT_FALSE(identity(1, 9) < identity(-1, 9));
    EXPECT_NE(identity(1, 5), identity(2, 5));
    EXPECT_NE(identity(1, 5), identity(1, 3));
}
