#include "SongIdeas.h"

#include "SongWords.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace DemoLibrary {

/// The folders in which the owners of such libraries keep their projects, from the library inwards.
enum class Shelf { GenreArtist, GenreYear, YearGenre, Genre };

struct Genre {
    const char* name;
    int slowest;
    int fastest;
    Shelf shelf;
};

namespace {

constexpr std::time_t hour = 3600;
constexpr std::time_t day = 24 * hour;
/// Fixed, so that a library does not depend on the day on which it was made: 2025-06-15 20:30 UTC.
constexpr std::time_t newest = 1750019400;
constexpr int yearsBack = 11;

constexpr auto genres = std::to_array<Genre>({
    {"Pop", 88, 128, Shelf::GenreArtist},
    {"Rock", 100, 168, Shelf::GenreArtist},
    {"Singer-Songwriter", 64, 116, Shelf::GenreArtist},
    {"Hip Hop", 70, 98, Shelf::YearGenre},
    {"R&B", 60, 104, Shelf::YearGenre},
    {"House", 118, 128, Shelf::GenreYear},
    {"Techno", 126, 148, Shelf::GenreYear},
    {"Drum & Bass", 168, 178, Shelf::GenreYear},
    {"Lo-Fi", 62, 90, Shelf::GenreYear},
    {"Ambient", 50, 90, Shelf::Genre},
    {"Film Score", 52, 160, Shelf::GenreYear},
    {"Jazz", 80, 220, Shelf::Genre},
    {"Folk", 70, 132, Shelf::GenreArtist},
    {"Electro Swing", 110, 130, Shelf::Genre},
    {"Chanson française", 72, 120, Shelf::GenreArtist},
});

struct Version {
    const char* name;
    int since;
};

/// Newest first.
constexpr auto versions = std::to_array<Version>({
    {"Logic Pro 11.1.2 (6159)", 2025},
    {"Logic Pro 11.0.1 (6051)", 2024},
    {"Logic Pro X 10.8 (5895)", 2023},
    {"Logic Pro X 10.7.4 (5691)", 2022},
    {"Logic Pro X 10.6.1 (5492)", 2020},
    {"Logic Pro X 10.4.8 (5324)", 2018},
    {"Logic Pro X 10.3.2 (4745)", 2017},
    {"Logic Pro X 10.2.4 (4460)", 0},
});

constexpr QLatin1Char slash('/');

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

int yearOf(std::time_t time) {
    std::tm fields{};
    gmtime_r(&time, &fields);
    return fields.tm_year + 1900;
}

QString monthOf(std::time_t time) {
    std::tm fields{};
    gmtime_r(&time, &fields);
    return QStringLiteral("%1-%2").arg(fields.tm_year + 1900).arg(fields.tm_mon + 1, 2, 10, QLatin1Char('0'));
}

QString shelve(const Song& song, Shelf shelf) {
    QString genre = song.genre + slash;
    const QString year = QString::number(yearOf(song.created)) + slash;
    switch (shelf) {
    case Shelf::GenreArtist:
        return genre + song.artist + slash + (song.album.isEmpty() ? QString() : song.album + slash);
    case Shelf::GenreYear:
        return genre + year;
    case Shelf::YearGenre:
        return year + genre;
    case Shelf::Genre:
        break;
    }
    return genre;
}

} // namespace

Song SongIdeas::next() {
    Song song;
    song.seed = m_random.next();
    song.name = title();
    chooseDates(song);
    const Genre& genre = m_random.pick(genres);
    chooseMusic(song, genre);
    choosePlace(song, genre);
    makePathUnique(song);
    chooseAlternatives(song);
    return song;
}

QStringList SongIdeas::genreNames() {
    QStringList names;
    for (const Genre& genre : genres)
        names << text(genre.name);
    return names;
}

