#include "project/ProjectData.h"

#include "project/BundlePlist.h"

#include <QFileInfo>

#include <cstdint>

namespace Stemhaven {

namespace {

constexpr const char* mismatch =
    "Could not retrieve project meta data '%1'. Bad any cast to type: %2 from %3";

template <typename T>
const T& read(const Plist::Dictionary& metaData, const char* key) {
    return typedRead<T>(metaData, key, mismatch);
}

} // namespace

ProjectData::ProjectData(const QString& bundlePath)
    : m_extension(bundlePath.mid(bundlePath.lastIndexOf(u'.') + 1)),
      m_information(informationPath(bundlePath)) {
    const QFileInfo list(
        bundlePath + QStringLiteral("/Alternatives/") + m_information.getActiveAlternativeDir() +
        QStringLiteral("/MetaData.plist"));
    m_metaData = smallEntries(
        list,
        {"BeatsPerMinute", "NumberOfTracks", "SampleRate", "SongKey", "SongGenderKey",
         "SongSignatureNumerator", "SongSignatureDenominator"});
}

double ProjectData::bpm() const {
    // Logic Pro writes whole tempos as integers and the others as reals.
    static constexpr const char* key = "BeatsPerMinute";
    const auto entry = m_metaData.find(key);
    if (entry != m_metaData.end()) {
        if (const auto* whole = std::any_cast<std::int64_t>(&entry->second))
            return static_cast<double>(*whole);
    }
    return read<double>(m_metaData, key);
}

qint64 ProjectData::numberOfTracks() const {
    return read<std::int64_t>(m_metaData, "NumberOfTracks");
}

qint64 ProjectData::sampleRate() const {
    return read<std::int64_t>(m_metaData, "SampleRate");
}

QString ProjectData::songKey() const {
    return typedText(m_metaData, "SongKey", mismatch);
}

QString ProjectData::songGenderKey() const {
    return typedText(m_metaData, "SongGenderKey", mismatch);
}

qint64 ProjectData::songSignatureNumerator() const {
    return read<std::int64_t>(m_metaData, "SongSignatureNumerator");
}

qint64 ProjectData::songSignatureDenominator() const {
    return read<std::int64_t>(m_metaData, "SongSignatureDenominator");
}

qint64 ProjectData::alternativeCount() const {
    return m_information.getAlternativesCount();
}

QDateTime ProjectData::created() const {
    return m_information.getCreatedAt();
}

QDateTime ProjectData::lastModified() const {
    return m_information.getLastModifiedAt();
}

QString ProjectData::logicVersion() const {
    return m_information.getLastSavedWithVersion();
}

QString ProjectData::projectExtension() const {
    return m_extension;
}

} // namespace Stemhaven
