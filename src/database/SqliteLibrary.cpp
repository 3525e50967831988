#include "database/SqliteLibrary.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QLibrary>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>

#include <array>
#include <thread>

struct sqlite3;

namespace Stemhaven::SqliteLibrary {

namespace {

/// Null where the library is not to be found.
struct Calls {
    const char* (*sourceId)() = nullptr;
    int (*limit)(sqlite3*, int, int) = nullptr;
    int (*configure)(sqlite3*, int, ...) = nullptr; // NOLINT(cppcoreguidelines-pro-type-vararg)
    void (*setProgressHandler)(sqlite3*, int, int (*)(void*), void*) = nullptr;
    int (*setBusyHandler)(sqlite3*, int (*)(void*, int), void*) = nullptr;

    bool areFound() const {
        return sourceId != nullptr && limit != nullptr && configure != nullptr &&
            setProgressHandler != nullptr && setBusyHandler != nullptr;
    }
};

template <typename Function>
void resolve(QLibrary& library, const char* name, Function& function) {
    function = reinterpret_cast<Function>( // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
        library.resolve(name));
}

/// Symbols of a library are looked for in what it is linked with, too.
Calls callsIn(const QString& driver) {
    Calls calls;
    QLibrary library(driver);
    resolve(library, "sqlite3_sourceid", calls.sourceId);
    resolve(library, "sqlite3_limit", calls.limit);
    resolve(library, "sqlite3_db_config", calls.configure);
    resolve(library, "sqlite3_progress_handler", calls.setProgressHandler);
    resolve(library, "sqlite3_busy_handler", calls.setBusyHandler);
    return calls;
}

Calls find(const QSqlDatabase& database) {
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("SELECT sqlite_source_id()")) || !query.next())
        return {};
    const QByteArray sourceId = query.value(0).toByteArray();
    for (const auto& path : QCoreApplication::libraryPaths()) {
        const QDir folder(path + QStringLiteral("/sqldrivers"));
        for (const auto& driver : folder.entryList({QStringLiteral("*qsqlite*")}, QDir::Files)) {
            const auto calls = callsIn(folder.filePath(driver));
            if (calls.areFound() && calls.sourceId() == sourceId)
                return calls;
        }
    }
    qDebug() << "The SQLite of the driver cannot be reached. Its limits stay as they are.";
    return {};
}

const Calls& calls(const QSqlDatabase& database) {
    static const Calls found = find(database);
    return found;
}

sqlite3* handleOf(const QSqlDatabase& database) {
    const QVariant handle = database.driver()->handle();
    return qstrcmp(handle.typeName(), "sqlite3*") == 0 ? *static_cast<sqlite3* const*>(handle.constData())
                                                       : nullptr;
}

int isGivenUp(void* question) {
    return (*static_cast<const std::function<bool()>*>(question))() ? 1 : 0;
}

using WaitQuestion = std::function<bool(std::chrono::milliseconds)>;

/// attempts counts the calls for one wait, this one not among them.
int waitALittle(void* question, int attempts) {
    constexpr std::chrono::milliseconds betweenAttempts(5);
    if (!(*static_cast<const WaitQuestion*>(question))(attempts * betweenAttempts))
        return 0;
    std::this_thread::sleep_for(betweenAttempts);
    return 1;
}

} // namespace

void harden(const QSqlDatabase& database) {
    for (const auto* statement : {"PRAGMA trusted_schema=OFF", "PRAGMA cell_size_check=ON"})
        QSqlQuery(database).exec(QLatin1String(statement));
    const Calls& sqlite = calls(database);
    sqlite3* const handle = handleOf(database);
    if (handle == nullptr || !sqlite.areFound())
        return;
    constexpr int length = 0;
    sqlite.limit(handle, length, largestValue);
    constexpr int defensive = 1010;
    constexpr int enableViews = 1015;
    constexpr std::array<std::pair<int, int>, 2> settings{{{defensive, 1}, {enableViews, 0}}};
    for (const auto& [setting, value] : settings)
        sqlite.configure(
            handle, setting, value,
            static_cast<int*>(nullptr)); // NOLINT(cppcoreguidelines-pro-type-vararg)
}

void interruptWhen(const QSqlDatabase& database, const std::function<bool()>& question) {
    constexpr int instructionsBetween = 10'000;
    const Calls& sqlite = calls(database);
    sqlite3* const handle = handleOf(database);
    if (handle != nullptr && sqlite.areFound())
        sqlite.setProgressHandler(
            handle, instructionsBetween, isGivenUp,
            const_cast<std::function<bool()>*>(&question)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

void waitWhile(const QSqlDatabase& database, const WaitQuestion& question) {
    const Calls& sqlite = calls(database);
    sqlite3* const handle = handleOf(database);
    if (handle != nullptr && sqlite.areFound())
        sqlite.setBusyHandler(
            handle, waitALittle,
            const_cast<WaitQuestion*>(&question)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

} // namespace Stemhaven::SqliteLibrary
