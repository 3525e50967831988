#include "FolderOperations.h"

#include <algorithm>
#include <map>

namespace Storm {

namespace fs = std::filesystem;

namespace {

bool isIn(const fs::path& path, const fs::path& folder) {
    return (path / "").string().starts_with((folder / "").string());
}

} // namespace

std::vector<Operation> FolderOperations::all() {
    return bound({
        {4, "create-folder", &FolderOperations::create},
        {6, "rename-folder", &FolderOperations::rename},
        {6, "move-folder", &FolderOperations::move},
        {1, "delete-folder", &FolderOperations::remove},
        {4, "move-out", &FolderOperations::moveOut},
        {6, "move-out", &FolderOperations::moveBack},
        {3, "exchange", &FolderOperations::exchange},
        {3, "chain", &FolderOperations::moveUpChain},
    });
}

FolderOperations::Outcome FolderOperations::create() {
    const Path path = m_tools.newName(m_tools.pickPlace(), "");
    fs::create_directory(path);
    m_tools.library().addFolder(path);
    return "create folder " + m_tools.shown(path);
}

FolderOperations::Outcome FolderOperations::rename() {
    const auto from = m_tools.pickFolder();
    if (!from)
        return std::nullopt;
    m_tools.settleBeforeMoving(*from);
    return m_tools.relocate("rename folder", *from, m_tools.newName(from->parent_path(), ""));
}

FolderOperations::Outcome FolderOperations::move() {
    const auto from = m_tools.pickFolder();
    if (!from)
        return std::nullopt;
    const Path place = m_tools.pickPlace();
    const Path to = place / from->filename();
    if (isIn(place, *from) || fs::exists(to))
        return std::nullopt;
    m_tools.settleBeforeMoving(*from);
    return m_tools.relocate("move folder", *from, to);
}

FolderOperations::Outcome FolderOperations::remove() {
    const auto path = m_tools.pickFolder();
    if (!path)
        return std::nullopt;
    m_tools.settleBeforeLosing(*path);
    return m_tools.remove("delete folder", *path);
}

FolderOperations::Outcome FolderOperations::moveOut() {
    const auto* bundle = m_tools.pickListed();
    const auto folder = m_tools.pickFolder();
    const bool whole = folder && m_tools.random().chance(50);
    if (!whole && bundle == nullptr)
        return std::nullopt;
    const Path from = whole ? *folder : bundle->path;
    const Path to = m_tools.library().outside() / from.filename();
    if (fs::exists(to))
        return std::nullopt;
    m_tools.settleBeforeLosing(from);
    // Were it a copy that the catalogue does not know, it could come back when its original is elsewhere.
    const auto leaving = m_tools.library().bundlesIn(from);
    m_tools.settleUnless(std::all_of(leaving.begin(), leaving.end(), [](const Bundle* each) {
        return each->recordId || each->isUntitled();
    }));
    return m_tools.relocate("move out", from, to);
}

FolderOperations::Outcome FolderOperations::moveBack() {
    std::vector<Path> absent;
    for (const auto& entry : fs::directory_iterator(m_tools.library().outside()))
        absent.push_back(entry.path());
    if (absent.empty())
        return std::nullopt;
    // The order of a folder is the file system's.
    std::sort(absent.begin(), absent.end());
    const Path from = m_tools.random().pick(absent);
    const Path to = m_tools.pickPlace() / from.filename();
    if (fs::exists(to))
        return std::nullopt;
    return m_tools.relocate("move back", from, to);
}

FolderOperations::Outcome FolderOperations::exchange() {
    const auto twins = pickTwins(2);
    if (twins.empty())
        return createTwins();
    settleBeforeReplacing(twins);
    const Path between = m_tools.newName(twins[0].parent_path(), "");
    return "exchange folders: " +
        relocateAll({{twins[0], between}, {twins[1], twins[0]}, {between, twins[1]}});
}

FolderOperations::Outcome FolderOperations::moveUpChain() {
    const auto twins = pickTwins(3);
    if (twins.empty())
        return createTwins();
    settleBeforeReplacing(twins);
    const std::string first = m_tools.random().chance(50)
        ? m_tools.remove("delete", twins[0])
        : m_tools.relocate("move", twins[0], m_tools.newName(twins[0].parent_path(), ""));
    return "move up a chain of folders: " + first + ", " +
        relocateAll({{twins[1], twins[0]}, {twins[2], twins[1]}});
}

/// Folders, none in another, that each hold a bundle of the same name; none where there are not as many.
std::vector<FolderOperations::Path> FolderOperations::pickTwins(std::size_t count) {
    std::map<Path, std::vector<Path>> foldersBySong;
    const auto folders = m_tools.library().folders();
    for (const auto& bundle : m_tools.library().bundles()) {
        const Path folder = bundle.path.parent_path();
        if (!m_tools.library().isListed(bundle) ||
            std::find(folders.begin(), folders.end(), folder) == folders.end())
            continue;
        auto& twins = foldersBySong[bundle.path.filename()];
        if (std::none_of(twins.begin(), twins.end(), [&](const Path& twin) {
                return isIn(folder, twin) || isIn(twin, folder);
            }))
            twins.push_back(folder);
    }
    std::erase_if(foldersBySong, [&](const auto& entry) { return entry.second.size() < count; });
    if (foldersBySong.empty())
        return {};
    auto chosen = std::next(
        foldersBySong.begin(), m_tools.random().between(0, static_cast<int>(foldersBySong.size()) - 1));
    auto twins = chosen->second;
    std::rotate(
        twins.begin(), twins.begin() + m_tools.random().between(0, static_cast<int>(twins.size()) - 1),
        twins.end());
    twins.resize(count);
    return twins;
}

std::string FolderOperations::createTwins() {
    constexpr int versions = 3;
    const Path place = m_tools.pickPlace();
    const std::string series = "Series " + std::to_string(++m_series);
    for (int version = 0; version < versions; ++version) {
        const Path folder = place / (series + " v" + std::to_string(version));
        fs::create_directory(folder);
        m_tools.library().addFolder(folder);
        m_tools.addBundle(folder / (series + ".logicx"));
    }
    return "create folders " + m_tools.shown(place / series) + " v0 to v2";
}

std::string FolderOperations::relocateAll(const std::vector<std::pair<Path, Path>>& steps) {
    std::string said;
    for (const auto& [from, to] : steps)
        said += (said.empty() ? "" : ", ") + m_tools.relocate("move", from, to);
    return said;
}

void FolderOperations::settleBeforeReplacing(const std::vector<Path>& twins) {
    std::vector<Bundle*> replaced;
    for (const auto& folder : twins) {
        const auto held = m_tools.library().bundlesIn(folder);
        replaced.insert(replaced.end(), held.begin(), held.end());
    }
    m_tools.settleUnless(std::all_of(replaced.begin(), replaced.end(), [](const Bundle* bundle) {
        return bundle->isUntitled() || isCertain(*bundle);
    }));
    for (auto* bundle : replaced)
        bundle->isReplaced = true;
}

} // namespace Storm
