#include "program/Profile.h"
#include "project/RecoverySearch.h"
#include "support/DamagedBundle.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

using Damage = DamagedBundle::Damage;

class Recover : public testing::Test {
protected:
    DamagedBundle add(const std::string& name, Damage damage) const {
        return DamagedBundle(
            std::filesystem::path(profile.projects().toStdString()) / (name + ".logicx"), damage);
    }

    qsizetype damaged() const { return Stemhaven::findRecoverableProjects({profile.projects()}).size(); }

    int run(const QStringList& arguments) { return profile.runToEnd(QStringList("--recover") + arguments); }

    bool says(const char* text) const { return profile.output().contains(text); }

    Profile profile;
};

} // namespace

TEST_F(Recover, LooksAndRepairsFromATerminalWhileTheProgramDoesNotRun) {
    EXPECT_EQ(run({"--yes"}), 1) << "before the first start there are no watched folders";
    EXPECT_TRUE(says("could not be read: no such file")) << profile.output().toStdString();
    profile.oweSearch();
    const auto escaping = add("A\x1b[2J", Damage::All);
    const auto before = escaping.everything();
    add("B", Damage::NoData);

    EXPECT_EQ(run({"--dry-run", "--yes"}), 0) << profile.output().toStdString();
    EXPECT_TRUE(
        says("Found 2 recoverable projects!") && says("A\\u001B[2J.logicx\": restore alternative 000"))
        << profile.output().toStdString();
    EXPECT_FALSE(says("\x1b"));
    EXPECT_EQ(run({}), 1) << "nobody to ask";
    EXPECT_TRUE(says("Give --yes")) << profile.output().toStdString();
    EXPECT_EQ(profile.runToEnd({"--import-backup", profile.picture(), "--yes", "--dry-run"}), 1);
    EXPECT_TRUE(says("--dry-run is for --recover"));
    EXPECT_EQ(run({"--export-backup=" + profile.projects()}), 1) << "two commands";
    profile.start();
    EXPECT_EQ(run({"--yes"}), 1);
    EXPECT_TRUE(says("already running")) << profile.output().toStdString();
    EXPECT_EQ(profile.terminate(), 0);
    EXPECT_EQ(escaping.everything(), before);

    const auto hopeless = add("C", Damage::NoData);
    hopeless.folder("Alternatives/000/ProjectData");
    EXPECT_EQ(run({"--yes"}), 1) << "one of them fails";
    EXPECT_TRUE(says("Stemhaven recovered 2 project(s)!")) << profile.output().toStdString();
    hopeless.remove("");
    EXPECT_EQ(damaged(), 0);
    EXPECT_EQ(run({"--yes"}), 0) << profile.output().toStdString();
}

TEST_F(Recover, LooksIntoTheFoldersFromBeforeAnImportThatWasInterrupted) {
    profile.oweSearch();
    add("A", Damage::NoData);
    const QString live = profile.rootPathsDatabase();
    ASSERT_TRUE(QFile::rename(live, live + ".last"));
    QFile journal(QFileInfo(live).path() + "/stemhaven-import.journal");
    ASSERT_TRUE(journal.open(QIODevice::WriteOnly));
    journal.write("{}");
    journal.close();
    EXPECT_EQ(run({"--dry-run"}), 1) << "changes nothing";
    EXPECT_TRUE(journal.exists());
    EXPECT_EQ(run({"--yes"}), 0) << profile.output().toStdString();
    EXPECT_TRUE(says("Stemhaven recovered 1 project(s)!"));
    EXPECT_FALSE(journal.exists());
}

TEST_F(Recover, ASignalEndsItBetweenTwoProjects) {
    constexpr int count = 240;
    profile.oweSearch();
    for (int i = 0; i < count; ++i)
        add(std::to_string(i) + std::string(240, 'x'), Damage::NoData);
    // More lines are to come than a pipe holds, so it cannot be done before the signal.
    const QString script =
        "mkfifo \"$1\"; \"$0\" --recover --yes > \"$1\" 2>&1 & program=$!; exec 3< \"$1\"; "
        "while read -r line <&3; do case $line in 'Recovered 1/'*) break;; esac; done; "
        "kill -TERM $program; cat <&3; wait $program";
    EXPECT_EQ(profile.runToEnd({"-c", script, PROGRAM, profile.picture()}, "/bin/sh"), 1);
    EXPECT_TRUE(says("Stopped.\n")) << profile.output().toStdString();
    const auto recovered = count - damaged();
    EXPECT_GE(recovered, 1);
    EXPECT_TRUE(profile.output().contains(QString("Stemhaven recovered %1 project(s)!").arg(recovered)))
        << profile.output().toStdString();
}
