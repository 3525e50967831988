#include "program/Profile.h"
#include "project/NoteFile.h"
#include "support/TestBundle.h"
#include "support/Waiting.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>

namespace {

void makeBundles(const Profile& profile, int count) {
    for (int i = 0; i < count; ++i)
        TestBundle().write(
            QString("%1/%2/Song %3.logicx").arg(profile.projects()).arg(i % 5).arg(i).toStdString());
}

const QString countSql = "SELECT count(*) FROM projects";

} // namespace

TEST(Program, AnswersTextualOptionsWithoutAProfile) {
    Profile profile;
    // What Qt takes out of the command line, once it has a display, is no mistake beside them.
    for (const QString others : {"", "-platform no-such-platform", "--platform=offscreen", "-style fusion"}) {
        const auto arguments = others.split(' ', Qt::SkipEmptyParts);
        EXPECT_EQ(profile.runToEnd(arguments + QStringList("--version")), 0);
        EXPECT_TRUE(profile.output().startsWith("Stemhaven ")) << profile.output().toStdString();
    }
    EXPECT_EQ(profile.runToEnd({"--help"}), 0);
    EXPECT_TRUE(profile.output().contains("--screenshot")) << profile.output().toStdString();
    EXPECT_TRUE(profile.log().isEmpty());
    EXPECT_NE(profile.runToEnd({"--no-such-option"}), 0);
    EXPECT_EQ(profile.runToEnd({"--screenshot", profile.picture(), "--size", "wide"}), 1);
    EXPECT_FALSE(QFile::exists(profile.mainDatabase()));
}

TEST(Program, FindsTheProjectsOfAFolderAndShowsThem) {
    Profile profile;
    makeBundles(profile, 40);
    profile.oweSearch();
    ASSERT_EQ(profile.runToEnd({"--screenshot", profile.picture(), "--size", "900x600"}), 0)
        << profile.output().toStdString();
    EXPECT_EQ(profile.rows(countSql), QStringList("40"));
    EXPECT_EQ(QImage(profile.picture()).size(), QSize(900, 600));
    const Stemhaven::ProjectDetails details(profile.projects() + "/3/Song 3.logicx");
    EXPECT_EQ(
        profile.rows("SELECT project_id FROM projects WHERE name='Song 3'"),
        QStringList(QString::number(Stemhaven::loadStemhavenPlistDetails(details).value().first)));
    EXPECT_FALSE(QFile::exists(profile.mainDatabase() + "-wal"));
}

TEST(Program, WritesItsPictureWholeOrLeavesWhatIsThere) {
    Profile profile;
    const QDir folder = QFileInfo(profile.picture()).dir();
    const auto path = [&](const QString& name) {
        return folder.filePath(name);
    };
    const auto contents = [&](const QString& name) {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    };
    // There is no room for a longer name beside it.
    const QString longName = QString(250, 'n') + ".png";
    for (const auto& name : {QString("no-format"), QString("a.txt"), QString("target.png"), longName}) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
    }
    ASSERT_TRUE(QFile::link(path("target.png"), path("link.png")));
    ASSERT_TRUE(folder.mkdir("folder.png"));
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe.png")).constData(), 0600), 0);

    const auto take = [&](const QString& name, const QString& size = "900x600") {
        return profile.runToEnd({"--screenshot", path(name), "--size", size});
    };
    for (const QString name : {"no-format", "a.txt"}) {
        EXPECT_EQ(take(name), 1);
        EXPECT_TRUE(profile.output().contains("--screenshot wants")) << profile.output().toStdString();
        EXPECT_EQ(contents(name), "old");
    }
    for (const QString size : {"8193x10", "10x60000", "99999999999x10", "-1x-1"})
        EXPECT_EQ(take("a.png", size), 1) << size.toStdString();
    EXPECT_FALSE(QFile::exists(profile.mainDatabase()));
    for (const QString& name :
         {longName, QString("folder.png"), QString("pipe.png"), QString("none/a.png")}) {
        EXPECT_EQ(take(name), 1) << name.toStdString();
        EXPECT_TRUE(profile.output().contains("Could not write the picture")) << name.toStdString();
    }
    EXPECT_EQ(contents(longName), "old");
    EXPECT_FALSE(QFile::exists("/a.png"));

    EXPECT_EQ(take("link.png"), 0) << profile.output().toStdString();
    EXPECT_EQ(contents("target.png"), "old");
    EXPECT_FALSE(QFileInfo(path("link.png")).isSymLink());
    EXPECT_EQ(QImage(path("link.png")).size(), QSize(900, 600));
}

