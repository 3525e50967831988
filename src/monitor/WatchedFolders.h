#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// Which folders the monitor looks at: the user's root folders, and the folders above recorded projects that
/// lie outside all of them. Every path ends in "/"; "/" itself is never among them.
class WatchedFolders {
public:
    /// Adds "/" where it is missing. Refuses "/" and what is there already.
    void addRoot(const QString& path);

    const QStringList& roots() const { return m_roots; }

    bool isBelowRoot(const QString& path) const;
    /// path has no trailing "/". A root that was chosen through a link is known by its canonical path too.
    bool isRoot(const QString& path) const;

    bool isAncestor(const QString& path) const { return m_ancestors.contains(path + QLatin1Char('/')); }

    /// The folders above those of the known bundles that lie below no root. Looks at the disk for each such
    /// bundle, so not on the GUI thread.
    QSet<QString> ancestorsOfStrays(const QSet<QString>& knownBundles) const;

    void setAncestors(QSet<QString> ancestors);

    const QSet<QString>& ancestors() const { return m_ancestors; }

    /// The roots followed by the ancestors.
    QStringList all() const;

private:
    QStringList m_roots;
    QStringList m_canonicalRoots;
    QSet<QString> m_ancestors;
};

} // namespace Stemhaven
