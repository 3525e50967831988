#pragma once

#include <mutex>
#include <set>
#include <string>

namespace Stemhaven {

/// Folders of which the log says already what is wrong with them. All streams of the process share these: a
/// search that finds something brings a new stream, which comes upon the same folders. Safe from any thread.
class LoggedFolders {
public:
    static LoggedFolders& unreadable() {
        static LoggedFolders folders;
        return folders;
    }

    static LoggedFolders& polled() {
        static LoggedFolders folders;
        return folders;
    }

    static LoggedFolders& unanswering() {
        static LoggedFolders folders;
        return folders;
    }

    static LoggedFolders& beyondLimit() {
        static LoggedFolders folders;
        return folders;
    }

    /// False when it is among them already.
    bool add(const std::string& folder) {
        const std::lock_guard lock(m_mutex);
        return m_folders.insert(folder).second;
    }

    /// Its fault has ended.
    void remove(const std::string& folder) {
        const std::lock_guard lock(m_mutex);
        m_folders.erase(folder);
    }

private:
    std::mutex m_mutex;
    std::set<std::string> m_folders;
};

} // namespace Stemhaven
