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
        std::vector<std::string> before;
        /// Since the beginning, always in a root, and always or never a bundle.
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
        for (auto& [inode, folder] : m_folders) {
            folder.before.clear();
            folder.isKnown = isInRoot(folder.path);
        }
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

    /// Puts the roots back.
    void end() {
        const std::lock_guard lock(m_mutex);
        for (const auto& root : roots)
            bringBack(root);
        note();
    }

    std::vector<Folder> folders() const {
        const std::lock_guard lock(m_mutex);
        std::vector<Folder> folders;
        for (const auto& [inode, folder] : m_folders)
            folders.push_back(folder);
        return folders;
    }

    std::string log() const {
        const std::lock_guard lock(m_mutex);
        return m_log;
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
        enum Kind : unsigned { MoveRoot, Make, Remove, Replace, MoveThereAndBack };

        const auto kind = below(10);
        const std::string path = anything();
        if (kind == MoveRoot) {
            const auto& root = roots.at(below(roots.size()));
            if (!bringBack(root))
                rename(root, m_awayFrom[root] = anyFolder() + "/Away" + root);
        } else if (kind == Make) {
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

    bool bringBack(const std::string& root) {
        if (!std::filesystem::exists(root) && std::filesystem::exists(m_awayFrom[root]))
            rename(m_awayFrom[root], root);
        else if (!std::filesystem::exists(root))
            make(root);
        else
            return false;
        return true;
    }

    void make(const std::string& path) {
        makeSmallBundle(isBundle(path) ? path : path + "/F0/B0.logicx");
        say("make " + path);
    }

    void remove(const std::string& path) {
        std::error_code impossible;
        std::filesystem::remove_all(path, impossible);
        say("remove " + path);
    }

    /// What is at the other place comes here in the same moment.
    void rename(const std::string& from, const std::string& to) {
        const bool isExchange = std::filesystem::exists(to);
        if (renameat2(
                AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(),
                isExchange ? RENAME_EXCHANGE : RENAME_NOREPLACE) == 0)
            say((isExchange ? "exchange " : "rename ") + from + ' ' + to);
    }

    void say(const std::string& what) {
        m_log += std::to_string(FileEventStream::currentEventID()) + ' ' + what + '\n';
        note();
    }

    /// Looks where everything is now.
    void note() {
        std::map<std::uint64_t, Folder> found;
        for (const auto* top : {"Music", "Archive", "Outside"}) {
            if (!std::filesystem::exists(top))
                continue;
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
        auto folder = known == m_folders.end() ? Folder{inode, path, m_lastNote, {}, false} : known->second;
        if (folder.path != path) {
            folder.isKnown = folder.isKnown && isInRoot(path) && isBundle(path) == isBundle(folder.path);
            folder.before.push_back(std::exchange(folder.path, path));
            folder.since = m_lastNote;
        }
        found[inode] = folder;
    }

    mutable std::mutex m_mutex;
    std::mt19937 m_random;
    int m_changesLeft = 0;
    std::uint64_t m_lastNote = 0;
    std::map<std::uint64_t, Folder> m_folders;
    std::map<std::string, std::string> m_awayFrom;
    std::string m_log;
};

} // namespace Stemhaven
