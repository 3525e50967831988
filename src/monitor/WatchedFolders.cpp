#include "monitor/WatchedFolders.h"

#include "platform/RemoteCalls.h"

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
        m_canonicalRoots.append(RemoteCalls::run(root, [root] {
                                    return QFileInfo(root).canonicalFilePath();
                                }).value_or(QString()));
    }
}

QString WatchedFolders::asRoot(const QString& path) {
    return withTrailingSlash(path);
}

bool WatchedFolders::isRoot(const QString& path) const {
    return m_roots.contains(path + QLatin1Char('/')) || m_canonicalRoots.contains(path);
}

QString WatchedFolders::rootAbove(const QString& path) const {
    QString innermost;
    for (const auto& root : m_roots) {
        if (path.startsWith(root) && root.size() > innermost.size())
            innermost = root;
    }
    return innermost;
}

QSet<QString> WatchedFolders::ancestorsOf(const QStringList& strayBundles) const {
    QSet<QString> ancestors;
    for (const auto& bundle : strayBundles) {
        if (!pathExists(bundle)) {
            qDebug() << "Projects bundle path not found. Skipping: " << bundle;
            continue;
        }
        QDir folder = QFileInfo(bundle).absoluteDir();
        do {
            const auto path = withTrailingSlash(folder.absolutePath());
            if (m_roots.contains(path) || !pathExists(path) || ancestors.contains(path))
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

void WatchedFolders::moveAncestors(const QString& from, const QString& to) {
    const auto oldPrefix = withTrailingSlash(from);
    // The old paths stay: in an exchange another one comes to them. One too many does no harm.
    const auto ancestors = m_ancestors;
    for (const auto& ancestor : ancestors) {
        if (ancestor.startsWith(oldPrefix))
            m_ancestors.insert(withTrailingSlash(to) + ancestor.mid(oldPrefix.size()));
    }
}

QStringList WatchedFolders::all() const {
    return m_roots + QStringList(m_ancestors.begin(), m_ancestors.end());
}

} // namespace Stemhaven
