#include "monitor/WatchedFolders.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

const QString fileSystemRoot = QStringLiteral("/");

QString withTrailingSlash(const QString& path) {
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

} // namespace

void WatchedFolders::addRoot(const QString& path) {
    const auto root = withTrailingSlash(path);
    if (root == fileSystemRoot)
        qWarning() << "ProjectMonitor: Root monitoring attempt detected. Ignoring...";
    else if (!m_roots.contains(root)) {
        m_roots.append(root);
        m_canonicalRoots.append(QFileInfo(root).canonicalFilePath());
    }
}

bool WatchedFolders::isRoot(const QString& path) const {
    return m_roots.contains(path + QLatin1Char('/')) || m_canonicalRoots.contains(path);
}

bool WatchedFolders::isBelowRoot(const QString& path) const {
    return std::any_of(
        m_roots.begin(), m_roots.end(), [&](const QString& root) { return path.startsWith(root); });
}

QSet<QString> WatchedFolders::ancestorsOfStrays(const QSet<QString>& knownBundles) const {
    QSet<QString> ancestors;
    for (const auto& bundle : knownBundles) {
        if (isBelowRoot(bundle))
            continue;
        const QFileInfo info(bundle);
        if (!info.exists()) {
            qDebug() << "Projects bundle path not found. Skipping: " << bundle;
            continue;
        }
        QDir folder = info.absoluteDir();
        do {
            const auto path = withTrailingSlash(folder.absolutePath());
            if (m_roots.contains(path) || !folder.exists() || ancestors.contains(path))
                break;
            ancestors.insert(path);
        } while (folder.cdUp());
    }
    if (ancestors.remove(fileSystemRoot))
        qWarning() << "Root monitoring attempt detected! Disabling...";
    return ancestors;
}

void WatchedFolders::setAncestors(QSet<QString> ancestors) {
    m_ancestors = std::move(ancestors);
}

QStringList WatchedFolders::all() const {
    return m_roots + QStringList(m_ancestors.begin(), m_ancestors.end());
}

} // namespace Stemhaven
