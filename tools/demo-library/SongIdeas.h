#pragma once

#include "Random.h"
#include "Song.h"

#include <QSet>
#include <QStringList>

namespace DemoLibrary {

struct Genre;

/// Makes up songs that a busy studio might have collected over the years, no two at the same path.
class SongIdeas {
public:
    explicit SongIdeas(std::uint64_t seed) : m_random(seed) {}

    Song next();

    /// All genres that songs can have.
    static QStringList genreNames();

private:
    QString title();
    QString patternTitle();
    void chooseDates(Song& song);
    void chooseMusic(Song& song, const Genre& genre);
    void choosePlace(Song& song, const Genre& genre);
    void makePathUnique(Song& song);
    void chooseAlternatives(Song& song);

    Random m_random;
    /// In lower case: the libraries must also fit file systems that do not tell the two apart.
    QSet<QString> m_bundles;
};

} // namespace DemoLibrary
