#pragma once

#include "database/RecordedBundle.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

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
    /// Records have left the paths in vacated, and those in put are now at theirs.
    void update(const QStringList& vacated, const QList<std::pair<QString, RecordedBundle>>& put);

    std::optional<RecordedBundle> at(const QString& path) const;
    /// A copy, which costs nothing until one of the two is changed.
    ByPath all() const;
    /// Of the bundles below a folder, which ends in "/".
    QStringList below(const QString& folder) const;

    /// Another number whenever the paths are others.
    quint64 revision() const;

private:
    mutable std::mutex m_mutex;
    ByPath m_bundles;
    quint64 m_revision = 0;
};

} // namespace Stemhaven
