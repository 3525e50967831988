#include "project/RecoverySearch.h"

#include "project/RecoveryRun.h"
#include "support/DamagedBundle.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

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
    // Every tenth cannot be repaired.
    constexpr int count = 100;
    for (int i = 0; i < count; ++i) {
        const auto damage = DamagedBundle::all[static_cast<std::size_t>(i) % std::size(DamagedBundle::all)];
        const auto& bundle = library.add(std::to_string(i) + ".logicx", damage);
        if (i % 10 == 0)
            bundle.inform(0).remove("Alternatives/000/ProjectData").folder("Alternatives/000/ProjectData");
    }
    library.add("Whole.logicx", Damage::None);
    const LogCapture logged;
    RecoveryRun run;
    run.isConfirmed = true;
    const auto report = run.run({library.folder.path()});
    EXPECT_EQ(report.looked, count + 1);
    EXPECT_EQ(report.found, count);
    EXPECT_EQ(report.failed, 10);
    EXPECT_EQ(report.recovered, count - 10);
    EXPECT_FALSE(report.isWell());
    EXPECT_EQ(report.lines.filter("Could not remove old, empty, or corrupt ProjectData!").size(), 10);
    EXPECT_EQ(findRecoverableProjects({library.folder.path()}).size(), 10);
}

TEST(RecoveryRun, changesNothingUnlessToldTo) {
    Library library;
    library.add("A\x1b[2J.logicx", Damage::All);
    library.add("B.logicx", Damage::NoData);
    const auto before = library.everything();
    int asked = 0;
    const auto no = [&](const QString&) {
        ++asked;
        return false;
    };
    const auto stopped = [] {
        return true;
    };
    // Answered with no; nobody to ask; stopped; only looked.
    const std::pair<RecoveryRun, int> cases[] = {
        {{false, false, no, {}, {}, {}}, 1},
        {{false, false, {}, {}, {}, {}}, 0},
        {{false, true, no, {}, {}, stopped}, 0},
        {{true, true, no, {}, {}, {}}, 0},
    };
    for (const auto& [run, questions] : cases) {
        asked = 0;
        const auto report = run.run({library.folder.path()});
        EXPECT_EQ(report.recovered, 0);
        EXPECT_EQ(report.isWell(), run.isDryRun);
        EXPECT_EQ(asked, questions);
        EXPECT_EQ(library.everything(), before);
        EXPECT_TRUE(report.lines.filter("\x1b").isEmpty());
    }
}
