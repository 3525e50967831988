#include "app/errors/IOException.h"
#include "plist/PropertyList.h"
#include "project/ProjectInformation.h"
#include "project/RecoverableProject.h"
#include "support/DamagedBundle.h"
#include "support/FullDisk.h"
#include "support/LogCapture.h"

#include <QDir>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>

using namespace Stemhaven;

namespace {

bool hasHardLinks = true;

/// Those of a damaged bundle, by their paths in it.
const std::vector<std::string> repairedFiles = {
    "Alternatives/000/MetaData.plist", "Alternatives/000/ProjectData", "Resources/ProjectInformation.plist"};

std::string kept(const std::string& file) {
    return file + ".damaged";
}

/// Repairs the bundle in a process that ends after so many steps. False where the repair ended before.
bool isKilledAt(int step, const DamagedBundle& bundle) {
    constexpr int killed = 7;
    const pid_t child = fork();
    if (child == 0) {
        int steps = 0;
        isProjectRecoverable(bundle.path())->recover([&](const char*) {
            if (++steps == step)
                _exit(killed);
        });
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status) == killed;
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
        std::function<void(const DamagedBundle&)> damage;
        /// "restore ALTERNATIVE from BACKUP" and "inform ALTERNATIVE".
        const char* expected;
    };

    const std::string list = "/MetaData.plist", data = "/ProjectData", first = "Alternatives/000";
    const std::string backup = first + "/Project File Backups/";
    const std::string information = "Resources/ProjectInformation.plist";
    const Case cases[] = {
        {"whole, for all its newer backup", [&](auto& b) { b.snapshot(backup + "01", 900); }, ""},
        {"missing list", [&](auto& b) { b.remove(first + list); }, "restore 000 from 00"},
        {"newest backup of several",
         [&](auto& b) { b.file(first + data, "").snapshot(backup + "02", 70).snapshot(backup + "07", 60); },
         "restore 000 from 02"},
        {"equal times",
         [&](auto& b) { b.file(first + data, "").snapshot(backup + "01", 60).snapshot(backup + "02", 60); },
         "restore 000 from 01"},
        {"backups of no such number and incomplete ones",
         [&](auto& b) {
             b.file(first + data, "").snapshot(backup + "100", 900).snapshot(backup + "abc", 900);
             b.snapshot(backup + "03", 900).file(backup + "03" + data, "");
             b.snapshot(backup + "04", 900).link(backup + "04" + data, "/etc/passwd");
         },
         "restore 000 from 00"},
        {"no backup", [&](auto& b) { b.file(first + data, "").remove(backup + "00"); }, ""},
        {"another active alternative",
         [&](auto& b) {
             const std::string second = "Alternatives/002";
             b.inform(2).snapshot(second, 10).file(second + data, "");
             b.snapshot(second + "/Project File Backups/11", 5);
         },
         "restore 002 from 11"},
        {"no list", [&](auto& b) { b.file(information, "bplist00"); }, "inform 000"},
        {"a pipe", [&](auto& b) { mkfifo(b.remove(information).at(information).c_str(), 0600); },
         "inform 000"},
        {"newest alternative",
         [&](auto& b) {
             b.remove(information).snapshot("Alternatives/003", 200).snapshot("Alternatives/004", 200);
             b.snapshot("Alternatives/005", 900).file("Alternatives/005" + data, "");
             b.snapshot("Alternatives/1000", 900).snapshot("Alternatives/abc", 900);
             b.link("Alternatives/006", b.at("Alternatives/abc"));
         },
         "inform 003"},
        {"no alternative is whole",
         [&](auto& b) {
             b.remove(information).file(first + data, "");
             b.snapshot("Alternatives/001/Project File Backups/00", 900);
         },
         "restore 000 from 00 inform 000"},
        {"an empty folder", [](auto& b) { b.remove("").folder(""); }, "inform 000"},
        {"gone", [](auto& b) { b.remove(""); }, ""},
        {"more than may be read", [&](auto& b) { b.file(information, std::string((4 << 20) + 1, 'x')); },
         "throws"},
    };
    for (const auto& [name, damage, expected] : cases) {
        SCOPED_TRACE(name);
        const DamagedBundle bundle;
        damage(bundle);
        if (expected == std::string("throws")) {
            EXPECT_THROW(isProjectRecoverable(bundle.path()), IOException);
            continue;
        }
        const auto project = isProjectRecoverable(bundle.path());
        QStringList repairs;
        if (project && project->needsRestore())
            repairs += "restore " + project->alternativeName + " from " + project->backupName;
        if (project && project->needsInformation())
            repairs += "inform " + project->alternativeName;
        EXPECT_EQ(repairs.join(' ').toStdString(), expected);
        EXPECT_EQ(project.has_value(), *expected != 0);
    }
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
                hasHardLinks = links;
                isKilled = isKilledAt(step, bundle);
                hasHardLinks = true;

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
    other.remove("Resources/ProjectInformation.plist");
    for (const std::string name :
         {"Resources", "Alternatives", "Alternatives/000", "Alternatives/000/ProjectData",
          "Resources/ProjectInformation.plist", "Alternatives/000/MetaData.plist.damaged"}) {
        SCOPED_TRACE(name);
        const DamagedBundle bundle(DamagedBundle::EmptyData);
        auto project = isProjectRecoverable(bundle.path());
        project->projectInformationReadable = false;
        // A link to a whole file would not be replaced at all.
        bundle.remove("Resources/ProjectInformation.plist").link(name, other.at(name));
        if (name == repairedFiles[1])
            bundle.link(name, other.at("gone"));
        const auto before = other.everything();
        try {
            project->recover();
        } catch (const IOException&) {
            EXPECT_TRUE(bundle.has(name));
        }
        EXPECT_EQ(other.everything(), before);
    }
}

