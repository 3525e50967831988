#include "IdentityOperations.h"

#include "BundleFiles.h"

namespace Storm {

namespace fs = std::filesystem;

std::vector<Operation> IdentityOperations::all() {
    return bound({
        {3, "restore", &IdentityOperations::backUpAndDelete},
        {4, "restore", &IdentityOperations::restore},
        {3, "put-back", &IdentityOperations::putBack},
        {2, "empty-note", &IdentityOperations::emptyNote},
        {3, "copy-then-move", &IdentityOperations::copyThenMove},
        {2, "foreign", &IdentityOperations::bringForeign},
    });
}

IdentityOperations::Outcome IdentityOperations::backUpAndDelete() {
    constexpr int mostCreated = 2;
    auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    m_tools.settleBeforeLosing(bundle->path);
    m_tools.settleUnless(isCertain(*bundle));
    const Path stored = newStored(bundle->path);
    fs::copy(bundle->path, stored, fs::copy_options::recursive);
    m_backups.push_back({bundle->tag, stored});
    std::string said = m_tools.remove("back up and delete", bundle->path);
    // They may get the number that has become free, which common file systems look for in the same folder.
    for (int created = m_tools.random().between(0, mostCreated); created > 0; --created) {
        const Path path = m_tools.newName(bundle->path.parent_path(), ".logicx");
        m_tools.addBundle(path);
        said += ", create " + m_tools.shown(path);
    }
    return said;
}

/// To the place where it was deleted, or to another when that is gone or as chance has it.
IdentityOperations::Outcome IdentityOperations::restore() {
    auto& library = m_tools.library();
    // Of what was on a drive that is away, nobody can tell that it was deleted there.
    if (m_backups.empty() || library.absentRoot())
        return std::nullopt;
    const auto at = m_backups.begin() + m_tools.random().between(0, static_cast<int>(m_backups.size()) - 1);
    const Backup backup = *at;
    m_backups.erase(at);
    auto& bundle = library.bundles()[static_cast<std::size_t>(backup.tag - 1)];
    const bool isPlaceFree = fs::exists(bundle.path.parent_path()) && library.isBelowRoots(bundle.path) &&
        library.isOnlyOneOfItsName(bundle);
    if (!isPlaceFree || m_tools.random().chance(30))
        bundle.path = m_tools.newName(m_tools.pickPlace(), ".logicx");
    fs::rename(backup.stored, bundle.path);
    bundle.exists = true;
    bundle.isMoved = true;
    bundle.isRestored = true;
    return "restore " + m_tools.shown(backup.stored) + " as " + m_tools.shown(bundle.path);
}

/// A version without the note, as of a backup that is older than the record.
IdentityOperations::Outcome IdentityOperations::putBack() {
    auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    m_tools.settleUnless(isCertain(*bundle) && !bundle->isMoved && !bundle->isReplaced);
    bundle->tempo = m_tools.newTempo();
    bundle->isBare = true;
    const Path version = newStored(bundle->path);
    writeBundle(version, {bundle->tag, bundle->tempo});
    fs::remove_all(bundle->path);
    fs::rename(version, bundle->path);
    return "put back " + m_tools.shown(bundle->path) + " without note";
}

IdentityOperations::Outcome IdentityOperations::emptyNote() {
    auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    m_tools.settleUnless(isCertain(*bundle) && !bundle->isMoved && !bundle->isReplaced);
    bundle->tempo = m_tools.newTempo();
    bundle->isBare = true;
    fs::resize_file(bundle->path / "Resources/Stemhaven.plist", 0);
    saveBundle(bundle->path, {bundle->tag, bundle->tempo});
    return "empty the note of and save " + m_tools.shown(bundle->path);
}

/// What has the identity of the record is the original, wherever it is found first.
IdentityOperations::Outcome IdentityOperations::copyThenMove() {
    auto* original = m_tools.pickListed();
    if (original == nullptr)
        return std::nullopt;
    m_tools.settleUnless(isCertain(*original));
    const Path from = original->path;
    const Path to = m_tools.newName(m_tools.pickPlace(), ".logicx");
    const Path copy = m_tools.newName(m_tools.pickPlace(), ".logicx");
    original->isCopied = true;
    if (m_tools.callbacks().programIsRunning()) {
        // It could see the copy at a moment at which the original is at neither of its places. So the copy
        // comes in when the original has moved.
        const Path stored = newStored(from);
        auto& copied = m_tools.copyBundle(*original, stored);
        m_tools.relocate("move", from, to);
        fs::rename(stored, copy);
        copied.path = copy;
    } else {
        m_tools.copyBundle(*original, copy);
        m_tools.relocate("move", from, to);
    }
    return "copy " + m_tools.shown(from) + " to " + m_tools.shown(copy) + " and move it to " +
        m_tools.shown(to);
}

/// Its note names a record that is another bundle's here. That bundle may be deleted.
IdentityOperations::Outcome IdentityOperations::bringForeign() {
    std::vector<std::int64_t> ids;
    for (const auto& bundle : m_tools.library().bundles()) {
        if (bundle.recordId)
            ids.push_back(*bundle.recordId);
    }
    if (ids.empty())
        return std::nullopt;
    const auto id =
        ids[static_cast<std::size_t>(m_tools.random().between(0, static_cast<int>(ids.size()) - 1))];
    const Path path = m_tools.newName(m_tools.pickPlace(), ".logicx");
    const Path stored = newStored(path);
    auto& bundle = m_tools.addBundle(stored);
    writeForeignNote(stored, id);
    fs::rename(stored, path);
    bundle.path = path;
    return "bring in " + m_tools.shown(path) + ", recorded elsewhere as " + std::to_string(id);
}

IdentityOperations::Path IdentityOperations::newStored(const Path& path) {
    const Path folder = m_tools.library().store() / std::to_string(++m_stored);
    fs::create_directory(folder);
    return folder / path.filename();
}

} // namespace Storm
