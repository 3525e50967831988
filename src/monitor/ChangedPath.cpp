#include "monitor/ChangedPath.h"

#include "platform/RemoteCalls.h"
#include "project/BundleSuffixes.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

ChangedPath::Entry::Entry(QString thePath, unsigned long long theEventID)
    : path(std::move(thePath)),
      eventID(theEventID),
      found(pathExists(path)) {}

ProjectDetails ChangedPath::Entry::getProjectDetails() const {
    return ProjectDetails(path);
}

void ChangedPath::addEntry(const QString& path, unsigned long long eventID, unsigned long long fileID) {
    if (m_fileID == 0) {
        m_fileID = fileID;
        m_isProject = !bundlePathIn(path).isEmpty();
    } else if (fileID != m_fileID) {
        qWarning() << "Incorrect mismatched fileID for new entry to ChangedPath: "
                   << "\tExpected:" << m_fileID << " Got:" << fileID << ". Entry will not be added.";
        return;
    }
    m_entries.append(Entry(path, eventID));
    m_needsSorting = true;
}

const QList<ChangedPath::Entry>& ChangedPath::sortedEntries() const {
    if (std::exchange(m_needsSorting, false)) {
        std::stable_sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) {
            return a.eventID < b.eventID;
        });
    }
    return m_entries;
}

long long ChangedPath::getOldestEventID() const {
    return m_entries.isEmpty() ? -1 : static_cast<long long>(sortedEntries().first().eventID);
}

long long ChangedPath::getNewestEventID() const {
    return m_entries.isEmpty() ? -1 : static_cast<long long>(sortedEntries().last().eventID);
}

std::optional<QString> ChangedPath::getLatestPath() const {
    return m_entries.isEmpty() ? std::nullopt : std::optional(sortedEntries().last().path);
}

std::optional<QString> ChangedPath::getLatestPathFound() const {
    const auto& entries = sortedEntries();
    const auto latest =
        std::find_if(entries.rbegin(), entries.rend(), [](const Entry& entry) { return entry.found; });
    return latest == entries.rend() ? std::nullopt : std::optional(latest->path);
}

QList<ChangedPath::Entry> ChangedPath::getPriorPaths() const {
    auto entries = sortedEntries();
    if (!entries.isEmpty())
        entries.removeLast();
    return entries;
}

QDebug operator<<(QDebug debug, const ChangedPath& changed) {
    debug << "ChangedPath (isProject:" << (changed.m_isProject ? "true" : "false")
          << ", fileID:" << changed.m_fileID;
    for (const auto& entry : changed.sortedEntries())
        debug << entry.path << entry.eventID << entry.found;
    return debug;
}

} // namespace Stemhaven
