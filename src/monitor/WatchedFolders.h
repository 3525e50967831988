#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// Which folders the monitor looks at: the user's root folders, and the folders above recorded projects that
/// lie outside all of them. Every path ends in "/"; "/" itself is never among them.
class WatchedFolders {
public:
    /// Adds "/" where it is missing. Refuses "/" and what is there already. Looks at the disk.
    void addRoot(const QString& path);

    /// The same path as it is among the roots.
    static QString asRoot(const QString& path);

    const QStringList& roots() const { return m_roots; }

    bool isBelowRoot(const QString& path) const { return !rootAbove(path).isEmpty(); }

    /// The innermost root above path, empty where there is none.
    QString rootAbove(const QString& path) const;
    /// path has no trailing "/". A root that was chosen through a link is known by its canonical path too.
    bool isRoot(const QString& path) const;

    bool isAncestor(const QString& path) const { return m_ancestors.contains(path + QLatin1Char('/')); }

    /// The folders above these bundles. Looks at the disk for each bundle, so not on the GUI thread.
    QSet<QString> ancestorsOf(const QStringList& strayBundles) const;

    void setAncestors(QSet<QString> ancestors);
    /// A folder was moved, with those among the ancestors that it is or holds: they are ancestors at their
    /// new paths as well. No path ends in "/".
    void moveAncestors(const QString& from, const QString& to);

    const QSet<QString>& ancestors() const { return m_ancestors; }

    /// The roots followed by the ancestors.
    QStringList all() const;

private:
    QStringList m_roots;
    QStringList m_canonicalRoots;
    QSet<QString> m_ancestors;
};

} // namespace Stemhaven