TEST(Program, EndsOnASignalAndTakesUpTheSearchThatItWasKilledIn) {
    Profile profile;
    makeBundles(profile, 400);
    profile.oweSearch();
    const auto someAreRecorded = [&] {
        return profile.rows(countSql).value(0).toInt() > 20;
    };

    profile.start();
    ASSERT_TRUE(waitUntil(someAreRecorded));
    profile.rows("UPDATE projects SET star_rating=5 WHERE project_id<=20");
    profile.kill();
    EXPECT_TRUE(profile.searchIsOwed());

    const auto added = [&] {
        return profile.log().count("New project successfully added");
    };
    const auto addedBefore = added();
    profile.start();
    ASSERT_TRUE(waitUntil([&] { return added() > addedBefore; }));
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();

    ASSERT_EQ(profile.runToEnd({"--screenshot", profile.picture()}), 0) << profile.output().toStdString();
    EXPECT_EQ(
        profile.rows("SELECT count(*), count(DISTINCT filepath || filename) FROM projects"),
        QStringList("400|400"));
    EXPECT_EQ(profile.rows("SELECT count(*) FROM projects WHERE star_rating=5"), QStringList("20"));

    profile.start();
    EXPECT_TRUE(waitUntil([&] { return !profile.searchIsOwed(); }));
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
}

TEST(Program, BeginsWithTheWizardUntilItIsCompletedButNotForAPicture) {
    Profile profile;
    profile.setCompletedWizard(false);
    ASSERT_EQ(profile.runToEnd({"--screenshot", profile.picture()}), 0) << profile.output().toStdString();
    EXPECT_FALSE(profile.log().contains("Opening the setup wizard...")) << profile.log().toStdString();

    const auto windows = profile.log().count("Restoring window state...");
    profile.start();
    EXPECT_EQ(profile.log().count("Opening the setup wizard..."), 1);
    EXPECT_EQ(profile.runToEnd({}), 0) << profile.output().toStdString();
    EXPECT_EQ(profile.log().count("Bringing the window forward"), 1);
    EXPECT_EQ(profile.terminate(), 1) << profile.output().toStdString();
    EXPECT_EQ(profile.log().count("Restoring window state..."), windows);
}

TEST(Program, MakesAProfileForItsUserAloneAndBringsItsWindowForwardForASecondStart) {
    Profile profile;
    const QString folder = QFileInfo(profile.lockFile()).path();
    ASSERT_TRUE(QDir().rmdir(folder));
    profile.start();
    const auto openFiles = [&] {
        QStringList open;
        QDirIterator files(folder, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        for (QString path = folder; !path.isEmpty(); path = files.hasNext() ? files.next() : QString()) {
            struct stat status = {};
            if (stat(QFile::encodeName(path).constData(), &status) != 0 || (status.st_mode & 077U) != 0)
                open.append(path);
        }
        return open;
    };
    EXPECT_EQ(openFiles(), QStringList());
    EXPECT_EQ(profile.runToEnd({}), 0) << profile.output().toStdString();
    EXPECT_TRUE(profile.output().isEmpty()) << profile.output().toStdString();
    EXPECT_EQ(profile.log().count("Bringing the window forward"), 1);
    EXPECT_EQ(profile.log().count("Restoring window state..."), 1);

    // A picture is nothing that the first one could make.
    const std::pair<const char*, const char*> languages[] = {
        {"de", "Stemhaven läuft bereits."},
        {"tr:de", "Stemhaven läuft bereits."},
        {"ja", "Stemhaven is already running."},
        {"en", "Stemhaven is already running."}};
    for (const auto& [language, text] : languages) {
        profile.setLanguage(language);
        EXPECT_EQ(profile.runToEnd({"--screenshot", profile.picture()}), 1);
        EXPECT_TRUE(profile.output().contains(text)) << language << ": " << profile.output().toStdString();
    }

    ASSERT_EQ(::kill(static_cast<pid_t>(profile.processId()), SIGSTOP), 0);
    EXPECT_EQ(profile.runToEnd({}), 1);
    EXPECT_TRUE(profile.output().contains("Stemhaven is already running.")) << profile.output().toStdString();
    ASSERT_EQ(::kill(static_cast<pid_t>(profile.processId()), SIGCONT), 0);

    EXPECT_TRUE(profile.isRunning());
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();

    // As an earlier version left it.
    ASSERT_EQ(chmod(QFile::encodeName(folder).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(profile.mainDatabase()).constData(), 0644), 0);
    for (int start = 0; start < 2; ++start)
        EXPECT_EQ(profile.runToEnd({"--screenshot", profile.picture()}), 0);
    EXPECT_EQ(openFiles(), QStringList());
    EXPECT_EQ(profile.log().count("Others could look into the folder"), 1);
}

TEST(DemoLibrary, IsReadableToItsLastProject) {
    Profile first;
    ASSERT_EQ(first.runToEnd({"--projects", "80", "--catalogue", first.projects()}, DEMO_LIBRARY), 0)
        << first.output().toStdString();
    EXPECT_EQ(first.rows("SELECT count(*) FROM projects"), QStringList("80"));
    ASSERT_EQ(first.runToEnd({"--screenshot", first.picture()}), 0) << first.output().toStdString();

    Profile second;
    ASSERT_EQ(second.runToEnd({"--projects", "80", second.projects()}, DEMO_LIBRARY), 0);
    second.oweSearch();
    ASSERT_EQ(second.runToEnd({"--screenshot", second.picture()}), 0);
    EXPECT_EQ(second.rows("SELECT count(*) FROM projects"), QStringList("80"));
}
