#include "platform/FileManager.h"
#include "support/FakeCommand.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

TEST(MacFileManagerTest, RunsTheSystemsCommandWithThePathAsItIs) {
    const QString ordinary = "/Users/me/Music/A Song.logicx";
    const QString paths[] = {
        ordinary, "\"; rm -rf x; \"", "$HOME ${HOME} $(id) `id`", "back\\slash \\\" \\$ \\\\",
        "'single' & | < > * ? [a] ~ # ! ; ( )\n\tGröße 日本語 🎵"};
    for (const QString& path : paths) {
        SCOPED_TRACE(path.toStdString());
        const FakeCommand open("open");
        EXPECT_EQ(Stemhaven::openProject(path), 0);
        EXPECT_EQ(open.takeArguments(), QStringList{path});
        EXPECT_EQ(Stemhaven::revealInFileManager(path), 0);
        EXPECT_EQ(open.takeArguments(), (QStringList{"-R", path}));
    }
    const FakeCommand open("open", 3);
    EXPECT_EQ(WEXITSTATUS(Stemhaven::openProject(ordinary)), 3);
}
