#include "RootOperations.h"

#include <algorithm>

namespace Storm {

namespace fs = std::filesystem;

std::vector<Operation> RootOperations::all() {
    return bound({
        {3, "unplug", &RootOperations::unplug},
        {3, "unplug", &RootOperations::plugIn},
        {3, "stray", &RootOperations::renameAboveStrays},
    });
}

void RootOperations::prepare() {
    m_folderAboveStrays = m_tools.library().formerRoot() / "Home";
    for (const char* path : {"Song.logicx", "Desk/Song.logicx"})
        m_tools.addBundle(m_folderAboveStrays / path);
}

/// After some of its bundles were copied to another root.
RootOperations::Outcome RootOperations::unplug() {
    auto& library = m_tools.library();
    if (library.absentRoot())
        return std::nullopt;
    m_tools.settleUnless(isAllCertain());
    m_tools.callbacks().stopProgram();
    const Path root = m_tools.random().pick(library.roots());
    const std::string said = copyAway(root);
    fs::rename(root, library.unplugged());
    library.unplug(root);
    return said + "unplug " + m_tools.shown(root);
}

RootOperations::Outcome RootOperations::plugIn() {
    auto& library = m_tools.library();
    if (!library.absentRoot())
        return std::nullopt;
    const Path root = *library.absentRoot();
    m_tools.settleUnless(isAllCertain());
    if (m_tools.random().chance(50))
        m_tools.callbacks().stopProgram();
    fs::rename(library.unplugged(), root);
    library.plugIn();
    return "plug in " + m_tools.shown(root);
}

/// Several times before the program may have seen the first, always the same folder, so that the projects are
/// found from the folder around it.
RootOperations::Outcome RootOperations::renameAboveStrays() {
    constexpr int mostRenamed = 3;
    auto& library = m_tools.library();
    std::string said;
    if (!m_isTakenOffList) {
        const auto strays = library.bundlesIn(library.formerRoot());
        m_tools.settleUnless(std::all_of(
            strays.begin(), strays.end(), [](const Bundle* bundle) { return isCertain(*bundle); }));
        m_tools.callbacks().stopProgram();
        m_tools.callbacks().takeOffList(library.formerRoot());
        m_isTakenOffList = true;
        return "take off the list " + m_tools.shown(library.formerRoot());
    }
    for (int left = m_tools.random().between(1, mostRenamed); left > 0; --left) {
        const Path to = library.formerRoot() / ("Home " + std::to_string(++m_names));
        said += (said.empty() ? "" : ", ") + m_tools.relocate("rename", m_folderAboveStrays, to);
        m_folderAboveStrays = to;
    }
    return said;
}

/// The copies' records begin with the user data of the originals'.
std::string RootOperations::copyAway(const Path& root) {
    constexpr int copiedPercent = 40;
    auto& library = m_tools.library();
    auto roots = library.roots();
    std::erase(roots, root);
    std::string said;
    for (auto* original : library.bundlesIn(root)) {
        if (!library.isListed(*original) || original->isMoved || !m_tools.random().chance(copiedPercent))
            continue;
        const Path place = m_tools.random().pick(roots);
        // Where a bundle of that name stood before, its record stands still, and the copy could be that one.
        const Path to = library.isOnlyOneOfItsName(*original) ? place / original->path.filename()
                                                              : m_tools.newName(place, ".logicx");
        auto& copy = m_tools.copyBundle(*original, to);
        copy.userData = original->userData;
        copy.isMoved = true;
        copy.isCopied = true;
        said += "copy " + m_tools.shown(original->path) + " to " + m_tools.shown(to) + ", ";
    }
    return said;
}

/// Whether the catalogue knows of every bundle below the roots whose record it is, so that it may forget
/// where it was told.
bool RootOperations::isAllCertain() const {
    const auto& library = m_tools.library();
    return std::all_of(library.bundles().begin(), library.bundles().end(), [&](const Bundle& bundle) {
        return !library.isListed(bundle) || (isCertain(bundle) && !bundle.isReplaced);
    });
}

} // namespace Storm
