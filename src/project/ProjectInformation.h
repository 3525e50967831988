#pragma once

#include "plist/Value.h"

#include <QDateTime>
#include <QString>

namespace Stemhaven {

/// Where a bundle keeps its information.
QString informationPath(const QString& bundlePath);

/// A bundle's Resources/ProjectInformation.plist.
class ProjectInformation {
public:
    /// Nothing read: the defaults of every value.
    ProjectInformation() = default;
    /// Reads the file. Throws IOException where it is missing, cannot be opened or lacks what is required,
    /// Plist::Error where it is no property list and std::bad_cast where its root is no dictionary.
    explicit ProjectInformation(const QString& plistPath);

    /// Three digits, the name of the active alternative's folder.
    QString getActiveAlternativeDir() const;
    QString getActiveVariant() const;
    qint64 getAlternativesCount() const;
    /// Birth time of the file; invalid where the file system keeps none.
    QDateTime getCreatedAt() const;
    QDateTime getLastModifiedAt() const;
    QString getLastSavedWithVersion() const;

private:
    void take(const Plist::Dictionary& plist);

    QDateTime m_lastModifiedAt;
    QDateTime m_createdAt;
    qint64 m_alternativesCount = 1;
    QString m_lastSavedWithVersion;
    QString m_activeVariant = QStringLiteral("0");
    QString m_activeAlternativeDir = QStringLiteral("000");
};

} // namespace Stemhaven
