#include "monitor/EventFilter.h"

#include "app/SettingsKeys.h"
#include "monitor/ChangedPath.h"
#include "monitor/ReplayPosition.h"
#include "support/LogCapture.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Stemhaven;

namespace {

constexpr std::uint32_t scan = FileEvent::MustScanSubDirs;
constexpr std::uint32_t created = FileEvent::ItemCreated;
constexpr std::uint32_t removed = FileEvent::ItemRemoved;
constexpr std::uint32_t renamed = FileEvent::ItemRenamed;
constexpr std::uint32_t modified = FileEvent::ItemModified;

/// What a batch comes to, as text: moves, changed bundles, renamed roots, and whether a search is needed.
QString summary(const EventBatch& batch) {
    QStringList parts;
    for (const auto& move : batch.moves)
        parts << QString("move %1 %2").arg(move.path).arg(move.fileID);
    for (const auto& bundle : batch.changedBundles)
        parts << "changed " + bundle;
    for (const auto& root : batch.renamedRoots)
        parts << "root " + root;
    if (batch.needsSearch)
        parts << "search";
    return parts.join(", ");
}

} // namespace

TEST(EventFilter, ReducesEventsToWhatMatters) {
    const QTemporaryDir disk;
    ASSERT_TRUE(QDir(disk.path()).mkpath("plain"));
    WatchedFolders folders;
    folders.addRoot("/music");
    folders.addRoot(disk.path());
    folders.setAncestors({"/stray/", "/stray/deep/"});

    const EventContext context{
        folders, [](const QString& path) { return path == "/else/Known.logicx"; },
        [](auto id) {
            return id == 8;
        }};

    using Events = QList<FileEvent>;
    const QList<std::pair<Events, QString>> cases = {
        {{{"/music/A.logicx", 5, 0, modified, 1},
          {"/music/A.logicx/Alternatives/000/MetaData.plist", 6, 0, created, 2}},
         "changed /music/A.logicx"},
        {{{"/music/A.logicx/Resources/Stemhaven.plist", 5, 0, modified, 1},
          {"/music/A.logicx/Resources/Stemhaven.plist.77-1", 5, 0, created | renamed, 2}},
         ""},
        {{{"/music/A.logicx/", 5, 0, renamed, 1}, {"/music/B.logicx", 5, 0, renamed, 2}},
         "move /music/A.logicx 5, move /music/B.logicx 5"},
        {{{"/music/B.logicx", 5, 0, renamed | created, 2}},
         "move /music/B.logicx 5, changed /music/B.logicx"},
        {{{"/music/A.logicx/Media/x.wav", 5, 0, renamed, 1}}, "changed /music/A.logicx"},
        {{{"/music/A.logicx", 5, 0, removed, 1}}, "changed /music/A.logicx"},
        {{{"/music/A.logicx/x", 5, 0, 0, 1}}, "changed /music/A.logicx"},
        {{{"/music", 9, 0, renamed, 1}}, "root /music"},
        {{{"/music", 9, 0, scan, 1}}, "search"},
        {{{"/music/plain", 9, 0, modified | created, 1}}, ""},
        {{{"/music/disk", 9, 0, FileEvent::Mount, 1}}, "search"},
        {{{"/music", 9, 0, FileEvent::Unmount, 1}}, "search"},
        {{{"/else/disk", 9, 0, FileEvent::Mount, 1}}, ""},
        {{{disk.path() + "/plain", 9, 0, renamed, 1}}, "move " + disk.path() + "/plain 9, search"},
        // A name that merely holds the suffix.
        {{{"/music/A.logicx backups/x", 5, 0, modified, 1},
          {"/music/A.logicx backups/A.logicx", 5, 0, created, 2}},
         "changed /music/A.logicx backups/A.logicx"},
        {{{"/music/._A.logicx", 5, 0, modified, 1}, {"/music/.trash/A.logicx", 5, 0, created, 2}}, ""},
        // Elsewhere: on record, come from a folder that is watched, and none of ours.
        {{{"/else/Known.logicx", 5, 0, modified, 1}}, "changed /else/Known.logicx"},
        {{{"/music/A.logicx", 5, 0, renamed, 1}, {"/else/A.logicx", 5, 0, renamed, 2}},
         "move /music/A.logicx 5, move /else/A.logicx 5"},
        {{{"/else/A.logicx", 5, 0, modified | created, 1}}, ""},
        {{{"/stray/deep", 7, 0, renamed, 1}, {"/stray/deeper", 7, 0, renamed, 2}},
         "move /stray/deep 7, move /stray/deeper 7"},
        {{{"/stray/deeper", 8, 0, renamed, 2}}, "move /stray/deeper 8"},
        {{{"/stray/other", 9, 0, renamed, 2}, {"/stray/deep", 0, 0, renamed, 3}}, ""},
    };
    for (const auto& [events, expected] : cases)
        EXPECT_EQ(summary(filterEvents(events, context)), expected);
}

TEST(ChangedPath, KeepsThePathsOfOneObjectInTheOrderOfTheirEvents) {
    const QTemporaryDir disk;
    const QString there = disk.path() + "/There.logicx";
    ASSERT_TRUE(QDir().mkpath(there));
    ChangedPath changed;
    changed.addEntry("/c/C.logicx", 30, 7);
    changed.addEntry("/a/A.logicx", 10, 7);
    changed.addEntry(there, 20, 7);
    LogCapture messages;
    changed.addEntry("/x/X.logicx", 5, 8);
    EXPECT_EQ(messages.count("W: Incorrect mismatched fileID"), 1);
    EXPECT_EQ(changed.getOldestEventID(), 10);
    EXPECT_EQ(changed.getLatestPath(), "/c/C.logicx");
    EXPECT_EQ(changed.getLatestPathFound(), there);
    ASSERT_EQ(changed.getPriorPaths().size(), 2);
    EXPECT_EQ(changed.getPriorPaths().first().path, "/a/A.logicx");
}

TEST(ReplayPosition, GoesBackAtMostThreeTimesInARow) {
    QSettings().clear();
    EXPECT_EQ(ReplayPosition::stored(), FileWatchRequest::sinceNow);
    ReplayPosition::advanceTo(100);
    ReplayPosition::advanceTo(90);
    EXPECT_EQ(ReplayPosition::stored(), 100U);
    for (const unsigned long long expected : {50U, 50U, 50U, 200U}) {
        ReplayPosition::advanceTo(200);
        ReplayPosition::settle(50);
        EXPECT_EQ(ReplayPosition::stored(), expected);
    }
    ReplayPosition::settle(-1);
    ReplayPosition::settle(60);
    EXPECT_EQ(ReplayPosition::stored(), 60U);
    QSettings().setValue(SettingsKeys::eventCatchupAttempts, "many");
    LogCapture messages;
    ReplayPosition::settle(61);
    EXPECT_EQ(
        messages.count("C: Failed to read and convert 'eventCatchupAttempts' settings! Defaultinig to 0"), 1);
    EXPECT_EQ(ReplayPosition::stored(), 61U);
}
