#pragma once

#include "database/RecordedBundle.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace Stemhaven {

/// What is on record, by path, as of the last reading of the database and all that was written since. Safe
/// from any thread.
class RecordedBundles {
public:
    using ByPath = QHash<QString, RecordedBundle>;

    void replaceAll(ByPath bundles);
    /// Records have left the paths in vacated, and those in put are now at theirs. Whether any of these were
    /// missing.
    bool update(const QStringList& vacated, const QList<std::pair<QString, RecordedBundle>>& put);

    std::optional<RecordedBundle> at(const QString& path) const;
    /// A copy, which costs nothing until one of the two is changed.
    ByPath all() const;
    /// Of the bundles below a folder, which ends in "/".
    QStringList below(const QString& folder) const;

    /// Another number whenever the paths are others.
    quint64 revision() const;

    /// There is nothing at the path any more. False where that was known, or the path is not on record.
    bool markMissing(const QString& path);
    /// What is missing now among the bundles that isLookedFor names. Whether that is news.
    bool setMissing(const QSet<QString>& paths, const std::function<bool(const QString& path)>& isLookedFor);
    /// The paths on record at which there was nothing at the last look.
    QSet<QString> missing() const;

private:
    mutable std::mutex m_mutex;
    ByPath m_bundles;
    QSet<QString> m_missing;
    quint64 m_revision = 0;
};

} // namespace Stemhaven
