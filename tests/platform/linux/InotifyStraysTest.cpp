#include "WatchedFolder.h"

namespace Stemhaven {

namespace fs = std::filesystem;

class InotifyStrays : public WatchedFolder {
protected:
    /// A project two folders below the top, which is as high as the ancestors go.
    InotifyStrays() {
        makeBundle(stray);
        request().strayBundles = {at(stray)};
        request().ancestors = {at("Home/"), at("Home/Desk/")};
    }

    const std::string stray = "Home/Desk/S.logicx";
};

TEST_F(InotifyStrays, AreWatchedButNotWhatLiesBesideThem) {
    ASSERT_TRUE(start());
    makeBundle("Home/Desk/Other.logicx");
    fs::create_directory("Home/Desk/Other");
    fs::rename("Home/Desk/Other", "Home/Desk/Other2");
    saveOver(stray + "/Resources/ProjectInformation.plist");
    settle();
    const auto found = settledFlags();
    EXPECT_EQ(found.size(), 2U) << testing::PrintToString(found);
    EXPECT_TRUE(found.contains(stray + "/Resources/ProjectInformation.plist"));
}

TEST_F(InotifyStrays, AreSeenToGoToComeBackAndToBeRenamedThemselvesOrWithFoldersAbove) {
    ASSERT_TRUE(start());
    fs::remove_all(stray);
    EXPECT_TRUE(waitFor(stray, removed));
    makeBundle(stray);
    EXPECT_TRUE(waitFor(stray, created));
    settle();
    EXPECT_TRUE(isFollowed(stray));

    const auto inode = inodeOf("Home");
    const auto bundleInode = inodeOf(stray);
    fs::rename(stray, "Home/Desk/T.logicx");
    ASSERT_TRUE(waitFor("Home/Desk/T.logicx", renamed));
    EXPECT_EQ(fileID(stray, renamed), bundleInode);
    EXPECT_EQ(fileID("Home/Desk/T.logicx", renamed), bundleInode);

    fs::rename("Home", "House");
    ASSERT_TRUE(waitFor("House", renamed));
    EXPECT_EQ(fileID("Home", renamed), inode);
    EXPECT_EQ(fileID("House", renamed), inode);
    EXPECT_TRUE(isFollowed("House/Desk/T.logicx"));
}

} // namespace Stemhaven
