#include "Operations.h"

#include "BundleFiles.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>
#include <utility>

namespace Storm {

namespace fs = std::filesystem;

namespace {

// What has misled programs before: quotes, patterns and place holders of SQL and of formats, other scripts.
constexpr std::array<std::string_view, 10> words{"Song",        "Don't Stop", "50%1 Off", "snake_case",
                                                 "Grüße",       "a\"b",       "夜",       "#1 & more; $HOME",
                                                 "Take (live)", "Two  blanks"};

} // namespace

Operations::Operations(LibraryModel& library, DemoLibrary::Random& random, Callbacks callbacks)
    : m_library(library),
      m_random(random),
      m_callbacks(std::move(callbacks)) {}

void Operations::prepare() {
    constexpr int bundles = 10;
    for (const auto& root : m_library.roots())
        fs::create_directories(root);
    fs::create_directories(m_library.outside());
    createFolder();
    createFolder();
    for (int i = 0; i < bundles; ++i)
        create();
}

std::string Operations::doOne() {
    static constexpr std::array<std::pair<int, Operation>, 17> weighted{{
        {12, &Operations::create},
        {4, &Operations::createUntitled},
        {4, &Operations::nameUntitled},
        {14, &Operations::save},
        {10, &Operations::rename},
        {10, &Operations::moveBundle},
        {6, &Operations::copyBundle},
        {6, &Operations::deleteBundle},
        {2, &Operations::exchangeNames},
        {2, &Operations::takeName},
        {2, &Operations::moveByCopying},
        {4, &Operations::createFolder},
        {6, &Operations::renameFolder},
        {6, &Operations::moveFolder},
        {1, &Operations::deleteFolder},
        {4, &Operations::moveOut},
        {6, &Operations::moveBack},
    }};
    const int sum = std::accumulate(
        weighted.begin(), weighted.end(), 0, [](int all, const auto& entry) { return all + entry.first; });

    if (std::exchange(m_owesSettling, false))
        m_callbacks.settle();
    for (;;) {
        int drawn = m_random.between(0, sum - 1);
        auto entry = weighted.begin();
        for (; drawn >= entry->first; ++entry)
            drawn -= entry->first;
        // Not every operation finds what it needs.
        if (const auto done = (this->*entry->second)())
            return *done;
    }
}

std::optional<std::string> Operations::create() {
    const Path path = newName(pickPlace(), ".logicx");
    addBundle(path);
    return "create " + shown(path);
}

std::optional<std::string> Operations::createUntitled() {
    const Path path = pickPlace() / ("Untitled " + std::to_string(++m_names) + ".logicx");
    addBundle(path);
    return "create " + shown(path);
}

std::optional<std::string> Operations::nameUntitled() {
    std::vector<Bundle*> untitled;
    for (auto& bundle : m_library.bundles()) {
        if (bundle.exists && bundle.isUntitled() && m_library.isBelowRoots(bundle.path))
            untitled.push_back(&bundle);
    }
    if (untitled.empty())
        return std::nullopt;
    const Path from = m_random.pick(untitled)->path;
    return relocate("name", from, newName(from.parent_path(), ".logicx"));
}

std::optional<std::string> Operations::save() {
    auto* bundle = pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    bundle->tempo = newTempo();
    saveBundle(bundle->path, {bundle->tag, bundle->tempo});
    return "save " + shown(bundle->path) + " with tempo " + std::to_string(bundle->tempo);
}

std::optional<std::string> Operations::rename() {
    const auto* bundle = pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path from = bundle->path;
    settleBeforeMoving(from);
    return relocate("rename", from, newName(from.parent_path(), ".logicx"));
}

std::optional<std::string> Operations::moveBundle() {
    const auto* bundle = pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path from = bundle->path;
    const Path to = pickPlace() / from.filename();
    if (fs::exists(to))
        return std::nullopt;
    settleBeforeMoving(from);
    return relocate("move", from, to);
}

std::optional<std::string> Operations::copyBundle() {
    auto* original = pickListed();
    if (original == nullptr)
        return std::nullopt;
    settleUnless(!original->isMoved);
    const Path to = newName(pickPlace(), ".logicx");
    fs::copy(original->path, to, fs::copy_options::recursive);
    original->isCopied = true;
    m_library.addBundle(to, original->tempo);
    return "copy " + shown(original->path) + " to " + shown(to);
}

std::optional<std::string> Operations::deleteBundle() {
    const auto* bundle = pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    const Path path = bundle->path;
    settleBeforeLosing(path);
    fs::remove_all(path);
    m_library.remove(path);
    return "delete " + shown(path);
}

std::optional<std::string> Operations::exchangeNames() {
    auto* first = pickListed();
    auto* second = pickListed();
    if (first == second)
        return std::nullopt;
    for (const auto* bundle : {first, second})
        settleUnless(bundle->recordId && !bundle->isMoved && !bundle->isCopied);
    const Path a = first->path;
    const Path b = second->path;
    first->isReplaced = true;
    second->isReplaced = true;
    const Path between = newName(a.parent_path(), ".logicx");
    std::string said = relocate("exchange", a, between);
    said += ", " + relocate("move", b, a);
    return said + ", " + relocate("move", between, b);
}

std::optional<std::string> Operations::takeName() {
    auto* bundle = pickListed();
    if (bundle == nullptr)
        return std::nullopt;
    settleUnless(bundle->recordId && !bundle->isMoved && !bundle->isCopied);
    const Path from = bundle->path;
    const auto said = relocate("set aside", from, newName(from.parent_path(), ".logicx"));
    bundle->isReplaced = true;
    addBundle(from);
    return said + ", create " + shown(from);
}

std::optional<std::string> Operations::moveByCopying() {
    auto* bundle = pickListed();
    // A running program may see the copy beside the original and take it for what it is then.
    if (bundle == nullptr || m_callbacks.programIsRunning())
        return std::nullopt;
    if (!bundle->recordId || bundle->isMoved || bundle->isCopied)
        return std::nullopt;
    const Path from = bundle->path;
    const Path to = newName(pickPlace(), ".logicx");
    fs::copy(from, to, fs::copy_options::recursive);
    fs::remove_all(from);
    m_library.relocate(from, to);
    // The original's number is free for another, but still stands in the note.
    m_owesSettling = true;
    return "move by copying and deleting " + shown(from) + " to " + shown(to);
}

std::optional<std::string> Operations::createFolder() {
    const Path path = newName(pickPlace(), "");
    fs::create_directory(path);
    m_library.addFolder(path);
    return "create folder " + shown(path);
}

std::optional<std::string> Operations::renameFolder() {
    const auto from = pickFolder();
    if (!from)
        return std::nullopt;
    settleBeforeMoving(*from);
    return relocate("rename folder", *from, newName(from->parent_path(), ""));
}

std::optional<std::string> Operations::moveFolder() {
    const auto from = pickFolder();
    if (!from)
        return std::nullopt;
    const Path place = pickPlace();
    const Path to = place / from->filename();
    const bool intoItself = (place / "").string().starts_with((*from / "").string());
    if (intoItself || fs::exists(to))
        return std::nullopt;
    settleBeforeMoving(*from);
    return relocate("move folder", *from, to);
}

std::optional<std::string> Operations::deleteFolder() {
    const auto path = pickFolder();
    if (!path)
        return std::nullopt;
    settleBeforeLosing(*path);
    fs::remove_all(*path);
    m_library.remove(*path);
    return "delete folder " + shown(*path);
}

std::optional<std::string> Operations::moveOut() {
    const auto* bundle = pickListed();
    const auto folder = pickFolder();
    const bool whole = folder && m_random.chance(50);
    if (!whole && bundle == nullptr)
        return std::nullopt;
    const Path from = whole ? *folder : bundle->path;
    const Path to = m_library.outside() / from.filename();
    if (fs::exists(to))
        return std::nullopt;
    settleBeforeLosing(from);
    // Were it a copy that the catalogue does not know, it could come back when its original is elsewhere.
    const auto leaving = m_library.bundlesIn(from);
    settleUnless(std::all_of(leaving.begin(), leaving.end(), [](const Bundle* each) {
        return each->recordId || each->isUntitled();
    }));
    return relocate("move out", from, to);
}

std::optional<std::string> Operations::moveBack() {
    std::vector<Path> absent;
    for (const auto& entry : fs::directory_iterator(m_library.outside()))
        absent.push_back(entry.path());
    if (absent.empty())
        return std::nullopt;
    // The order of a folder is the file system's.
    std::sort(absent.begin(), absent.end());
    const Path from = m_random.pick(absent);
    const Path to = pickPlace() / from.filename();
    if (fs::exists(to))
        return std::nullopt;
    return relocate("move back", from, to);
}

Bundle* Operations::pickListed() {
    std::vector<Bundle*> listed;
    for (auto& bundle : m_library.bundles()) {
        if (m_library.isListed(bundle))
            listed.push_back(&bundle);
    }
    return listed.empty() ? nullptr : m_random.pick(listed);
}

Operations::Path Operations::pickPlace() {
    auto places = m_library.folders();
    places.insert(places.end(), m_library.roots().begin(), m_library.roots().end());
    return m_random.pick(places);
}

std::optional<Operations::Path> Operations::pickFolder() {
    const auto folders = m_library.folders();
    return folders.empty() ? std::nullopt : std::optional(m_random.pick(folders));
}

Operations::Path Operations::newName(const Path& folder, const std::string& suffix) {
    const std::string word(m_random.pick(words));
    return folder / (word + " " + std::to_string(++m_names) + suffix);
}

double Operations::newTempo() {
    constexpr double slowest = 40;
    constexpr double step = 0.125;
    return slowest + step * ++m_tempos;
}

void Operations::addBundle(const Path& path) {
    const auto& bundle = m_library.addBundle(path, newTempo());
    writeBundle(path, {bundle.tag, bundle.tempo});
}

std::string Operations::relocate(const std::string& verb, const Path& from, const Path& to) {
    fs::rename(from, to);
    m_library.relocate(from, to);
    return verb + " " + shown(from) + " to " + shown(to);
}

void Operations::settleBeforeMoving(const Path& path) {
    for (const auto* bundle : m_library.bundlesIn(path)) {
        if (bundle->isCopied) {
            m_callbacks.settle();
            return;
        }
    }
}

void Operations::settleBeforeLosing(const Path& path) {
    for (const auto* bundle : m_library.bundlesIn(path)) {
        if (bundle->isCopied || bundle->isReplaced) {
            m_callbacks.settle();
            return;
        }
    }
}

void Operations::settleUnless(bool determined) {
    if (!determined)
        m_callbacks.settle();
}

std::string Operations::shown(const Path& path) const {
    return "\"" + path.lexically_relative(m_library.outside().parent_path()).string() + "\"";
}

} // namespace Storm
