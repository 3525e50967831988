#include "platform/FileManager.h"
#include "support/FakeCommand.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

TEST(MacFileManagerTest, RunsTheSystemsCommand) {
    const QString bundle = QStringLiteral("/music/Old \"new\" $HOME `id` \\ 'x' ä.logicx");
    const QString contents = bundle + QStringLiteral("/Alternatives/");
    {
        const FakeCommand open(QStringLiteral("open"));
        EXPECT_EQ(Stemhaven::openProject(bundle), 0);
        EXPECT_EQ(open.takeArguments(), QStringList{bundle});
        EXPECT_EQ(Stemhaven::revealInFileManager(contents), 0);
        EXPECT_EQ(open.takeArguments(), (QStringList{QStringLiteral("-R"), contents}));
    }
    const FakeCommand open(QStringLiteral("open"), 3);
    EXPECT_EQ(WEXITSTATUS(Stemhaven::openProject(bundle)), 3);
}
