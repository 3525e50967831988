#pragma once

#include "plist/Value.h"
#include "project/ProjectInformation.h"

#include <QObject>

namespace Stemhaven {

/// The musical and technical facts of one bundle, from its ProjectInformation.plist and the active
/// alternative's MetaData.plist.
class ProjectData : public QObject {
    Q_OBJECT

public:
    /// bundlePath has no trailing "/". Reads both files; throws as ProjectInformation does.
    explicit ProjectData(const QString& bundlePath);

    /// Each of these throws IOException where its entry is missing or of another type.
    double bpm() const;
    qint64 numberOfTracks() const;
    qint64 sampleRate() const;
    QString songKey() const;
    QString songGenderKey() const;
    qint64 songSignatureNumerator() const;
    qint64 songSignatureDenominator() const;

    qint64 alternativeCount() const;
    QDateTime created() const;
    QDateTime lastModified() const;
    QString logicVersion() const;
    /// What follows the last dot of the bundle's path.
    QString projectExtension() const;

private:
    QString m_extension;
    Plist::Dictionary m_metaData;
    ProjectInformation m_information;
};

} // namespace Stemhaven
