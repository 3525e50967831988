#include "platform/ShellQuoting.h"

#include <QProcess>

#include <gtest/gtest.h>

TEST(ShellQuotingTest, TheShellSeesTheTextItself) {
    const QString texts[] = {
        QStringLiteral("/Users/me/Music/A Song.logicx"),
        QStringLiteral("\"; rm -rf x; \""),
        QStringLiteral("$HOME ${HOME} $(id) `id`"),
        QStringLiteral("back\\slash \\\" \\$ \\\\"),
        QStringLiteral("'single' & | < > * ? [a] ~ # ! ; ( )"),
        QStringLiteral("two\nlines\tand a tab"),
        QStringLiteral("Größe 日本語 🎵"),
        QString()};
    for (const QString& text : texts) {
        QProcess shell;
        const QString command = QStringLiteral("printf '%s.' ") + Stemhaven::quotedForShell(text);
        shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        ASSERT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAll(), text.toUtf8() + '.');
    }
    EXPECT_EQ(Stemhaven::quotedForShell(texts[0]), QStringLiteral("\"/Users/me/Music/A Song.logicx\""));
}
