#include "monitor/EventFilter.h"

#include "platform/RemoteCalls.h"
#include "project/BundleSuffixes.h"

#include <QDebug>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace Stemhaven {

namespace {

// The program's own note in a bundle, and what it is written through.
const QString noteName = QStringLiteral("Stemhaven.plist");

bool isFolder(const QString& path) {
    return RemoteCalls::run(path, [path] { return QFileInfo(path).isDir(); }).value_or(false);
}

class Filter {
public:
    explicit Filter(const EventContext& context) : m_folders(context.folders), m_context(context) {}

    void take(const FileEvent& event) {
        m_batch.lastEventID = std::max<unsigned long long>(m_batch.lastEventID, event.eventID);
        if ((event.flags & FileEvent::MustScanSubDirs) != 0)
            m_batch.needsSearch = true;

        const QString path = event.path.endsWith(QLatin1Char('/')) ? event.path.chopped(1) : event.path;
        const bool renamed = (event.flags & FileEvent::ItemRenamed) != 0;
        const QString bundlePath = bundlePathIn(path);
        // A volume came to a watched folder or left it, with all that is on it.
        const bool isMount = (event.flags & (FileEvent::Mount | FileEvent::Unmount)) != 0;
        if (isMount && (m_folders.isRoot(path) || m_folders.isBelowRoot(path)))
            m_batch.needsSearch = true;
        if (m_folders.isRoot(path)) {
            if (renamed)
                m_batch.renamedRoots.append(path);
        } else if (!bundlePath.isEmpty()) {
            if (matters(event, bundlePath))
                takeBundleEvent(event, path, bundlePath);
        } else if (renamed && event.fileID != 0) {
            takeFolderRename(event, path);
        }
    }

    const EventBatch& batch() const { return m_batch; }

private:
    /// What is hidden is passed over, as the search does. Projects elsewhere that are not on record are none
    /// of ours.
    bool matters(const FileEvent& event, const QString& bundlePath) const {
        const auto root = m_folders.rootAbove(bundlePath);
        if (!root.isEmpty())
            return !QStringView(bundlePath).mid(root.size() - 1).contains(QLatin1String("/."));
        return m_context.isRecorded(bundlePath) || comesFromSight(event.fileID);
    }

    bool comesFromSight(unsigned long long fileID) const {
        return fileID != 0 && (m_context.isPendingMove(fileID) || movesNow(fileID));
    }

    void takeFolderRename(const FileEvent& event, const QString& path) {
        if (m_folders.isAncestor(path) || m_folders.isBelowRoot(path) || comesFromSight(event.fileID)) {
            qDebug() << "ProjectMonitor: Folder moved/renamed! "
                     << "fileID: " << event.fileID << " docID: " << event.docID
                     << " eventID:" << event.eventID;
            m_batch.moves.append({path, event.eventID, event.fileID});
        }
        // The bundles below it have new paths and send no events of their own.
        if (m_folders.isBelowRoot(path) && isFolder(path))
            m_batch.needsSearch = true;
    }

    void takeBundleEvent(const FileEvent& event, const QString& path, const QString& bundlePath) {
        if (path.contains(noteName))
            return;
        const bool modified = event.flags == 0 || (event.flags & FileEvent::ItemModified) != 0;
        if ((event.flags & FileEvent::ItemRenamed) != 0) {
            if (path == bundlePath && event.fileID != 0) {
                qDebug() << "ProjectMonitor: Project was moved or renamed! "
                         << " fileID: " << event.fileID << " docID: " << event.docID;
                m_batch.moves.append({path, event.eventID, event.fileID});
            } else {
                qDebug() << "ProjectMonitor: Project file was moved or renamed! "
                         << " fileID: " << event.fileID << " docID: " << event.docID;
                addChanged(bundlePath);
            }
        }
        if ((event.flags & FileEvent::ItemCreated) != 0) {
            qDebug() << "ProjectMonitor: Project file was created: " << path;
            addChanged(bundlePath);
        }
        if (!modified && (event.flags & FileEvent::ItemRemoved) != 0) {
            qDebug() << "ProjectMonitor: Project was removed!"
                     << " fileID: " << event.fileID << " docID: " << event.docID;
            addChanged(bundlePath);
        } else if (modified) {
            qDebug() << "ProjectMonitor: Project was changed! Path: " << path << " fileID: " << event.fileID
                     << " docID: " << event.docID << " eventFlag:" << event.flags;
            addChanged(bundlePath);
        }
    }

    bool movesNow(unsigned long long fileID) const {
        return std::any_of(m_batch.moves.begin(), m_batch.moves.end(), [&](const EventBatch::Move& move) {
            return move.fileID == fileID;
        });
    }

    void addChanged(const QString& bundlePath) {
        if (m_changed.contains(bundlePath))
            return;
        m_changed.insert(bundlePath);
        m_batch.changedBundles.append(bundlePath);
    }

    const WatchedFolders& m_folders;
    const EventContext& m_context;
    EventBatch m_batch;
    QSet<QString> m_changed;
};

} // namespace

EventBatch filterEvents(const QList<FileEvent>& events, const EventContext& context) {
    Filter filter(context);
    for (const auto& event : events)
        filter.take(event);
    return filter.batch();
}

} // namespace Stemhaven
