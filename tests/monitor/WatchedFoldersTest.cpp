#include "monitor/WatchedFolders.h"

#include "support/LogCapture.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Stemhaven;

TEST(WatchedFolders, TakeRootsOnceAndNeverTheWholeDisk) {
    LogCapture messages;
    WatchedFolders folders;
    for (const auto* path : {"/a/b", "/a/b/", "/", "/a/c/"})
        folders.addRoot(path);
    EXPECT_EQ(folders.roots(), QStringList({"/a/b/", "/a/c/"}));
    EXPECT_EQ(messages.count("Root monitoring attempt detected. Ignoring..."), 1);
    EXPECT_TRUE(folders.isBelowRoot("/a/b/Song.logicx"));
    EXPECT_FALSE(folders.isBelowRoot("/a/bc/Song.logicx"));
    folders.addRoot("/a/b/inner");
    EXPECT_EQ(folders.rootAbove("/a/b/inner/x/Song.logicx"), "/a/b/inner/");
}

TEST(WatchedFolders, ClimbFromStraysToARootOrTheTop) {
    LogCapture messages;
    const QTemporaryDir disk;
    const auto at = [&](const QString& path) {
        return disk.path() + '/' + path;
    };
    for (const auto* bundle : {"root/In.logicx", "stray/x/S.logicx", "stray/x/T.logicx", "other/U.logicx"})
        ASSERT_TRUE(QDir().mkpath(at(bundle)));

    WatchedFolders folders;
    folders.addRoot(at("root"));
    const auto ancestors = folders.ancestorsOf(
        {at("stray/x/S.logicx"), at("stray/x/T.logicx"), at("other/U.logicx"), at("gone/V.logicx")});
    for (const auto& expected : {at("stray/x/"), at("stray/"), at("other/"), at("")})
        EXPECT_TRUE(ancestors.contains(expected)) << expected.toStdString();
    EXPECT_FALSE(ancestors.contains("/"));
    EXPECT_FALSE(ancestors.contains(at("root/")));
    EXPECT_FALSE(ancestors.contains(at("gone/")));

    folders.setAncestors({at("other/"), at("stray/"), at("stray/x/")});
    folders.moveAncestors(at("stray"), at("other/moved"));
    EXPECT_EQ(
        folders.ancestors(),
        QSet<QString>(
            {at("other/"), at("stray/"), at("stray/x/"), at("other/moved/"), at("other/moved/x/")}));
    folders.setAncestors({at("other/")});
    EXPECT_EQ(folders.all(), QStringList({at("root/"), at("other/")}));
}
