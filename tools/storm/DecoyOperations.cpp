#include "DecoyOperations.h"

#include "BundleFiles.h"

#include <array>
#include <fstream>

namespace Storm {

namespace fs = std::filesystem;

std::vector<Operation> DecoyOperations::all() {
    return bound({
        {4, "apostrophes", &DecoyOperations::doubleApostrophes},
        {2, "hidden", &DecoyOperations::hide},
        {2, "hidden", &DecoyOperations::unhide},
        {2, "nested-suffix", &DecoyOperations::nestSuffix},
        {2, "linked-resources", &DecoyOperations::linkResources},
    });
}

/// They stay in the name of a bundle, a copy or a folder for what is done to it later.
DecoyOperations::Outcome DecoyOperations::doubleApostrophes() {
    constexpr std::array<const char*, 3> words{"Song (12'' Mix)", "It''s", "''''"};
    auto* bundle = m_tools.pickListed();
    const auto folder = m_tools.pickFolder();
    const std::string name = std::string(m_tools.random().pick(words)) + " n" + std::to_string(++m_names);
    if (folder && m_tools.random().chance(30)) {
        m_tools.settleBeforeMoving(*folder);
        return m_tools.relocate("rename folder", *folder, folder->parent_path() / name);
    }
    if (bundle == nullptr)
        return std::nullopt;
    const Path from = bundle->path;
    const Path to = from.parent_path() / (name + ".logicx");
    if (m_tools.random().chance(30)) {
        m_tools.settleUnless(!bundle->isMoved);
        bundle->isCopied = true;
        m_tools.copyBundle(*bundle, to);
        return "copy " + m_tools.shown(from) + " to " + m_tools.shown(to);
    }
    m_tools.settleBeforeMoving(from);
    return m_tools.relocate("rename", from, to);
}

/// What file servers and sync clients leave beside a bundle: a file with its attributes, or itself with its
/// note while it is not complete.
DecoyOperations::Outcome DecoyOperations::hide() {
    constexpr std::size_t attributesSize = 4096;
    const auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path folder = bundle->path.parent_path();
    const std::string name = bundle->path.filename();
    const Path file = folder / ("._" + name);
    const Path hiddenCopy = folder / ("." + name);
    if (fs::exists(hiddenCopy)) {
        saveBundle(hiddenCopy, {0, m_tools.newTempo()});
        return "save hidden " + m_tools.shown(hiddenCopy) + addMarker();
    }
    std::ofstream(file) << std::string(attributesSize, '\0');
    fs::copy(bundle->path, hiddenCopy, fs::copy_options::recursive);
    return "create hidden " + m_tools.shown(file) + " and " + m_tools.shown(hiddenCopy) + addMarker();
}

/// A bundle that is written under a hidden name gets its own when it is complete.
DecoyOperations::Outcome DecoyOperations::unhide() {
    const Path path = m_tools.newName(m_tools.pickPlace(), ".logicx");
    const Path hidden = path.parent_path() / ("." + path.filename().string());
    auto& bundle = m_tools.library().addBundle(path, m_tools.newTempo());
    writeBundle(hidden, {bundle.tag, bundle.tempo});
    fs::rename(hidden, path);
    return "create hidden and show " + m_tools.shown(path);
}

/// A folder beside a bundle that has the bundle's name and more, with bundles in it.
DecoyOperations::Outcome DecoyOperations::nestSuffix() {
    const auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path folder = bundle->path.string() + " backups";
    const Path same = folder / bundle->path.filename();
    const Path older = folder / ("Older " + bundle->path.filename().string());
    const auto write = fs::exists(same) ? saveBundle : writeBundle;
    for (const auto& inner : {same, older})
        write(inner, {0, m_tools.newTempo()});
    return "write bundles into " + m_tools.shown(folder) + addMarker();
}

DecoyOperations::Outcome DecoyOperations::linkResources() {
    const auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path ready = m_tools.library().store() / "Linked.logicx";
    const Path path = m_tools.newName(m_tools.pickPlace(), ".logicx");
    writeBundle(ready, {0, m_tools.newTempo()});
    fs::remove_all(ready / "Resources");
    const Path lender = bundle->path;
    fs::create_directory_symlink(lender / "Resources", ready / "Resources");
    fs::rename(ready, path);
    return "create " + m_tools.shown(path) + " with the Resources of " + m_tools.shown(lender) + addMarker();
}

std::string DecoyOperations::addMarker() {
    const Path path = m_tools.newName(m_tools.pickPlace(), ".logicx");
    m_tools.addBundle(path);
    return ", create " + m_tools.shown(path);
}

} // namespace Storm