QString SongIdeas::title() {
    QString title = m_random.chance(14) ? text(m_random.pick(SongWords::awkwardTitles)) : patternTitle();
    if (m_random.chance(22))
        title += text(m_random.pick(SongWords::endings));
    return title;
}

QString SongIdeas::patternTitle() {
    const QString adjective = text(m_random.pick(SongWords::adjectives));
    QString noun = text(m_random.pick(SongWords::nouns));
    switch (m_random.between(0, 5)) {
    case 0:
        return text(m_random.pick(SongWords::verbs)) + QStringLiteral(" the ") + noun;
    case 1:
        return noun;
    case 2:
        return QStringLiteral("The ") + adjective + QLatin1Char(' ') + noun;
    case 3:
        return noun + QStringLiteral(" & ") + text(m_random.pick(SongWords::nouns));
    default:
        return adjective + QLatin1Char(' ') + noun;
    }
}

void SongIdeas::chooseDates(Song& song) {
    // The square of an even spread: most projects are recent, as in a library that grows.
    const double spread = m_random.between(0, 9999) / 10000.0;
    const auto age = static_cast<std::time_t>(spread * spread * yearsBack * 365 * static_cast<double>(day));
    song.modified = newest - age - m_random.between(0, 12 * 3600);
    song.created = song.modified - m_random.between(1, 24) * hour;
    if (m_random.chance(60))
        song.created -= m_random.between(1, 240) * day;

    const int year = yearOf(song.modified);
    song.logicVersion = std::find_if(versions.begin(), versions.end(), [year](const Version& version) {
                            return version.since <= year;
                        })->name;
}

void SongIdeas::chooseMusic(Song& song, const Genre& genre) {
    song.genre = text(genre.name);
    song.tempo = m_random.between(genre.slowest, genre.fastest);
    if (m_random.chance(15))
        song.tempo += m_random.between(1, 9999) / 10000.0;

    song.key = m_random.pick(SongWords::keys);
    song.mode = m_random.chance(55) ? "minor" : "major";
    if (m_random.chance(15)) {
        constexpr std::array<std::pair<int, int>, 6> odd{{{3, 4}, {6, 8}, {5, 4}, {7, 8}, {12, 8}, {2, 2}}};
        std::tie(song.signatureNumerator, song.signatureDenominator) = m_random.pick(odd);
    }
    constexpr std::array<int, 8> rates{44100, 44100, 44100, 48000, 48000, 48000, 88200, 96000};
    song.sampleRate = m_random.pick(rates);
    song.tracks = m_random.chance(10) ? m_random.between(80, 240) : m_random.between(1, 64);
    song.binary = m_random.chance(70);
}

void SongIdeas::choosePlace(Song& song, const Genre& genre) {
    song.artist = text(m_random.pick(SongWords::artists));
    if (genre.shelf == Shelf::GenreArtist && m_random.chance(45))
        song.album = text(m_random.pick(SongWords::albums));

    const int place = m_random.between(1, 100);
    if (place <= 12)
        song.folder = QStringLiteral("Sketches/") + monthOf(song.created) + slash;
    else if (place <= 14)
        song.folder = QStringLiteral("Logic/");
    else if (place > 16)
        song.folder = shelve(song, genre.shelf);
}

void SongIdeas::makePathUnique(Song& song) {
    const QString name = song.name;
    for (int copy = 2; m_bundles.contains(song.bundle().toLower()); ++copy)
        song.name = name + QLatin1Char(' ') + QString::number(copy);
    m_bundles.insert(song.bundle().toLower());
}

void SongIdeas::chooseAlternatives(Song& song) {
    song.alternatives[0] = song.name;
    int number = 0;
    while (m_random.chance(28) && song.alternatives.size() < 5) {
        number += m_random.chance(85) ? 1 : 2;
        song.alternatives[number] = text(m_random.pick(SongWords::alternatives));
    }
    song.activeAlternative = m_random.chance(70) ? number : 0;
    song.backups = m_random.between(0, 4);
}

} // namespace DemoLibrary
