#include "platform/TreeWalk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

const BundleNames names({QStringLiteral(".logicx")});

QStringList walk(const QString& root, const std::function<bool()>& isStopped = {}) {
    QStringList found;
    TreeWalk walk;
    walk.onBundle = [&](const std::string& bundle) {
        found.append(QFile::decodeName(bundle.c_str()).mid(root.size() + 1));
    };
    walk.onUnreadable = [&](const std::string& folder, int) {
        found.append("unreadable: " + QFile::decodeName(folder.c_str()));
    };
    walk.isStopped = isStopped;
    walk.walk(QFile::encodeName(root).toStdString(), names);
    found.sort();
    return found;
}

} // namespace

TEST(TreeWalk, FindsWhatIsNamedLikeABundleAndNoMore) {
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

TEST(TreeWalk, SaysNothingOfFoldersThatAreMovedAwayMeanwhile) {
    const QTemporaryDir disk;
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(QDir(disk.path()).mkpath(QString("root/above/%1/Song.logicx").arg(i)));
    int found = 0;
    TreeWalk walk;
    walk.onBundle = [&](const std::string&) {
        ++found;
        QDir().rename(disk.path() + "/root/above", disk.path() + "/away");
    };
    walk.onUnreadable = [](const std::string& folder, int error) {
        ADD_FAILURE() << folder << ' ' << error;
    };
    walk.walk(QFile::encodeName(disk.path() + "/root").toStdString(), names);
    EXPECT_EQ(found, 1);
}

TEST(TreeWalk, StopsWhenToldAndTellsOfAFolderThatIsNotThere) {
    const QTemporaryDir root;
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(QDir(root.path()).mkpath(QString("%1.logicx").arg(i)));
    int looks = 0;
    EXPECT_LT(walk(root.path(), [&] { return ++looks > 5; }).size(), 20);

    const auto gone = root.path() + "/gone";
    EXPECT_EQ(walk(gone), QStringList("unreadable: " + gone));
}
