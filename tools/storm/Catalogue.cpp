#include "Catalogue.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <stdexcept>

namespace Storm {

namespace {

const QString connectionName = QStringLiteral("storm");

} // namespace

Catalogue::Catalogue(const QString& databasePath)
    : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName)) {
    m_database.setDatabaseName(databasePath);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=30000"));
    // Opening makes the file where it is missing, and the folder above it is the program's to make.
    if (QFile::exists(databasePath))
        m_database.open();
}

Catalogue::~Catalogue() {
    m_database = {};
    QSqlDatabase::removeDatabase(connectionName);
}

std::vector<Record> Catalogue::records() const {
    std::vector<Record> records;
    if (!m_database.isOpen())
        return records;
    QSqlQuery query(m_database);
    query.exec(QStringLiteral(
        "SELECT project_id, filepath || filename, bpm, SUFID, star_rating, "
        "notes, "
        "(SELECT name FROM genres WHERE genres.genre_id = projects.genre_id), "
        "(SELECT group_concat(name) FROM tags JOIN project_tag_map USING (tag_id) "
        "WHERE project_id = projects.project_id), "
        "(SELECT group_concat(name) FROM collections JOIN collections_projects_map USING (collection_id) "
        "WHERE project_id = projects.project_id) FROM projects ORDER BY project_id"));
    const auto text = [&](int column) {
        return query.value(column).toString().toStdString();
    };
    while (query.next())
        records.push_back(
            {query.value(0).toLongLong(),
             text(1),
             query.value(2).toDouble(),
             text(3),
             {query.value(4).toInt(), text(5), text(6), text(7), text(8)}});
    return records;
}

std::string Catalogue::initialRows() const {
    if (!m_database.isOpen())
        return {};
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("SELECT (SELECT count(*) FROM details) || '|' || (SELECT count(*) FROM "
                              "arrangement_status) || '|' || (SELECT count(*) FROM lyrics_status) || '|' || "
                              "(SELECT count(*) FROM recording_status) || '|' || (SELECT count(*) FROM "
                              "mix_master_status)"));
    return query.next() ? query.value(0).toString().toStdString() : std::string();
}

void Catalogue::setUserData(std::int64_t recordId, const UserData& userData) const {
    const QVariant record(static_cast<qlonglong>(recordId));
    const QVariant genre = idOf(QStringLiteral("genres"), QStringLiteral("genre_id"), userData.genre);
    execute(
        QStringLiteral("UPDATE projects SET star_rating=?, notes=?, genre_id=? WHERE project_id=?"),
        {userData.stars, QString::fromStdString(userData.notes), genre, record});
    const auto assign = [&](const QString& map, const QString& names, const QString& id,
                            const std::string& name) {
        execute(QStringLiteral("DELETE FROM %1 WHERE project_id=?").arg(map), {record});
        execute(
            QStringLiteral("INSERT INTO %1 (%2, project_id) VALUES (?, ?)").arg(map, id),
            {idOf(names, id, name), record});
    };
    assign(QStringLiteral("project_tag_map"), QStringLiteral("tags"), QStringLiteral("tag_id"), userData.tag);
    assign(
        QStringLiteral("collections_projects_map"), QStringLiteral("collections"),
        QStringLiteral("collection_id"), userData.collection);
}

QVariant Catalogue::idOf(const QString& table, const QString& column, const std::string& name) const {
    const auto text = QString::fromStdString(name);
    execute(
        QStringLiteral("INSERT INTO %1 (name) SELECT ? WHERE ? NOT IN (SELECT name FROM %1)").arg(table),
        {text, text});
    auto query = execute(QStringLiteral("SELECT %1 FROM %2 WHERE name=?").arg(column, table), {text});
    query.next();
    return query.value(0);
}

QSqlQuery Catalogue::execute(const QString& statement, const QVariantList& values) const {
    QSqlQuery query(m_database);
    query.prepare(statement);
    for (const auto& value : values)
        query.addBindValue(value);
    if (!query.exec())
        throw std::runtime_error("User data could not be set: " + query.lastError().text().toStdString());
    return query;
}

} // namespace Storm
