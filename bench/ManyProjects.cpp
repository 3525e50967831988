// many_projects NUMBER ROOT: fills the catalogue of the current, still empty profile with made-up projects,
// the same ones each time. Their bundles, below ROOT, are not made.

#include "CatalogueFilling.h"
#include "app/Paths.h"
#include "database/DatabaseInitStatements.h"
#include "database/RootPathStatements.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <array>
#include <random>
#include <stdexcept>

namespace {

constexpr std::array firstWords{"Night",    "Golden", "Broken",  "Paper",  "Slow",   "Electric",
                                "Distant",  "Velvet", "Hollow",  "Summer", "Silent", "Copper",
                                "Restless", "Winter", "Crooked", "Honest"};
constexpr std::array lastWords{"Drive",  "Harbour", "Letters", "Machine", "Morning", "Signal",
                               "Garden", "Anthem",  "River",   "Shadows", "Highway", "Window",
                               "Ashes",  "Lights",  "Tide",    "Waltz"};
constexpr std::array keys{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
constexpr qint64 day = 86400;
constexpr qint64 firstDay = 1'420'070'400;

class Dice {
public:
    int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }

    template <typename Choices>
    QString oneOf(const Choices& choices) {
        return QString::fromLatin1(
            choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))]);
    }

private:
    std::mt19937 m_engine{1};
};

QVariantMap madeUpProject(int number, const QString& root, Dice& dice) {
    const QString name =
        QStringLiteral("%1 %2 %3").arg(dice.oneOf(firstWords), dice.oneOf(lastWords)).arg(number);
    const qint64 created = firstDay + dice.below(3650) * day + dice.below(day);
    const bool released = dice.below(5) == 0;
    return {
        {"filepath", QStringLiteral("%1/%2/Album %3").arg(root).arg(2015 + number % 10).arg(number / 12)},
        {"filename", name + ".logicx"},
        {"SUFID", QStringLiteral("64769-%1").arg(1'000'000 + number)},
        {"name", name},
        {"project_type", "logicx"},
        {"logic_version", QStringLiteral("Logic Pro 10.%1.%2").arg(dice.below(8)).arg(dice.below(10))},
        {"bpm", dice.below(4) == 0 ? 60 + dice.below(1200) / 10.0 : 60.0 + dice.below(120)},
        {"song_key", dice.oneOf(keys)},
        {"song_gender_key", dice.below(2) == 0 ? "major" : "minor"},
        {"song_signature_numerator", 4},
        {"song_signature_denominator", 4},
        {"song_signature", dice.below(6) == 0 ? "3/4" : "4/4"},
        {"number_of_tracks", 4 + dice.below(90)},
        {"sample_rate", dice.below(3) == 0 ? 48000 : 44100},
        {"progress", dice.below(101) / 100.0},
        {"star_rating", dice.below(6)},
        {"publicly_released", released ? 1 : 0},
        {"release_date", released ? QVariant(created + 90 * day) : QVariant()},
        {"created", created},
        {"last_modified", created + dice.below(300) * day},
        {"last_updated", created + 300 * day},
    };
}

void addProjects(QSqlDatabase& database, int number, const QString& root) {
    Dice dice;
    const auto columns = madeUpProject(0, root, dice).keys();
    QSqlQuery insert(database);
    insert.prepare(QStringLiteral("INSERT INTO projects (%1) VALUES (:%2)")
                       .arg(columns.join(QLatin1String(", ")), columns.join(QLatin1String(", :"))));
    database.transaction();
    for (int i = 0; i < number; ++i) {
        const auto project = madeUpProject(i, root, dice);
        for (auto value = project.begin(); value != project.end(); ++value)
            insert.bindValue(QLatin1Char(':') + value.key(), value.value());
        if (!insert.exec())
            throw std::runtime_error(insert.lastError().text().toStdString());
    }
    database.commit();
}

void fillProfile(int number, const QString& root) {
    using namespace Stemhaven;
    QDir().mkpath(QFileInfo(mainDatabasePath()).path());
    QDir().mkpath(root);
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    const auto open = [&](const QString& path) {
        database.close();
        database.setDatabaseName(path);
        if (!database.open())
            throw std::runtime_error(database.lastError().text().toStdString());
        return QSqlQuery(database);
    };

    const DatabaseInitStatements schema(currentDatabaseVersion);
    auto roots = open(rootPathsDatabasePath());
    run(roots, schema.initRootPathsSQL());
    run(roots, RootPathStatements::insert(root));
    roots.clear();

    auto query = open(mainDatabasePath());
    const auto tables = schema.initMainSQL();
    for (const auto& statement : tables)
        run(query, statement);
    const auto statuses = schema.statusDefaults();
    for (const auto& status : statuses)
        for (const auto& statement : status.inserts)
            run(query, statement);
    run(query, schema.insertVersion());
    addProjects(database, number, root);
    QSettings().setValue(QStringLiteral("completedWizard"), true);
}

} // namespace

int main(int argc, char** argv) {
    return fillCatalogue(
        argc, argv, [](const QString& number, const QString& root) { fillProfile(number.toInt(), root); });
}