TEST(Recovery, failsWithAReasonAndLeavesWhatIsThere) {
    struct Case {
        const char* error;
        std::function<void(const DamagedBundle&)> obstruct;
        /// Which of the files are restored all the same.
        std::vector<std::string> restored;
        DamagedBundle::Damage damage = DamagedBundle::EmptyData;
    };

    const std::string list = "Alternatives/000/Project File Backups/00/MetaData.plist";
    const std::string data = "Alternatives/000/Project File Backups/00/ProjectData";
    const char* noList = "Could not recover project from backup! Backup MetaData not found!";
    const char* noData = "Could not recover project from backup! Backup ProjectData not found!";
    std::optional<FullDisk> full;
    const Case cases[] = {
        {noList, [&](auto& bundle) { bundle.remove(list); }, {}},
        {noList, [&](auto& bundle) { bundle.remove(""); }, {}},
        {noData, [&](auto& bundle) { bundle.remove(data); }, {repairedFiles[0]}},
        {noData, [&](auto& bundle) { bundle.remove(data); }, {}, DamagedBundle::EmptyList},
        {"Could not recover project from backup. ProjectData copy failed...",
         [&](auto& bundle) {
             bundle.file(data, std::string(100, 'x'));
             full.emplace(50);
         },
         {repairedFiles[0]}},
        {"Could not remove old, empty, or corrupt MetaData.plist! Recovery failed...",
         [&](auto& bundle) { bundle.remove(repairedFiles[0]).file(repairedFiles[0] + "/kept", ""); },
         {}},
    };
    for (const auto& [error, obstruct, restored, damage] : cases) {
        for (const bool links : {true, false}) {
            SCOPED_TRACE(testing::Message() << error << " links " << links);
            hasHardLinks = links;
            const DamagedBundle bundle(damage);
            auto project = isProjectRecoverable(bundle.path());
            ASSERT_TRUE(project);
            obstruct(bundle);
            auto expected = bundle.everything();
            for (const auto& file : restored) {
                expected[kept(file)] = expected[file];
                expected[file] = file.ends_with("plist") ? "list 50" : "data 50";
            }
            EXPECT_THAT([&] { project->recover(); }, testing::ThrowsMessage<Exception>(error));
            full.reset();
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
    EXPECT_FALSE(RecoverableProject(folder.path()).recover());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}
