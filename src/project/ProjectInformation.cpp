#include "project/ProjectInformation.h"

#include "project/BundlePlist.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdint>
#include <string>

namespace Stemhaven {

namespace {

constexpr const char* mismatch =
    "Could not retrieve project information '%1'. Bad any cast to type: %2 from %3";

template <typename T>
const T& read(const Plist::Dictionary& plist, const char* key) {
    return typedRead<T>(plist, key, mismatch);
}

} // namespace

QString informationPath(const QString& bundlePath) {
    return bundlePath + QStringLiteral("/Resources/ProjectInformation.plist");
}

ProjectInformation::ProjectInformation(const QString& plistPath) {
    const QFileInfo file(plistPath);
    if (!file.exists())
        throw IOException(QFile(plistPath), QStringLiteral("File not found"));
    m_lastModifiedAt = file.lastModified();
    m_createdAt = file.birthTime();
    withBundlePlist(file, [this](const Plist::Dictionary& list) { take(list); });
}

void ProjectInformation::take(const Plist::Dictionary& plist) {
    if (plist.count("ActiveVariant") != 0)
        m_activeVariant = QString::number(read<std::int64_t>(plist, "ActiveVariant"));
    m_lastSavedWithVersion = typedText(plist, "LastSavedFrom", mismatch);
    if (plist.count("VariantNamesV2") != 0) {
        const auto& names = read<Plist::Dictionary>(plist, "VariantNamesV2");
        m_alternativesCount = std::max<qint64>(1, static_cast<qint64>(names.size()));
    }

    if (m_activeVariant.size() <= 3) {
        m_activeAlternativeDir = QStringLiteral("%1").arg(m_activeVariant.toInt(), 3, 10, QLatin1Char('0'));
    } else {
        qCritical() << "Improper alternative variant. Out of expected range 0-999. ActiveVariant: "
                    << m_activeVariant;
    }
}

QString ProjectInformation::getActiveAlternativeDir() const {
    return m_activeAlternativeDir;
}

QString ProjectInformation::getActiveVariant() const {
    return m_activeVariant;
}

qint64 ProjectInformation::getAlternativesCount() const {
    return m_alternativesCount;
}

QDateTime ProjectInformation::getCreatedAt() const {
    return m_createdAt;
}

QDateTime ProjectInformation::getLastModifiedAt() const {
    return m_lastModifiedAt;
}

QString ProjectInformation::getLastSavedWithVersion() const {
    return m_lastSavedWithVersion;
}

} // namespace Stemhaven
