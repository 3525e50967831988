#include "LibraryModel.h"

#include <algorithm>

namespace Storm {

namespace {

using Path = LibraryModel::Path;

bool isIn(const Path& path, const Path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

Path movedPath(const Path& path, const Path& from, const Path& to) {
    return path == from ? to : to / path.lexically_relative(from);
}

} // namespace

bool Bundle::isUntitled() const {
    return path.filename().string().starts_with("Untitled");
}

LibraryModel::LibraryModel(const Path& base)
    : m_roots{base / "Music", base / "Music2", base / "Drive (12'' disks)"},
      m_unplugged(base / "Unplugged"),
      m_formerRoot(base / "Former"),
      m_outside(base / "Elsewhere"),
      m_store(base / "Store") {}

std::vector<Path> LibraryModel::presentRoots() const {
    std::vector<Path> present;
    std::copy_if(m_roots.begin(), m_roots.end(), std::back_inserter(present), [&](const Path& root) {
        return root != m_absentRoot;
    });
    return present;
}

std::vector<Path> LibraryModel::folders() const {
    std::vector<Path> found;
    std::copy_if(m_folders.begin(), m_folders.end(), std::back_inserter(found), [&](const Path& folder) {
        return isBelowRoots(folder);
    });
    return found;
}

bool LibraryModel::isBelowRoots(const Path& path) const {
    return std::any_of(m_roots.begin(), m_roots.end(), [&](const Path& root) { return isIn(path, root); });
}

bool LibraryModel::isListed(const Bundle& bundle) const {
    return bundle.exists && !bundle.isUntitled() &&
        (isBelowRoots(bundle.path) || isIn(bundle.path, m_formerRoot));
}

bool LibraryModel::isOnlyOneOfItsName(const Bundle& bundle) const {
    return std::none_of(m_bundles.begin(), m_bundles.end(), [&](const Bundle& other) {
        return &other != &bundle && other.path.filename() == bundle.path.filename();
    });
}

std::vector<Bundle*> LibraryModel::bundlesIn(const Path& path) {
    std::vector<Bundle*> found;
    for (auto& bundle : m_bundles) {
        if (bundle.exists && isIn(bundle.path, path))
            found.push_back(&bundle);
    }
    return found;
}

Bundle& LibraryModel::addBundle(const Path& path, double tempo) {
    auto& bundle = m_bundles.emplace_back();
    bundle.tag = static_cast<int>(m_bundles.size());
    bundle.path = path;
    bundle.tempo = tempo;
    return bundle;
}

void LibraryModel::relocate(const Path& from, const Path& to) {
    for (auto* bundle : bundlesIn(from)) {
        bundle->path = movedPath(bundle->path, from, to);
        bundle->isMoved = true;
    }
    std::set<Path> folders;
    for (const auto& folder : m_folders)
        folders.insert(isIn(folder, from) ? movedPath(folder, from, to) : folder);
    m_folders = std::move(folders);
}

void LibraryModel::remove(const Path& path) {
    for (auto* bundle : bundlesIn(path))
        bundle->exists = false;
    std::erase_if(m_folders, [&](const Path& folder) { return isIn(folder, path); });
}

void LibraryModel::unplug(const Path& root) {
    relocate(root, m_unplugged);
    m_absentRoot = root;
}

void LibraryModel::plugIn() {
    relocate(m_unplugged, *m_absentRoot);
    m_absentRoot.reset();
}

void LibraryModel::settled() {
    for (auto& bundle : m_bundles) {
        bundle.isMoved = false;
        bundle.isCopied = false;
        bundle.isReplaced = false;
        bundle.isBare = false;
        bundle.isRestored = false;
    }
}

} // namespace Storm
