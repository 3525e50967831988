#pragma once

#include "WatchedFolder.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace Stemhaven {

inline const std::array<std::string, 2> roots{"Music", "Archive"};

inline bool isBundle(const std::string& path) {
    return path.ends_with(".logicx");
}

inline std::string rootOf(const std::string& path) {
    return path.substr(0, path.find('/'));
}

inline bool isInRoot(const std::string& path) {
    return std::find(roots.begin(), roots.end(), rootOf(path)) != roots.end();
}

inline bool isAbove(const std::string& folder, const std::string& path) {
    return path.starts_with(folder + '/');
}

/// A tree that is changed at random, and what is known of the folders in it. Safe from any thread.
class RestlessTree {
public:
    /// A bundle, or a folder outside bundles.
    struct Folder {
        std::uint64_t inode = 0;
        std::string path;
        /// An event id from before it came to path.
        std::uint64_t since = 0;
        /// Since the beginning, in a root.
        bool isKnown = false;
    };

    explicit RestlessTree(unsigned seed) : m_random(seed) {}

    /// Makes something to begin with.
    void populate() {
        for (const auto* folder : {"Music/F0/F1", "Music/F1", "Archive/F0", "Outside/F2"})
            std::filesystem::create_directories(folder);
        for (const auto* bundle :
             {"Music/B0.logicx", "Music/F0/B1.logicx", "Music/F0/F1/B2.logicx", "Music/F1/B3.logicx",
              "Archive/B0.logicx", "Archive/F0/B2.logicx", "Outside/B1.logicx", "Outside/F2/B3.logicx"})
            makeSmallBundle(bundle);
        note();
    }

    /// All that is there now counts as known to those who watch it.
    void begin(int changes) {
        const std::lock_guard lock(m_mutex);
        note();
        for (auto& [inode, folder] : m_folders)
            folder.isKnown = isInRoot(folder.path);
        m_changesLeft = changes;
    }

    /// By chance, when something is left to be changed.
    void changeByChance() {
        const std::lock_guard lock(m_mutex);
        while (m_changesLeft > 0 && below(5) == 0) {
            --m_changesLeft;
            change();
        }
    }

    bool isRestless() const {
        const std::lock_guard lock(m_mutex);
        return m_changesLeft > 0;
    }

    std::vector<Folder> folders() {
        const std::lock_guard lock(m_mutex);
        note();
        std::vector<Folder> folders;
        for (const auto& [inode, folder] : m_folders)
            folders.push_back(folder);
        return folders;
    }

private:
    unsigned below(std::size_t most) {
        return static_cast<unsigned>(std::uniform_int_distribution<std::size_t>(0, most - 1)(m_random));
    }

    static void makeSmallBundle(const std::filesystem::path& bundle) {
        std::error_code impossible;
        std::filesystem::create_directories(bundle / "Resources", impossible);
        std::filesystem::create_directories(bundle / "Alternatives/000", impossible);
    }

    void change() {
        enum Kind : unsigned { Make, Remove, Replace, MoveThereAndBack };

        const auto kind = below(9);
        const std::string path = anything();
        if (kind == Make) {
            make(anyFolder() + '/' + anyName(below(2) == 0));
        } else if (path.empty()) {
            return;
        } else if (kind == Remove) {
            remove(path);
        } else if (kind == Replace) {
            remove(path);
            make(path);
        } else if (kind == MoveThereAndBack) {
            const auto other = anyFolder() + '/' + anyName(isBundle(path));
            rename(path, other);
            rename(other, path);
        } else {
            rename(path, anyFolder() + '/' + anyName(below(8) == 0 ? !isBundle(path) : isBundle(path)));
        }
    }

    std::string anyName(bool ofBundle) {
        if (ofBundle)
            return "B" + std::to_string(below(4)) + ".logicx";
        return below(10) == 0 ? ".Hidden" : "F" + std::to_string(below(3));
    }

    std::string anyFolder() {
        std::vector<std::string> all;
        for (const auto& [inode, folder] : m_folders) {
            if (!isBundle(folder.path) && std::count(folder.path.begin(), folder.path.end(), '/') < 4)
                all.push_back(folder.path);
        }
        return all.at(below(all.size()));
    }

    /// Empty if there is nothing.
    std::string anything() {
        std::vector<std::string> all;
        for (const auto& [inode, folder] : m_folders) {
            if (folder.path.find('/') != std::string::npos)
                all.push_back(folder.path);
        }
        return all.empty() ? "" : all[below(all.size())];
    }

    void make(const std::string& path) {
        makeSmallBundle(isBundle(path) ? path : path + "/F0/B0.logicx");
        note();
    }

    void remove(const std::string& path) {
        std::error_code impossible;
        std::filesystem::remove_all(path, impossible);
        note();
    }

    /// What is at the other place comes here in the same moment.
    void rename(const std::string& from, const std::string& to) {
        const bool isExchange = std::filesystem::exists(to);
        renameat2(
            AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), isExchange ? RENAME_EXCHANGE : RENAME_NOREPLACE);
        note();
    }

    /// Looks where everything is now.
    void note() {
        std::map<std::uint64_t, Folder> found;
        for (const auto* top : {"Music", "Archive", "Outside"}) {
            find(top, found);
            for (auto it = std::filesystem::recursive_directory_iterator(top);
                 it != std::filesystem::recursive_directory_iterator(); ++it) {
                const std::string path = it->path();
                const bool isHidden = it->path().filename().string().starts_with('.');
                if (isBundle(path) || isHidden || !it->is_directory())
                    it.disable_recursion_pending();
                if (!isHidden && it->is_directory())
                    find(path, found);
            }
        }
        m_folders = std::move(found);
        m_lastNote = FileEventStream::currentEventID();
    }

    void find(const std::string& path, std::map<std::uint64_t, Folder>& found) {
        const auto inode = inodeOf(path);
        const auto known = m_folders.find(inode);
        const bool isWhereItWas = known != m_folders.end() && known->second.path == path;
        found[inode] = isWhereItWas ? known->second : Folder{inode, path, m_lastNote, false};
    }

    mutable std::mutex m_mutex;
    std::mt19937 m_random;
    int m_changesLeft = 0;
    std::uint64_t m_lastNote = 0;
    std::map<std::uint64_t, Folder> m_folders;
};

} // namespace Stemhaven
