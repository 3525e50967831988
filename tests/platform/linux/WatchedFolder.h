#pragma once

#include "platform/linux/InotifyEventStream.h"
#include "support/Waiting.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Stemhaven {

using namespace std::chrono_literals;

inline void writeFile(const std::filesystem::path& file, const std::string& text = "text") {
    std::ofstream(file) << text;
}

/// With all that a record is made from, and media that no record is made from.
inline void makeBundle(const std::filesystem::path& bundle) {
    std::filesystem::create_directories(bundle / "Resources");
    std::filesystem::create_directories(bundle / "Alternatives/000");
    std::filesystem::create_directories(bundle / "Media/Audio Files");
    writeFile(bundle / "Resources/ProjectInformation.plist");
    writeFile(bundle / "Alternatives/000/MetaData.plist");
    writeFile(bundle / "Alternatives/000/ProjectData");
}

/// As document programs do it: the new file is written beside the old one and takes its place.
inline void saveOver(const std::filesystem::path& file) {
    const auto temporary = file.parent_path() / ".save-temp";
    writeFile(temporary, "new text");
    std::filesystem::rename(temporary, file);
}

inline std::uint64_t inodeOf(const std::filesystem::path& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// Of what has "Net" in its path the system tells no events.
class CallsWithoutNet : public InotifyCalls {
public:
    bool tellsEvents(const std::string& path, const MountTable& mounts) override {
        return path.find("Net") == std::string::npos && InotifyCalls::tellsEvents(path, mounts);
    }
};

/// The flags of all events of a path, which is relative to the folder.
using Flags = std::map<std::string, std::uint32_t>;

constexpr std::uint32_t scan = FileEvent::MustScanSubDirs;
constexpr std::uint32_t created = FileEvent::ItemCreated;
constexpr std::uint32_t removed = FileEvent::ItemRemoved;
constexpr std::uint32_t renamed = FileEvent::ItemRenamed;
constexpr std::uint32_t modified = FileEvent::ItemModified;

/// A folder with a stream on it, or on what request() names, and the events that have come. It is the current
/// one, so that paths are the same everywhere.
class WatchedFolder : public testing::Test {
protected:
    using RootState = FileEventStream::RootState;

    WatchedFolder() : m_top(QDir(m_temporary.path()).canonicalPath().toStdString()) {
        std::filesystem::current_path(m_top);
        std::filesystem::create_directories("Music");
        m_request.roots = {at("Music/")};
        m_request.bundleSuffixes = {QStringLiteral(".logicx")};
        m_request.latency = 100ms;
    }

    ~WatchedFolder() override { std::filesystem::current_path("/"); }

    /// The stream may use members of the test's own class.
    void TearDown() override {
        m_stream.reset();
        EXPECT_TRUE(waitUntil([] { return !FileEventStream::earlierStreamIsClosing(); }));
    }

    std::filesystem::path top() const { return m_top; }

    QString at(const std::string& path) const { return QString::fromStdString((m_top / path).string()); }

    FileWatchRequest& request() { return m_request; }

    bool start(InotifyEventStream::Surroundings surroundings = {}) {
        m_stream = std::make_unique<InotifyEventStream>(
            m_request,
            [this](const QList<FileEvent>& batch) {
                const std::lock_guard lock(m_mutex);
                m_events.insert(m_events.end(), batch.begin(), batch.end());
            },
            surroundings);
        return m_stream->start();
    }

    std::unique_ptr<InotifyEventStream>& stream() { return m_stream; }

    RootState state(const std::string& root) const { return m_stream->stateOf(at(root)); }

    bool becomes(const std::string& root, RootState expected) const {
        return waitUntil([&] { return state(root) == expected; });
    }

    void forgetEvents() {
        const std::lock_guard lock(m_mutex);
        m_events.clear();
    }

    std::vector<FileEvent> events() const {
        const std::lock_guard lock(m_mutex);
        return m_events;
    }

    Flags flags() const {
        Flags flags;
        for (const auto& event : events())
            flags[relative(event)] |= event.flags;
        return flags;
    }

    /// Of the last event with that flag; 0 if there is none.
    std::uint64_t fileID(const std::string& path, std::uint32_t flag) const {
        std::uint64_t fileID = 0;
        for (const auto& event : events()) {
            if (relative(event) == path && (event.flags & flag) != 0)
                fileID = event.fileID;
        }
        return fileID;
    }

    bool waitFor(const std::string& path, std::uint32_t flag) const {
        return waitUntil([&] { return (flags()[path] & flag) == flag; });
    }

    /// Whether what is written into the bundle from now on is told.
    bool isFollowed(const std::string& bundle) {
        const std::string file = bundle + "/Resources/new" + std::to_string(++m_made);
        writeFile(file);
        return waitFor(file, created);
    }

    /// The same for all bundles there are: of those outside the roots and of hidden ones nothing is told.
    void expectAllFollowed() {
        settleAndForget();
        Flags expected;
        const std::string name = "/new" + std::to_string(++m_made);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_top)) {
            const std::string path = entry.path().lexically_relative(m_top);
            if (!path.ends_with(".logicx/Resources") && !path.ends_with(".logicx/Alternatives/000"))
                continue;
            writeFile(path + name);
            if (!path.starts_with("Outside") && !path.starts_with("Music/."))
                expected[path + name] = created | modified;
        }
        EXPECT_EQ(settledFlags(), expected);
    }

    /// Waits until all that was done so far has been told.
    void settle() {
        const std::string sentinel = "Music/Sentinel" + std::to_string(++m_made) + ".logicx";
        std::filesystem::create_directory(sentinel);
        ASSERT_TRUE(waitFor(sentinel, created));
    }

    void settleAndForget() {
        settle();
        forgetEvents();
    }

    /// Without the sentinels' own.
    Flags settledFlags() {
        settle();
        Flags all = flags();
        std::erase_if(all, [](const auto& entry) { return entry.first.starts_with("Music/Sentinel"); });
        return all;
    }

private:
    std::string relative(const FileEvent& event) const {
        return std::filesystem::path(event.path.toStdString()).lexically_relative(m_top).string();
    }

    QTemporaryDir m_temporary;
    std::filesystem::path m_top;
    FileWatchRequest m_request;
    mutable std::mutex m_mutex;
    std::vector<FileEvent> m_events;
    std::unique_ptr<InotifyEventStream> m_stream;
    int m_made = 0;
};

} // namespace Stemhaven
