#include "plist/PropertyList.h"
#include "project/ProjectInformation.h"
#include "project/RecoverableProject.h"
#include "support/DamagedBundle.h"
#include "support/LogCapture.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace Stemhaven;

namespace {

bool hasHardLinks = true;

/// Those of a damaged bundle, by their paths in it.
const std::vector<std::string> repairedFiles = {
    "Alternatives/000/MetaData.plist", "Alternatives/000/ProjectData", "Resources/ProjectInformation.plist"};

/// From now on no file can grow further, as on a full disk.
void limitFiles(rlim_t size) {
    signal(SIGXFSZ, SIG_IGN);
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = size;
    setrlimit(RLIMIT_FSIZE, &limit);
}

std::string kept(const std::string& file) {
    return file + ".damaged";
}

} // namespace

/// Stands in for the system's, so that a file system without hard links can be had.
extern "C" int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    if (!hasHardLinks) {
        errno = EPERM;
        return -1;
    }
    static const auto real = reinterpret_cast<decltype(&linkat)>(dlsym(RTLD_NEXT, "linkat"));
    return real(fromFolder, from, toFolder, to, flags);
}

TEST(Recovery, tellsWhatIsDamagedAndWhatHelps) {
    // Each starts with a whole bundle that has an older backup 00.
    struct Case {
        const char* name;
        std::function<void(DamagedBundle&)> damage;
        /// "restore ALTERNATIVE from BACKUP" and "inform ALTERNATIVE".
        const char* expected;
    };

    const std::string data = "Alternatives/000/ProjectData";
    const std::string information = "Resources/ProjectInformation.plist";
    const auto backup = [](const std::string& name) {
        return "Alternatives/000/Project File Backups/" + name;
    };
    const Case cases[] = {
        {"whole", [](auto&) {}, ""},
        {"newer backup", [&](auto& bundle) { bundle.snapshot(backup("01"), 900); }, ""},
        {"empty data", [&](auto& bundle) { bundle.file(data, ""); }, "restore 000 from 00"},
        {"missing list", [&](auto& bundle) { bundle.remove("Alternatives/000/MetaData.plist"); },
         "restore 000 from 00"},
        {"newest of several",
         [&](auto& bundle) {
             bundle.file(data, "");
             bundle.snapshot(backup("02"), 40);
             bundle.snapshot(backup("07"), 70);
             bundle.snapshot(backup("09"), 60);
         },
         "restore 000 from 07"},
        {"equal times",
         [&](auto& bundle) {
             bundle.file(data, "");
             bundle.snapshot(backup("01"), 60);
             bundle.snapshot(backup("02"), 60);
         },
         "restore 000 from 01"},
        {"backups that are none",
         [&](auto& bundle) {
             bundle.file(data, "");
             for (const char* name : {"100", "abc", "-1"})
                 bundle.snapshot(backup(name), 900);
             bundle.snapshot(backup("03"), 900);
             bundle.file(backup("03") + "/ProjectData", "");
             bundle.snapshot(backup("04"), 900);
             bundle.remove(backup("04") + "/ProjectData");
             bundle.link(backup("04") + "/ProjectData", "/etc/passwd");
             bundle.link(backup("05"), bundle.at(backup("00")));
         },
         "restore 000 from 00"},
        {"no backup",
         [&](auto& bundle) {
             bundle.file(data, "");
             bundle.remove(backup("00"));
         },
         ""},
        {"another active alternative",
         [&](auto& bundle) {
             bundle.inform(2);
             bundle.snapshot("Alternatives/002", 10);
             bundle.file("Alternatives/002/ProjectData", "");
             bundle.snapshot("Alternatives/002/Project File Backups/11", 5);
         },
         "restore 002 from 11"},
        {"no information", [&](auto& bundle) { bundle.remove(information); }, "inform 000"},
        {"no list", [&](auto& bundle) { bundle.file(information, "bplist00"); }, "inform 000"},
        {"empty list", [&](auto& bundle) { bundle.file(information, ""); }, "inform 000"},
        {"a pipe",
         [&](auto& bundle) {
             bundle.remove(information);
             mkfifo(bundle.at(information).c_str(), 0600);
         },
         "inform 000"},
        {"the newest alternative",
         [&](auto& bundle) {
             bundle.remove(information);
             bundle.snapshot("Alternatives/003", 200);
             bundle.snapshot("Alternatives/004", 200);
             bundle.snapshot("Alternatives/005", 900);
             bundle.file("Alternatives/005/ProjectData", "");
             for (const char* name : {"1000", "abc"})
                 bundle.snapshot(std::string("Alternatives/") + name, 900);
             bundle.link("Alternatives/006", bundle.at("Alternatives/abc"));
         },
         "inform 003"},
        {"a backup newer than the newest alternative",
         [&](auto& bundle) {
             bundle.remove(information);
             bundle.snapshot(backup("01"), 900);
         },
         "inform 000"},
        {"no alternative is whole",
         [&](auto& bundle) {
             bundle.remove(information);
             bundle.file(data, "");
             bundle.snapshot("Alternatives/001/Project File Backups/00", 900);
         },
         "restore 000 from 00 inform 000"},
        {"an empty folder",
         [&](auto& bundle) {
             bundle.remove("");
             bundle.folder("");
         },
         "inform 000"},
        {"a file",
         [&](auto& bundle) {
             bundle.remove("");
             bundle.file("", "text");
         },
         ""},
        {"gone", [&](auto& bundle) { bundle.remove(""); }, ""},
    };
    for (const auto& [name, damage, expected] : cases) {
        SCOPED_TRACE(name);
        DamagedBundle bundle;
        damage(bundle);
        const auto project = isProjectRecoverable(bundle.path());
        QStringList repairs;
        if (project && project->needsRestore())
            repairs += "restore " + project->alternativeName + " from " + project->backupName;
        if (project && project->needsInformation())
            repairs += "inform " + project->alternativeName;
        EXPECT_EQ(repairs.join(' '), expected);
        EXPECT_EQ(project.has_value(), *expected != 0);
    }
}

