#pragma once

#include "platform/linux/InotifyEventStream.h"
#include "support/Waiting.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
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

/// A folder with a stream on it, or on what request() names, and the events that have come.
class WatchedFolder : public testing::Test {
protected:
    /// The flags of all events of a path, relative to the folder.
    using Flags = std::map<std::string, std::uint32_t>;

    static constexpr std::uint32_t scan = FileEvent::MustScanSubDirs;
    static constexpr std::uint32_t created = FileEvent::ItemCreated;
    static constexpr std::uint32_t removed = FileEvent::ItemRemoved;
    static constexpr std::uint32_t renamed = FileEvent::ItemRenamed;
    static constexpr std::uint32_t modified = FileEvent::ItemModified;

    WatchedFolder() : m_top(QDir(m_temporary.path()).canonicalPath().toStdString()) {
        std::filesystem::create_directories(root());
        m_request.roots = {QString::fromStdString(root().string()) + QLatin1Char('/')};
        m_request.bundleSuffixes = {QStringLiteral(".logicx")};
        m_request.latency = 100ms;
    }

    ~WatchedFolder() override { m_stream.reset(); }

    std::filesystem::path top() const { return m_top; }

    std::filesystem::path root() const { return m_top / "Music"; }

    FileWatchRequest& request() { return m_request; }

    bool start(InotifyEventStream::Surroundings surroundings = {}) {
        m_stream = std::make_unique<InotifyEventStream>(
            m_request,
            [this](const QList<FileEvent>& batch) {
                const std::lock_guard lock(m_mutex);
                m_batches.push_back(batch);
            },
            surroundings);
        return m_stream->start();
    }

    std::unique_ptr<InotifyEventStream>& stream() { return m_stream; }

    std::vector<QList<FileEvent>> batches() const {
        const std::lock_guard lock(m_mutex);
        return m_batches;
    }

    void forgetEvents() {
        const std::lock_guard lock(m_mutex);
        m_batches.clear();
    }

    std::vector<FileEvent> events() const {
        std::vector<FileEvent> all;
        for (const auto& batch : batches())
            all.insert(all.end(), batch.begin(), batch.end());
        return all;
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
        return waitUntil([&] {
            const auto all = flags();
            const auto found = all.find(path);
            return found != all.end() && (found->second & flag) == flag;
        });
    }

    /// Waits until all that was done so far has been told.
    void settle() {
        const std::string name = "Sentinel" + std::to_string(++m_sentinels) + ".logicx";
        std::filesystem::create_directory(root() / name);
        ASSERT_TRUE(waitFor("Music/" + name, created));
    }

    /// Without the sentinels' own.
    Flags settledFlags() {
        settle();
        Flags all = flags();
        std::erase_if(
            all, [](const auto& entry) { return entry.first.find("Sentinel") != std::string::npos; });
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
    std::vector<QList<FileEvent>> m_batches;
    std::unique_ptr<InotifyEventStream> m_stream;
    int m_sentinels = 0;
};

} // namespace Stemhaven
