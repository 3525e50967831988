#include "monitor/RecordedBundles.h"

#include <algorithm>

namespace Stemhaven {

namespace {

bool haveSamePaths(const RecordedBundles::ByPath& a, const RecordedBundles::ByPath& b) {
    return a.size() == b.size() &&
        std::all_of(a.keyBegin(), a.keyEnd(), [&](const QString& path) { return b.contains(path); });
}

} // namespace

void RecordedBundles::replaceAll(ByPath bundles) {
    const std::lock_guard lock(m_mutex);
    if (!haveSamePaths(bundles, m_bundles))
        ++m_revision;
    for (auto it = bundles.begin(); it != bundles.end(); ++it) {
        // The database keeps whole seconds.
        const auto known = m_bundles.constFind(it.key());
        if (known != m_bundles.cend() && known->sufid == it->sufid)
            it->readAt = std::max(it->readAt, known->readAt);
    }
    m_bundles = std::move(bundles);
    m_missing.removeIf([this](const QString& path) { return !m_bundles.contains(path); });
}

bool RecordedBundles::update(
    const QStringList& vacated, const QList<std::pair<QString, RecordedBundle>>& put) {
    const std::lock_guard lock(m_mutex);
    const auto missingBefore = m_missing.size();
    for (const auto& path : vacated) {
        m_revision += m_bundles.remove(path) ? 1 : 0;
        m_missing.remove(path);
    }
    for (const auto& [path, bundle] : put) {
        m_revision += m_bundles.contains(path) ? 0 : 1;
        m_bundles[path] = bundle;
        m_missing.remove(path);
    }
    return m_missing.size() != missingBefore;
}

std::optional<RecordedBundle> RecordedBundles::at(const QString& path) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_bundles.constFind(path);
    return found == m_bundles.cend() ? std::nullopt : std::optional(*found);
}

RecordedBundles::ByPath RecordedBundles::all() const {
    const std::lock_guard lock(m_mutex);
    return m_bundles;
}

QStringList RecordedBundles::below(const QString& folder) const {
    const auto bundles = all();
    QStringList paths;
    std::copy_if(bundles.keyBegin(), bundles.keyEnd(), std::back_inserter(paths), [&](const QString& path) {
        return path.startsWith(folder);
    });
    return paths;
}

bool RecordedBundles::markMissing(const QString& path) {
    const std::lock_guard lock(m_mutex);
    if (!m_bundles.contains(path) || m_missing.contains(path))
        return false;
    m_missing.insert(path);
    return true;
}

bool RecordedBundles::setMissing(
    const QSet<QString>& paths, const std::function<bool(const QString&)>& isLookedFor) {
    const std::lock_guard lock(m_mutex);
    QSet<QString> missing;
    for (const auto& path : m_missing) {
        if (!isLookedFor(path))
            missing.insert(path);
    }
    for (const auto& path : paths) {
        if (m_bundles.contains(path))
            missing.insert(path);
    }
    return std::exchange(m_missing, missing) != missing;
}

QSet<QString> RecordedBundles::missing() const {
    const std::lock_guard lock(m_mutex);
    return m_missing;
}

quint64 RecordedBundles::revision() const {
    const std::lock_guard lock(m_mutex);
    return m_revision;
}

} // namespace Stemhaven