TEST(Recovery, takesWhatItMayNotReadForNoDamage) {
    DamagedBundle bundle;
    bundle.file("Resources/ProjectInformation.plist", std::string((4 << 20) + 1, 'x'));
    EXPECT_THROW(isProjectRecoverable(bundle.path()), IOException);
}

TEST(Recovery, copiesTheBackupAndSaysSo) {
    const DamagedBundle bundle(DamagedBundle::EmptyData);
    const QString alternative = bundle.path() + "/Alternatives/000";
    chmod(bundle.at("Alternatives/000/ProjectData").c_str(), 0640);
    const auto project = isProjectRecoverable(bundle.path());
    ASSERT_TRUE(project);
    const LogCapture logged;
    EXPECT_TRUE(project->recover());
    const auto quoted = [](const QString& path) {
        return " \"" + path + '"';
    };
    EXPECT_EQ(
        logged.messages(),
        (QStringList{
            "D: Beginning project recovery for: " + quoted(bundle.path()),
            "I: Restoring project data from backup: " + quoted(bundle.path()),
            "I: \tAlternative: " + quoted(alternative),
            "I: \tAuto-Backup: " + quoted(alternative + "/Project File Backups/00"),
            "I: Old MetaData.plist found which may be corrupt, empty, or mismatched with ProjectData. "
            "Deleted. Replacing...",
            "I: Metadata successfully restored from backup:" + quoted(alternative + "/MetaData.plist"),
            "I: Old ProjectData found which may be corrupt, empty, or mismatched with MetaData. Deleted. "
            "Replacing...",
            "I: ProjectData successfully restored from backup:" + quoted(alternative + "/ProjectData"),
        }));
    struct stat status = {};
    EXPECT_EQ(lstat(bundle.at("Alternatives/000/ProjectData").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST(Recovery, writesTheInformationAnew) {
    DamagedBundle bundle(DamagedBundle::NoInformation);
    bundle.remove("Resources");
    bundle.snapshot("Alternatives/003", 900);
    const auto project = isProjectRecoverable(bundle.path());
    ASSERT_TRUE(project);
    EXPECT_TRUE(project->recover());
    std::vector<char> expected;
    Plist::writePlistBinary(
        expected,
        Plist::Dictionary{
            {"StemhavenNote",
             std::string("Genereted by Stemhaven to recover project. Warning: Values are based on "
                         "observations and are not guarenteed correct.")},
            {"ActiveVariant", std::int64_t{3}},
            {"HasProjectFolder", false},
            {"LastSavedFrom", std::string("Logic Pro X 10.8 (5895)")},
            {"BundleVersion", std::int64_t{2}},
            {"VariantNames", Plist::Dictionary{{"0", std::string("Song")}, {"3", std::string("Song-3")}}},
            {"VariantNamesV2",
             Plist::Dictionary{
                 {"0", std::string("{PROJECT_NAME}")}, {"3", std::string("{PROJECT_NAME}-3")}}}});
    EXPECT_EQ(
        bundle.contents("Resources/ProjectInformation.plist"), std::string(expected.begin(), expected.end()));
    EXPECT_EQ(ProjectInformation(informationPath(bundle.path())).getActiveAlternativeDir(), "003");
    EXPECT_FALSE(isProjectRecoverable(bundle.path()));
}

TEST(Recovery, leavesOldOrNewWhereverItIsKilled) {
    for (const bool links : {true, false}) {
        for (const auto damage : DamagedBundle::all) {
            const DamagedBundle repaired(damage);
            isProjectRecoverable(repaired.path())->recover();
            bool isKilled = true;
            for (int step = 1; isKilled; ++step) {
                SCOPED_TRACE(
                    testing::Message() << "damage " << damage << ", step " << step << ", links " << links);
                const DamagedBundle bundle(damage);
                std::map<std::string, std::string> old;
                for (const auto& file : repairedFiles)
                    old[file] = bundle.contents(file);
                const pid_t child = fork();
                if (child == 0) {
                    hasHardLinks = links;
                    int steps = 0;
                    isProjectRecoverable(bundle.path())->recover([&](const char*) {
                        if (++steps == step)
                            _exit(7);
                    });
                    _exit(0);
                }
                int status = 0;
                waitpid(child, &status, 0);
                isKilled = WEXITSTATUS(status) == 7;

                bool isNew = true;
                for (const auto& file : repairedFiles) {
                    const std::string now = bundle.contents(file);
                    isNew = isNew && now == repaired.contents(file);
                    // Without hard links a file has only its other name for a moment.
                    const bool isKept = !links && now.empty() && bundle.contents(kept(file)) == old[file];
                    EXPECT_TRUE(now == old[file] || now == repaired.contents(file) || isKept) << file;
                    if (isKilled && now != old[file] && !old[file].empty()) {
                        EXPECT_TRUE(bundle.contents(kept(file)) == old[file] || isNew) << file;
                    }
                }
                const auto again = isProjectRecoverable(bundle.path());
                EXPECT_EQ(again.has_value(), !isNew);
                if (again) {
                    EXPECT_TRUE(again->recover());
                }
                for (const auto& file : repairedFiles) {
                    EXPECT_EQ(bundle.contents(file), repaired.contents(file)) << file;
                    if (again || !isKilled) {
                        EXPECT_FALSE(bundle.has(kept(file))) << file;
                    }
                }
                EXPECT_FALSE(isProjectRecoverable(bundle.path()));
            }
        }
    }
}

TEST(Recovery, keepsWhatAnEarlierRepairSetAside) {
    const DamagedBundle bundle(DamagedBundle::EmptyData);
    const std::string list = repairedFiles[0];
    bundle.file(kept(list), "older");
    isProjectRecoverable(bundle.path())->recover([&](const char* step) {
        if (step == std::string("in place")) {
            EXPECT_EQ(bundle.contents(kept(list)), "older");
            EXPECT_EQ(bundle.contents(kept(list) + "-2"), "list 100");
        }
    });
    EXPECT_FALSE(bundle.has(kept(list)));
    EXPECT_FALSE(bundle.has(kept(list) + "-2"));
}

TEST(Recovery, followsNoLinkInsideABundle) {
    const DamagedBundle other;
    const std::string otherData = other.at("Alternatives/000/ProjectData");
    const std::pair<const char*, std::function<void(const DamagedBundle&)>> cases[] = {
        {"resources",
         [&](const DamagedBundle& bundle) {
             bundle.remove("Resources");
             other.remove("Resources/ProjectInformation.plist");
             bundle.link("Resources", other.at("Resources"));
         }},
        {"alternative",
         [&](const DamagedBundle& bundle) {
             bundle.remove("Alternatives/000");
             bundle.link("Alternatives/000", other.at("Alternatives/000"));
         }},
        {"alternatives",
         [&](const DamagedBundle& bundle) {
             bundle.remove("Alternatives");
             bundle.link("Alternatives", other.at("Alternatives"));
         }},
        {"file",
         [&](const DamagedBundle& bundle) {
             bundle.remove("Resources/ProjectInformation.plist");
             bundle.link("Resources/ProjectInformation.plist", otherData);
             bundle.remove("Alternatives/000/ProjectData");
             bundle.link("Alternatives/000/ProjectData", otherData + ".gone");
         }},
        {"damaged file",
         [&](const DamagedBundle& bundle) {
             bundle.link("Alternatives/000/MetaData.plist.damaged", otherData);
         }},
    };
    for (const auto& [name, link] : cases) {
        SCOPED_TRACE(name);
        const DamagedBundle bundle(DamagedBundle::EmptyData);
        auto project = isProjectRecoverable(bundle.path());
        project->projectInformationReadable = false;
        link(bundle);
        const auto before = other.everything();
        try {
            project->recover();
        } catch (const IOException&) {
            EXPECT_NE(name, std::string("file"));
        }
        EXPECT_EQ(other.everything(), before);
    }
}

TEST(Recovery, failsWithAReasonAndLeavesWhatIsThere) {
    struct Case {
        const char* name;
        DamagedBundle::Damage damage;
        std::function<void(const DamagedBundle&, RecoverableProject&)> obstruct;
        const char* error;
        /// Which of the files are restored all the same.
        std::vector<std::string> restored;
    };

    const std::string backup = "Alternatives/000/Project File Backups/00";
    const Case cases[] = {
        {"no list in the backup",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto&) { bundle.remove(backup + "/MetaData.plist"); },
         "Could not recover project from backup! Backup MetaData not found!",
         {}},
        {"no data in the backup",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto&) { bundle.remove(backup + "/ProjectData"); },
         "Could not recover project from backup! Backup ProjectData not found!",
         {repairedFiles[0]}},
        {"no data in the backup for a list",
         DamagedBundle::EmptyList,
         [&](auto& bundle, auto&) { bundle.remove(backup + "/ProjectData"); },
         "Could not recover project from backup! Backup ProjectData not found!",
         {}},
        {"no room for the data",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto&) {
             bundle.file(backup + "/ProjectData", std::string(100, 'x'));
             limitFiles(50);
         },
         "Could not recover project from backup. ProjectData copy failed...",
         {repairedFiles[0]}},
        {"gone",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto&) { bundle.remove(""); },
         "Could not recover project from backup! Backup MetaData not found!",
         {}},
        {"a folder in the list's place",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto&) {
             bundle.remove(repairedFiles[0]);
             bundle.file(repairedFiles[0] + "/kept", "kept");
         },
         "Could not remove old, empty, or corrupt MetaData.plist! Recovery failed...",
         {}},
        {"a folder in the data's place",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto&) {
             bundle.remove(repairedFiles[1]);
             bundle.file(repairedFiles[1] + "/kept", "kept");
         },
         "Could not remove old, empty, or corrupt ProjectData! Recovery failed...",
         {repairedFiles[0]}},
        {"no number",
         DamagedBundle::EmptyData,
         [&](auto& bundle, auto& project) {
             bundle.rename("Alternatives/000", "Alternatives/abc");
             bundle.remove("Resources/ProjectInformation.plist");
             project.alternativeName = "abc";
             project.projectInformationReadable = false;
         },
         "Could not recover project from backup. Invalid alternative name.",
         {"Alternatives/abc/MetaData.plist", "Alternatives/abc/ProjectData"}},
    };
    for (const auto& [name, damage, obstruct, error, restored] : cases) {
        for (const bool links : {true, false}) {
            SCOPED_TRACE(testing::Message() << name << ", links " << links);
            hasHardLinks = links;
            const DamagedBundle bundle(damage);
            auto project = isProjectRecoverable(bundle.path());
            ASSERT_TRUE(project);
            obstruct(bundle, *project);
            auto expected = bundle.everything();
            for (const auto& file : restored) {
                const bool isList = file.ends_with("plist");
                if (!expected[file].empty())
                    expected[kept(file)] = expected[file];
                else if (expected.count(file) != 0)
                    expected[kept(file)] = "";
                expected[file] = isList ? "list 50" : "data 50";
            }
            EXPECT_THAT([&] { project->recover(); }, testing::ThrowsMessage<Exception>(error));
            limitFiles(RLIM_INFINITY);
            EXPECT_EQ(bundle.everything(), expected);
        }
    }
    hasHardLinks = true;
}

TEST(Recovery, leavesWhatHasBecomeWholeMeanwhile) {
    for (const auto damage : DamagedBundle::all) {
        SCOPED_TRACE(damage);
        const DamagedBundle bundle(damage);
        const auto project = isProjectRecoverable(bundle.path());
        bundle.snapshot("Alternatives/000", 999);
        bundle.inform(0);
        const auto before = bundle.everything();
        EXPECT_TRUE(project->recover());
        EXPECT_EQ(bundle.everything(), before);
    }
}

TEST(Recovery, takesNoPathOutsideABundle) {
    const QTemporaryDir folder;
    const LogCapture logged;
    RecoverableProject project(folder.path());
    EXPECT_FALSE(project.recover());
    EXPECT_EQ(
        logged.messages(),
        QStringList("W: Attempted to recover project with unsupported extension:  \"" + folder.path() + '"'));
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}
