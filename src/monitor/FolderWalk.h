#pragma once

#include <QString>

#include <functional>

namespace Stemhaven {

/// Finds the bundles below a folder. Does not look into bundles, follows no symbolic links and passes over
/// hidden folders. A folder that cannot be read is logged and passed over.
class FolderWalk {
public:
    /// onBundle gets the path of each entry that is named like a bundle; isStopped is asked before each
    /// entry.
    FolderWalk(std::function<void(const QString&)> onBundle, std::function<bool()> isStopped);

    void walk(const QString& root) const;

private:
    std::function<void(const QString&)> m_onBundle;
    std::function<bool()> m_isStopped;
};

} // namespace Stemhaven
