#include "monitor/FolderWalk.h"

#include "project/BundleSuffixes.h"

#include <QFile>

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace Stemhaven {

namespace fs = std::filesystem;

namespace {

/// Entry names are compared as they are on disk: most entries of a library are neither bundles nor folders,
/// and turning each into a QString would cost more than reading it.
std::vector<std::string> encodedSuffixes() {
    std::vector<std::string> suffixes;
    for (const auto& suffix : bundleSuffixes())
        suffixes.push_back(QFile::encodeName(suffix).toStdString());
    return suffixes;
}

bool endsInSuffix(std::string_view path, const std::vector<std::string>& suffixes) {
    for (const auto& suffix : suffixes) {
        if (path.ends_with(suffix))
            return true;
    }
    return false;
}

bool isHidden(std::string_view path) {
    return path.substr(path.rfind('/') + 1).starts_with('.');
}

} // namespace

FolderWalk::FolderWalk(Callbacks callbacks) : m_callbacks(std::move(callbacks)) {}

void FolderWalk::walk(const QString& root) const {
    const auto suffixes = encodedSuffixes();
    const auto top = QFile::encodeName(root).toStdString();
    std::vector<std::string> folders{top};
    while (!folders.empty()) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        std::error_code error;
        fs::directory_iterator entries(folder, error);
        for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
            if (m_callbacks.isStopped())
                return;
            const auto& entry = *entries;
            std::error_code unknown;
            const std::string& path = entry.path().native();
            if (isHidden(path) || entry.is_symlink(unknown))
                continue;
            if (endsInSuffix(path, suffixes))
                m_callbacks.bundle(QFile::decodeName(path.c_str()));
            else if (entry.is_directory(unknown))
                folders.push_back(path);
        }
        // When a folder is moved or deleted, those below it that wait here are gone with it.
        const bool isGone = error == std::errc::no_such_file_or_directory && folder != top;
        if (error && !isGone)
            m_callbacks.unreadable(
                QFile::decodeName(folder.c_str()), QString::fromLocal8Bit(error.message()));
    }
}

} // namespace Stemhaven
