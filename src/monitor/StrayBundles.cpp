#include "monitor/StrayBundles.h"

#include "app/Shutdown.h"
#include "monitor/FoundBundle.h"
#include "platform/RemoteCalls.h"
#include "project/BundleSuffixes.h"
#include "project/ProjectDetails.h"

#include <QDir>

#include <optional>

namespace Stemhaven {

namespace {

/// Looks for a bundle at the recorded path with other names of its folders, one level after the other.
class RenamedPathSearch {
public:
    /// looksLeft bounds the searches for all strays together, where folders of thousands lie on the way.
    RenamedPathSearch(const QString& path, const RecordedBundle& recorded, int& looksLeft)
        : m_names(path.split(u'/', Qt::SkipEmptyParts)),
          m_recorded(recorded),
          m_looksLeft(looksLeft) {}

    std::optional<QString> run() { return lookIn(QStringLiteral("/"), 0); }

private:
    std::optional<QString> lookIn(const QString& folder, qsizetype level) {
        if (level == m_names.size() || m_looksLeft <= 0 || Shutdown::hasBegun() ||
            !RemoteCalls::mountOf(folder).isEmpty())
            return std::nullopt;
        const bool isLast = level + 1 == m_names.size();
        const QString expected = folder + m_names[level];
        if (isLast ? isTheBundle(expected) : QDir(expected).exists())
            return isLast ? std::optional(expected) : lookIn(expected + u'/', level + 1);
        const auto entries = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
        for (const auto& name : entries) {
            if (isBundlePath(name) != isLast || m_looksLeft <= 0)
                continue;
            --m_looksLeft;
            const QString path = folder + name;
            const auto found = isLast ? (isTheBundle(path) ? std::optional(path) : std::nullopt)
                                      : lookIn(path + u'/', level + 1);
            if (found)
                return found;
        }
        return std::nullopt;
    }

    /// The identity alone proves nothing, as its number may have gone to a new bundle.
    bool isTheBundle(const QString& path) const {
        const ProjectDetails details(path);
        if (!details.sufid.valid || details.sufid != m_recorded.sufid)
            return false;
        const auto found = FoundBundle::read(path);
        if (found.note)
            return found.note->second == details.sufid.toString().toStdString();
        return details.filename == m_names.last() && found.savedAt == m_recorded.lastModified;
    }

    const QStringList m_names;
    const RecordedBundle m_recorded;
    int& m_looksLeft;
};

} // namespace

StrayBundles StrayBundles::find(const RecordedBundles::ByPath& recorded, const WatchedFolders& folders) {
    int looksLeft = 20'000;
    StrayBundles strays;
    for (auto it = recorded.begin(); it != recorded.end(); ++it) {
        // Where a record gave up its place, there is nowhere to look.
        if (!it.key().startsWith(u'/') || folders.isBelowRoot(it.key()))
            continue;
        if (pathExists(it.key())) {
            strays.inPlace.append(it.key());
            continue;
        }
        const bool canBeSought = it->sufid.valid && RemoteCalls::mountOf(it.key()).isEmpty();
        const auto path = canBeSought ? RenamedPathSearch(it.key(), *it, looksLeft).run() : std::nullopt;
        if (path)
            strays.moved.append({it.key(), *path});
        else
            strays.missing.insert(it.key());
    }
    return strays;
}

} // namespace Stemhaven
