#include "monitor/FolderWalk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

QStringList walk(
    const QString& root, const std::function<bool()>& stopped = [] { return false; }) {
    QStringList found;
    FolderWalk({[&](const QString& path) { found.append(path.mid(root.size() + 1)); },
                [&](const QString& folder, const QString&) { found.append("unreadable: " + folder); },
                stopped})
        .walk(root);
    found.sort();
    return found;
}

} // namespace

TEST(FolderWalk, FindsWhatIsNamedLikeABundleAndNoMore) {
    const QTemporaryDir root;
    const QDir dir(root.path());
    for (const auto* folder :
         {"A.logicx/Media/Inner.logicx", "deep/er/B 'x' %1.logicx", ".hidden/C.logicx", "D.LOGICX",
          "E.logicx.old/F.logicx", "e\u0301/G.logicx", ".H.logicx", "empty"})
        ASSERT_TRUE(dir.mkpath(folder));
    QFile file(root.path() + "/File.logicx");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(root.path(), root.path() + "/deep/loop"));
    ASSERT_TRUE(QFile::link(root.path() + "/A.logicx", root.path() + "/Link.logicx"));

    QStringList expected = {
        "A.logicx", "E.logicx.old/F.logicx", "File.logicx", "deep/er/B 'x' %1.logicx", "e\u0301/G.logicx"};
    expected.sort();
    EXPECT_EQ(walk(root.path()), expected);
}

TEST(FolderWalk, SaysNothingOfFoldersThatAreMovedAwayMeanwhile) {
    const QTemporaryDir disk;
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(QDir(disk.path()).mkpath(QString("root/above/%1/Song.logicx").arg(i)));
    QStringList found;
    const auto note = [&](const QString& path) {
        found.append(path);
        QDir().rename(disk.path() + "/root/above", disk.path() + "/away");
    };
    FolderWalk({note, [&](const QString& folder, const QString&) { note(folder); },
                [] {
                    return false;
                }})
        .walk(disk.path() + "/root");
    EXPECT_EQ(found.size(), 1);
}

TEST(FolderWalk, StopsWhenToldAndTellsOfAFolderThatIsNotThere) {
    const QTemporaryDir root;
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(QDir(root.path()).mkpath(QString("%1.logicx").arg(i)));
    int looks = 0;
    EXPECT_LT(walk(root.path(), [&] { return ++looks > 5; }).size(), 20);

    const auto gone = root.path() + "/gone";
    EXPECT_EQ(walk(gone), QStringList("unreadable: " + gone));
}
