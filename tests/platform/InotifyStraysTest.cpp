#include "WatchedFolder.h"

namespace Stemhaven {

namespace fs = std::filesystem;

class InotifyStrays : public WatchedFolder {
protected:
    /// A project two folders below the top, which is as high as the ancestors go.
    InotifyStrays() {
        makeBundle(stray());
        const auto text = [](const fs::path& path) {
            return QString::fromStdString(path.string());
        };
        request().strayBundles = {text(stray())};
        request().ancestors = {
            text(top() / "Home") + QLatin1Char('/'), text(top() / "Home/Desk") + QLatin1Char('/')};
    }

    fs::path stray() const { return top() / "Home/Desk/S.logicx"; }
};

TEST_F(InotifyStrays, AreWatchedButNotWhatLiesBesideThem) {
    ASSERT_TRUE(start());
    makeBundle(top() / "Home/Desk/Other.logicx");
    fs::create_directory(top() / "Home/Desk/Other");
    fs::rename(top() / "Home/Desk/Other", top() / "Home/Desk/Other2");
    saveOver(stray() / "Resources/ProjectInformation.plist");
    settle();
    const auto found = settledFlags();
    EXPECT_EQ(found.size(), 2U) << testing::PrintToString(found);
    EXPECT_TRUE(found.contains("Home/Desk/S.logicx/Resources/ProjectInformation.plist"));
}

TEST_F(InotifyStrays, AreFollowedWhenTheyOrFoldersAboveAreRenamed) {
    const auto inode = inodeOf(top() / "Home");
    const auto bundleInode = inodeOf(stray());
    ASSERT_TRUE(start());
    fs::rename(stray(), top() / "Home/Desk/T.logicx");
    ASSERT_TRUE(waitFor("Home/Desk/T.logicx", renamed));
    EXPECT_EQ(fileID("Home/Desk/S.logicx", renamed), bundleInode);
    EXPECT_EQ(fileID("Home/Desk/T.logicx", renamed), bundleInode);

    fs::rename(top() / "Home", top() / "House");
    ASSERT_TRUE(waitFor("House", renamed));
    EXPECT_EQ(fileID("Home", renamed), inode);
    EXPECT_EQ(fileID("House", renamed), inode);
    writeFile(top() / "House/Desk/T.logicx/Resources/new");
    EXPECT_TRUE(waitFor("House/Desk/T.logicx/Resources/new", created));
}

TEST_F(InotifyStrays, AreSeenToGoAndToComeBack) {
    ASSERT_TRUE(start());
    fs::remove_all(stray());
    EXPECT_TRUE(waitFor("Home/Desk/S.logicx", removed));
    forgetEvents();
    makeBundle(stray());
    EXPECT_TRUE(waitFor("Home/Desk/S.logicx", created));
    settle();
    writeFile(stray() / "Resources/new");
    EXPECT_TRUE(waitFor("Home/Desk/S.logicx/Resources/new", created));
}

} // namespace Stemhaven
