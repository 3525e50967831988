#pragma once

#include <QString>

#include <functional>

namespace Stemhaven {

/// Finds the bundles below a folder. Does not look into bundles, follows no symbolic links and passes over
/// what is hidden: on some disks a Mac leaves a hidden file beside each bundle that is named like one.
class FolderWalk {
public:
    struct Callbacks {
        /// Gets the path of each entry that is named like a bundle.
        std::function<void(const QString& path)> bundle;
        /// Gets each folder that cannot be read, and why. Of those that are gone by then only the root.
        std::function<void(const QString& folder, const QString& reason)> unreadable;
        /// Asked before each entry.
        std::function<bool()> isStopped;
    };

    explicit FolderWalk(Callbacks callbacks);

    void walk(const QString& root) const;

private:
    Callbacks m_callbacks;
};

} // namespace Stemhaven
