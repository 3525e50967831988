#include "platform/FileManager.h"
#include "platform/ShellQuoting.h"
#include "support/FakeCommand.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

TEST(MacFileManagerTest, RunsTheSystemsCommandWithThePathAsItIs) {
    const QString ordinary = QStringLiteral("/Users/me/Music/A Song.logicx");
    EXPECT_EQ(Stemhaven::quotedForShell(ordinary), QStringLiteral("\"/Users/me/Music/A Song.logicx\""));

    const QString paths[] = {
        ordinary,
        QStringLiteral("\"; rm -rf x; \""),
        QStringLiteral("$HOME ${HOME} $(id) `id`"),
        QStringLiteral("back\\slash \\\" \\$ \\\\"),
        QStringLiteral("'single' & | < > * ? [a] ~ # ! ; ( )"),
        QStringLiteral("two\nlines\tand a tab"),
        QStringLiteral("Größe 日本語 🎵"),
        QString()};
    for (const QString& path : paths) {
        SCOPED_TRACE(path.toStdString());
        const FakeCommand open(QStringLiteral("open"));
        EXPECT_EQ(Stemhaven::openProject(path), 0);
        EXPECT_EQ(open.takeArguments(), QStringList{path});
        EXPECT_EQ(Stemhaven::revealInFileManager(path), 0);
        EXPECT_EQ(open.takeArguments(), (QStringList{QStringLiteral("-R"), path}));
    }
    const FakeCommand open(QStringLiteral("open"), 3);
    EXPECT_EQ(WEXITSTATUS(Stemhaven::openProject(ordinary)), 3);
}
