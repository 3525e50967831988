#include "UserEdits.h"

#include "Random.h"
#include "SongIdeas.h"
#include "database/ReleaseDate.h"
#include "database/SqlText.h"

#include <QDateTime>

#include <algorithm>
#include <array>

namespace DemoLibrary::UserEdits {

namespace {

using Stemhaven::escape;

constexpr auto tags = std::to_array<const char*>(
    {"#sync", "#co-write", "#vocal hook", "#needs singer", "#live set", "#don't touch!", "#sample clearance",
     "#100 bpm club", "#für Anna", "#instrumental"});
constexpr auto collections = std::to_array<const char*>(
    {"Spring EP", "Album 2025", "Pitches", "Unfinished gems", "Live at the Boiler House", "Kids' songs"});
constexpr auto notes = std::to_array<const char*>(
    {"Second verse needs a lift.", "Kick and bass fight below 80 Hz.",
     "Ask about the bridge lyrics on Thursday.", "Vocal take 3 is the one; comp the last chorus.",
     "Too long. Cut 16 bars before the outro.", "Bounce for the label: -14 LUFS, no fade.",
     "Try it a whole tone lower."});

constexpr auto ratings = std::to_array<int>({0, 0, 0, 1, 2, 2, 3, 3, 3, 3, 4, 4, 4, 5});

QString quoted(const QString& text) {
    return QLatin1Char('\'') + escape(text) + QLatin1Char('\'');
}

QString quoted(const char* utf8) {
    return quoted(QString::fromUtf8(utf8));
}

template <typename Names>
void insertNames(
    QStringList& statements, const QString& table, const Names& names, const QString& rest = {}) {
    int id = 0;
    for (const auto& name : names)
        statements << QStringLiteral("INSERT INTO ") + table + QStringLiteral(" VALUES (") +
                QString::number(++id) + QStringLiteral(", ") + quoted(name) + rest + QStringLiteral(");");
}

/// The columns of one song's record, as they are being decided.
class Record {
public:
    explicit Record(long long projectId) : m_projectId(projectId) {}

    void set(const char* column, const QString& value) {
        m_assignments << QLatin1String(column) + QLatin1Char('=') + value;
    }

    void set(const char* column, long long value) { set(column, QString::number(value)); }

    QString statement() const {
        return QStringLiteral("UPDATE projects SET ") + m_assignments.join(QStringLiteral(", ")) +
            QStringLiteral(" WHERE project_id=") + QString::number(m_projectId) + QLatin1Char(';');
    }

private:
    long long m_projectId;
    QStringList m_assignments;
};

/// stage: how far the song is, 0 to 1. The last status of each kind says that it is done.
void setProgress(Record& record, Random& random, double stage) {
    const auto status = [&](int last) {
        return stage >= 1 ? last : random.between(0, std::min(last, 1 + static_cast<int>(stage * last)));
    };
    record.set("progress", QString::number(stage, 'f', 2));
    record.set("arrangement_status", status(6));
    record.set("lyrics_status", status(4));
    record.set("recording_status", status(5));
    record.set("mix_master_status", stage < 0.5 ? 0 : status(5));
    record.set("star_rating", random.pick(ratings));
}

/// Most releases are near today, so that a calendar has something to show.
QDate releaseDay(Random& random, const Song& song, QDate today) {
    if (random.chance(30)) {
        const auto saved = QDateTime::fromSecsSinceEpoch(song.modified, Qt::UTC).date();
        return saved.addDays(random.between(10, 120));
    }
    // Songs come out on Fridays, but for one in five.
    const QDate day = today.addDays(random.between(-35, 55));
    return random.chance(80) ? day.addDays(Qt::Friday - day.dayOfWeek()) : day;
}

/// From numbers of its own: what else is made up of the song does not depend on today.
void setRelease(Record& record, const Song& song, QDate today) {
    Random random(song.seed + 1);
    if (!random.chance(60))
        return;
    const bool isReleased = random.chance(80);
    record.set("release_name", quoted(song.name));
    record.set("publicly_released", isReleased ? 1 : 0);
    if (!isReleased)
        return;
    record.set("release_date", Stemhaven::storedReleaseDate(releaseDay(random, song, today)));
    record.set(
        "ISRC",
        quoted(QStringLiteral("QZ-DM0-26-%1").arg(random.between(1, 99999), 5, 10, QLatin1Char('0'))));
    record.set("UPC", quoted(QString::number(100000000000LL + random.between(0, 999999999))));
}

} // namespace

QStringList filters() {
    QStringList statements;
    insertNames(statements, QStringLiteral("genres"), SongIdeas::genreNames(), QStringLiteral(", NULL"));
    insertNames(statements, QStringLiteral("tags"), tags);
    insertNames(statements, QStringLiteral("collections"), collections);
    return statements;
}

QStringList edits(const Song& song, long long projectId, QDate today) {
    Random random(song.seed);
    Record record(projectId);
    // The file system keeps no time of birth that could be set.
    record.set("created", static_cast<long long>(song.created));

    if (random.chance(12)) {
        record.set("ignored", random.chance(25) ? 1 : 0);
        return {record.statement()};
    }
    const double stage = random.chance(12) ? 1.0 : random.between(0, 19) / 20.0;
    setProgress(record, random, stage);
    record.set("completed", stage >= 1 ? 1 : 0);
    record.set("genre_id", 1 + SongIdeas::genreNames().indexOf(song.genre));
    record.set("artist", quoted(song.artist));
    if (!song.album.isEmpty())
        record.set("album", quoted(song.album));
    if (stage >= 0.75)
        setRelease(record, song, today);
    if (random.chance(20))
        record.set("notes", quoted(random.pick(notes)));

    QStringList statements{record.statement()};
    for (std::size_t tag = 1; tag <= tags.size(); ++tag) {
        if (random.chance(9))
            statements
                << QStringLiteral("INSERT INTO project_tag_map VALUES (%1, %2);").arg(projectId).arg(tag);
    }
    for (std::size_t collection = 1; collection <= collections.size(); ++collection) {
        if (random.chance(6))
            statements << QStringLiteral("INSERT INTO collections_projects_map VALUES (%1, %2);")
                              .arg(collection)
                              .arg(projectId);
    }
    return statements;
}

} // namespace DemoLibrary::UserEdits
