#include "BundleOperations.h"

#include "BundleFiles.h"

namespace Storm {

namespace fs = std::filesystem;

std::vector<Operation> BundleOperations::all() {
    return bound({
        {12, "create", &BundleOperations::create},
        {4, "untitled", &BundleOperations::createUntitled},
        {4, "untitled", &BundleOperations::nameUntitled},
        {14, "save", &BundleOperations::save},
        {10, "rename", &BundleOperations::rename},
        {10, "move", &BundleOperations::move},
        {6, "copy", &BundleOperations::copy},
        {6, "delete", &BundleOperations::remove},
        {2, "exchange-names", &BundleOperations::exchangeNames},
        {2, "take-name", &BundleOperations::takeName},
        {2, "move-by-copying", &BundleOperations::moveByCopying},
    });
}

BundleOperations::Outcome BundleOperations::create() {
    const Path path = m_tools.newName(m_tools.pickPlace(), ".logicx");
    m_tools.addBundle(path);
    return "create " + m_tools.shown(path);
}

BundleOperations::Outcome BundleOperations::createUntitled() {
    const Path path = m_tools.pickPlace() / ("Untitled " + std::to_string(++m_untitled) + ".logicx");
    m_tools.addBundle(path);
    return "create " + m_tools.shown(path);
}

BundleOperations::Outcome BundleOperations::nameUntitled() {
    std::vector<Bundle*> untitled;
    for (auto& bundle : m_tools.library().bundles()) {
        if (bundle.exists && bundle.isUntitled() && m_tools.library().isBelowRoots(bundle.path))
            untitled.push_back(&bundle);
    }
    if (untitled.empty())
        return std::nullopt;
    const Path from = m_tools.random().pick(untitled)->path;
    return m_tools.relocate("name", from, m_tools.newName(from.parent_path(), ".logicx"));
}

BundleOperations::Outcome BundleOperations::save() {
    auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    bundle->tempo = m_tools.newTempo();
    saveBundle(bundle->path, {bundle->tag, bundle->tempo});
    return "save " + m_tools.shown(bundle->path) + " with tempo " + std::to_string(bundle->tempo);
}

BundleOperations::Outcome BundleOperations::rename() {
    const auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path from = bundle->path;
    m_tools.settleBeforeMoving(from);
    return m_tools.relocate("rename", from, m_tools.newName(from.parent_path(), ".logicx"));
}

BundleOperations::Outcome BundleOperations::move() {
    const auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path from = bundle->path;
    const Path to = m_tools.pickPlace() / from.filename();
    if (fs::exists(to))
        return std::nullopt;
    m_tools.settleBeforeMoving(from);
    return m_tools.relocate("move", from, to);
}

BundleOperations::Outcome BundleOperations::copy() {
    auto* original = m_tools.pickListed();
    if (original == nullptr)
        return std::nullopt;
    m_tools.settleUnless(!original->isMoved);
    const Path to = m_tools.newName(m_tools.pickPlace(), ".logicx");
    original->isCopied = true;
    m_tools.copyBundle(*original, to);
    return "copy " + m_tools.shown(original->path) + " to " + m_tools.shown(to);
}

BundleOperations::Outcome BundleOperations::remove() {
    const auto* bundle = m_tools.pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path path = bundle->path;
    m_tools.settleBeforeLosing(path);
    return m_tools.remove("delete", path);
}

BundleOperations::Outcome BundleOperations::exchangeNames() {
    auto* first = m_tools.pickListed();
    auto* second = m_tools.pickListed();
    if (first == second)
        return std::nullopt;
    for (const auto* bundle : {first, second})
        m_tools.settleUnless(isCertain(*bundle) && !bundle->isMoved);
    const Path a = first->path;
    const Path b = second->path;
    first->isReplaced = true;
    second->isReplaced = true;
    const Path between = m_tools.newName(a.parent_path(), ".logicx");
    std::string said = m_tools.relocate("exchange", a, between);
    said += ", " + m_tools.relocate("move", b, a);
    return said + ", " + m_tools.relocate("move", between, b);
}

BundleOperations::Outcome BundleOperations::takeName() {
    auto* bundle = m_tools.pickListed();
    // Where another's record stands as well, the new bundle could be that one, put back.
    if (bundle == nullptr || !m_tools.library().isOnlyOneOfItsName(*bundle))
        return std::nullopt;
    m_tools.settleUnless(isCertain(*bundle) && !bundle->isMoved);
    const Path from = bundle->path;
    const auto said = m_tools.relocate("set aside", from, m_tools.newName(from.parent_path(), ".logicx"));
    bundle->isReplaced = true;
    m_tools.addBundle(from);
    return said + ", create " + m_tools.shown(from);
}

BundleOperations::Outcome BundleOperations::moveByCopying() {
    auto* bundle = m_tools.pickListed();
    // A running program may see the copy beside the original and take it for what it is then.
    if (bundle == nullptr || m_tools.callbacks().programIsRunning() || !isCertain(*bundle))
        return std::nullopt;
    const Path from = bundle->path;
    const Path to = m_tools.newName(m_tools.pickPlace(), ".logicx");
    fs::copy(from, to, fs::copy_options::recursive);
    fs::remove_all(from);
    m_tools.library().relocate(from, to);
    bundle->isRestored = true;
    return "move by copying and deleting " + m_tools.shown(from) + " to " + m_tools.shown(to);
}

} // namespace Storm
