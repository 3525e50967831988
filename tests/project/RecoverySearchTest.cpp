#include "project/RecoverySearch.h"

#include "project/RecoveryRun.h"
#include "support/DamagedBundle.h"
#include "support/LogCapture.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

using namespace Stemhaven;
using Damage = DamagedBundle::Damage;

namespace {

/// A folder of bundles.
struct Library {
    const DamagedBundle& add(const std::string& path, Damage damage) {
        bundles.push_back(std::make_unique<DamagedBundle>(top / path, damage));
        return *bundles.back();
    }

    std::vector<std::map<std::string, std::string>> everything() const {
        std::vector<std::map<std::string, std::string>> files;
        for (const auto& bundle : bundles)
            files.push_back(bundle->everything());
        return files;
    }

    QTemporaryDir folder;
    std::filesystem::path top = folder.path().toStdString();
    std::vector<std::unique_ptr<DamagedBundle>> bundles;
};

/// The exit status of body in a process that has no special rights.
int asAnyone(const std::function<bool()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && seteuid(65534) != 0)
            _exit(2);
        _exit(body() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

} // namespace

TEST(RecoverySearch, findsWhatIsDamagedOnceAndSaysHowFarItIs) {
    Library library;
    library.add("Whole.logicx", Damage::None);
    library.add("a/No data.logicx", Damage::NoData);
    library.add("a/b/No information.logicx", Damage::NoInformation);
    library.add("a/b/._Hidden.logicx", Damage::NoInformation);
    library.add("a/No data.logicx/Media/Inner.logicx", Damage::NoInformation);
    library.bundles[1]->link("../Linked.logicx", library.bundles[1]->at(""));
    QList<std::pair<int, int>> reports;
    RecoverySearch search;
    search.progressed = [&](RecoverySearch::Progress progress) {
        reports.append({progress.bundlesLookedAt, progress.projectsFound});
    };
    const auto result =
        search.find({library.folder.path(), library.folder.filePath("a"), library.folder.filePath("gone")});
    QStringList found;
    for (const auto& project : result.projects)
        found += project.getPath();
    found.sort();
    EXPECT_EQ(found, QStringList({library.bundles[1]->path(), library.bundles[2]->path()}));
    EXPECT_EQ(result.unreadable, QStringList(library.folder.filePath("gone")));
    EXPECT_FALSE(result.isStopped);
    ASSERT_FALSE(reports.isEmpty());
    EXPECT_EQ(reports.last(), std::pair(5, 2));

    int asked = 0;
    search.isStopped = [&] {
        return ++asked > 2;
    };
    EXPECT_TRUE(search.find({library.folder.path()}).isStopped);
}

TEST(RecoveryRun, repairsManyAndStopsAtNoFailure) {
    Library library;
    // Every 50th cannot be repaired.
    constexpr int count = 500;
    for (int i = 0; i < count; ++i) {
        const auto damage = DamagedBundle::all[static_cast<std::size_t>(i) % std::size(DamagedBundle::all)];
        const auto& bundle = library.add(std::to_string(i) + ".logicx", damage);
        if (i % 50 == 0) {
            bundle.inform(0);
            bundle.remove("Alternatives/000/ProjectData");
            bundle.folder("Alternatives/000/ProjectData");
        }
    }
    library.add("Whole.logicx", Damage::None);
    const LogCapture logged;
    RecoveryRun run;
    run.isConfirmed = true;
    QStringList printed;
    run.printed = [&](const QString& line) {
        printed += line;
    };
    const auto report = run.run({library.folder.path()});
    EXPECT_EQ(printed, report.lines);
    EXPECT_EQ(report.looked, count + 1);
    EXPECT_EQ(report.found, count);
    EXPECT_EQ(report.failed, 10);
    EXPECT_EQ(report.recovered, count - 10);
    EXPECT_FALSE(report.isWell());
    EXPECT_EQ(report.lines.last(), "Stemhaven recovered 490 project(s)!");
    EXPECT_EQ(logged.count("C: Error occurred during project recovery!"), 10);
    EXPECT_EQ(report.lines.filter("Could not remove old, empty, or corrupt ProjectData!").size(), 10);
    EXPECT_EQ(findRecoverableProjects({library.folder.path()}).size(), 10);
}

TEST(RecoveryRun, changesNothingUnlessToldTo) {
    Library library;
    library.add("A\x1b[2J.logicx", Damage::All);
    library.add("B.logicx", Damage::NoData);
    const auto before = library.everything();
    const QString question =
        "Do you want Stemhaven to recover 2 project(s)? Stemhaven will create missing files to allow the "
        "projects to be opened again. Warning: this modifies the .logicx contents! Backup first to be safe.";
    QStringList asked;
    const auto no = [&](const QString& text) {
        asked += text;
        return false;
    };
    const auto stopped = [] {
        return true;
    };

    struct Case {
        const char* name;
        bool isDryRun, isConfirmed;
        std::function<bool(const QString& question)> confirm;
        std::function<bool()> isStopped;
        bool isWell;
        QStringList questions;
    };

    const Case cases[] = {
        {"answered with no", false, false, no, {}, false, {question}},
        {"nobody to ask", false, false, {}, {}, false, {}},
        {"stopped", false, true, no, stopped, false, {}},
        {"dry run", true, true, no, {}, true, {}},
    };
    QStringList lines;
    for (const auto& [name, isDryRun, isConfirmed, confirm, isStopped, isWell, questions] : cases) {
        SCOPED_TRACE(name);
        asked.clear();
        const RecoveryRun run{isDryRun, isConfirmed, confirm, {}, {}, isStopped};
        const auto report = run.run({library.folder.path()});
        EXPECT_EQ(report.recovered, 0);
        EXPECT_EQ(report.isWell(), isWell);
        EXPECT_EQ(asked, questions);
        EXPECT_EQ(library.everything(), before);
        lines = report.lines;
        EXPECT_TRUE(lines.filter("\x1b").isEmpty());
    }
    EXPECT_EQ(lines.filter("from backup 00, write ProjectInformation.plist for alternative 000").size(), 1);
    EXPECT_EQ(lines.last(), "Found 2 recoverable projects!");
}

TEST(RecoveryRun, tellsWhatCannotBeWritten) {
    Library library;
    chmod(library.top.c_str(), 0755);
    std::filesystem::current_path(library.top);
    const auto& locked = library.add("Locked.logicx", Damage::CorruptInformation);
    chmod(locked.at("Resources").c_str(), 0555);
    const auto& closed = library.add("Closed.logicx", Damage::NoData);
    const auto& sealed = library.add("Sealed.logicx", Damage::NoInformation);
    for (const char* folder : {"Alternatives/000", "Alternatives"})
        chmod(closed.at(folder).c_str(), 0555);
    const auto before = library.everything();
    chmod(sealed.at("").c_str(), 0);
    EXPECT_EQ(
        asAnyone([] {
            const LogCapture logged;
            RecoveryRun run;
            run.isConfirmed = true;
            const auto report = run.run({"."});
            return report.looked == 3 && report.unreadable == 1 && report.found == 2 && report.failed == 2 &&
                report.recovered == 0 && logged.count("copy failed...") == 1 &&
                logged.count("W: Could not delete unreadable ProjectInformation.plist!") == 1;
        }),
        0);
    chmod(sealed.at("").c_str(), 0755);
    EXPECT_EQ(library.everything(), before);
    std::filesystem::current_path("/");
}
