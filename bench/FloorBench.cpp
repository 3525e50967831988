// floor_bench ROOT NUMBER: the least that a first search of that many bundles can cost: the program's reads,
// notes and inserts, one bundle after the other on one thread and in one transaction, with neither tasks nor
// callbacks nor a window. On an empty profile.

#include "CatalogueFilling.h"
#include "Report.h"
#include "app/Paths.h"
#include "database/Connection.h"
#include "database/DatabaseInitStatements.h"
#include "database/ProjectStatements.h"
#include "project/NoteFile.h"
#include "project/ProjectData.h"
#include "project/ProjectDetails.h"

#include <QDateTime>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using namespace Stemhaven;

namespace {

constexpr std::size_t notesAtOnce = 64;

QSqlDatabase emptyCatalogue() {
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    openDatabase(database, mainDatabasePath(), QStringLiteral("The database cannot be opened."));
    QSqlQuery query(database);
    const auto tables = DatabaseInitStatements(currentDatabaseVersion).initMainSQL();
    for (const auto& statement : tables)
        run(query, statement);
    prepareMainConnection(database);
    return database;
}

/// The note is still to be written.
NoteToWrite record(QSqlDatabase& database, const QString& bundle) {
    const ProjectDetails details(bundle);
    const ProjectData data(bundle);
    // A query of its own and unprepared, as a task has it.
    QSqlQuery query(database);
    run(query, ProjectStatements::insert(details, data, QDateTime::currentSecsSinceEpoch()));
    return {details, query.lastInsertId().toLongLong()};
}

int recordAll(QSqlDatabase& database, const fs::path& root) {
    int bundles = 0;
    std::vector<NoteToWrite> notes;
    database.transaction();
    for (auto entry = fs::recursive_directory_iterator(root); entry != fs::end(entry); ++entry) {
        if (entry->path().extension() != ".logicx")
            continue;
        entry.disable_recursion_pending();
        notes.push_back(record(database, QFile::decodeName(entry->path().c_str())));
        if (notes.size() == notesAtOnce)
            writeNotes(std::exchange(notes, {}));
        ++bundles;
    }
    writeNotes(notes);
    if (!database.commit())
        throw std::runtime_error(database.lastError().text().toStdString());
    return bundles;
}

} // namespace

int main(int argc, char** argv) {
    return fillCatalogue(argc, argv, [](const QString& root, const QString& number) {
        auto database = emptyCatalogue();
        const Stopwatch watch;
        const int bundles = recordAll(database, QFile::encodeName(root).toStdString());
        report(QStringLiteral("scan-%1-floor").arg(number), watch.seconds());
        if (bundles != number.toInt())
            fail("The library has another number of bundles.");
    });
}
