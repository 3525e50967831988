#include "Toolbox.h"

#include "BundleFiles.h"

#include <algorithm>
#include <array>
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

Toolbox::Toolbox(LibraryModel& library, DemoLibrary::Random& random, Callbacks callbacks)
    : m_library(library),
      m_random(random),
      m_callbacks(std::move(callbacks)) {}

Bundle* Toolbox::pickListed() {
    std::vector<Bundle*> listed;
    for (auto& bundle : m_library.bundles()) {
        if (m_library.isListed(bundle) && m_library.isBelowRoots(bundle.path))
            listed.push_back(&bundle);
    }
    return listed.empty() ? nullptr : m_random.pick(listed);
}

Toolbox::Path Toolbox::pickPlace() {
    auto places = m_library.folders();
    const auto roots = m_library.presentRoots();
    places.insert(places.end(), roots.begin(), roots.end());
    return m_random.pick(places);
}

std::optional<Toolbox::Path> Toolbox::pickFolder() {
    const auto folders = m_library.folders();
    return folders.empty() ? std::nullopt : std::optional(m_random.pick(folders));
}

Toolbox::Path Toolbox::newName(const Path& folder, const std::string& suffix) {
    const std::string word(m_random.pick(words));
    return folder / (word + " " + std::to_string(++m_names) + suffix);
}

double Toolbox::newTempo() {
    constexpr double slowest = 40;
    constexpr double step = 0.125;
    return slowest + step * ++m_tempos;
}

Bundle& Toolbox::addBundle(const Path& path) {
    auto& bundle = m_library.addBundle(path, newTempo());
    writeBundle(path, {bundle.tag, bundle.tempo});
    return bundle;
}

Bundle& Toolbox::copyBundle(const Bundle& original, const Path& to) {
    fs::copy(original.path, to, fs::copy_options::recursive);
    return m_library.addBundle(to, original.tempo);
}

std::string Toolbox::relocate(const std::string& verb, const Path& from, const Path& to) {
    fs::rename(from, to);
    m_library.relocate(from, to);
    return verb + " " + shown(from) + " to " + shown(to);
}

std::string Toolbox::remove(const std::string& verb, const Path& path) {
    fs::remove_all(path);
    m_library.remove(path);
    return verb + " " + shown(path);
}

void Toolbox::settleBeforeMoving(const Path& path) {
    const auto moving = m_library.bundlesIn(path);
    settleUnless(std::none_of(moving.begin(), moving.end(), [](const Bundle* bundle) {
        return bundle->isCopied || bundle->isBare;
    }));
}

void Toolbox::settleBeforeLosing(const Path& path) {
    const auto leaving = m_library.bundlesIn(path);
    settleUnless(std::none_of(leaving.begin(), leaving.end(), [](const Bundle* bundle) {
        return bundle->isCopied || bundle->isBare || bundle->isReplaced;
    }));
}

void Toolbox::settleUnless(bool determined) {
    if (!determined)
        m_callbacks.settle();
}

std::string Toolbox::shown(const Path& path) const {
    return "\"" + path.lexically_relative(m_library.outside().parent_path()).string() + "\"";
}

bool isCertain(const Bundle& bundle) {
    return bundle.recordId && !bundle.isCopied && !bundle.isBare && !bundle.isRestored;
}

} // namespace Storm
