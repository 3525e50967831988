#pragma once

#include <QString>

#include <cstdint>
#include <ctime>
#include <map>
#include <string>

namespace DemoLibrary {

/// A made-up project: what its bundle says of it.
struct Song {
    /// Where the bundle lies in the library: empty, or ending in "/".
    QString folder;
    QString name;
    QString artist;
    /// Empty unless the song belongs to one.
    QString album;
    QString genre;

    /// Beats a minute; a whole number for most songs.
    double tempo = 120;
    std::string key;
    /// "major" or "minor".
    std::string mode;
    int signatureNumerator = 4;
    int signatureDenominator = 4;
    /// Hz.
    int sampleRate = 44100;
    int tracks = 1;
    std::string logicVersion;

    /// Number and name. The numbers may have gaps; 0 always stands and bears the song's own name.
    std::map<int, QString> alternatives;
    int activeAlternative = 0;
    /// Automatic backups of the active alternative; the others have about half as many.
    int backups = 0;
    /// Property lists in their binary form instead of XML.
    bool binary = true;

    std::time_t created = 0;
    std::time_t modified = 0;

    /// For what is made up later of this song.
    std::uint64_t seed = 0;

    /// The bundle's path below the library.
    QString bundle() const { return folder + name + QStringLiteral(".logicx"); }
};

} // namespace DemoLibrary
