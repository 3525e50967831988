#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// What the user says of a project's release.
struct ReleaseDetails {
    QString artist;
    QString releaseName;
    QString isrc;
    QString upc;
    QString album;
    bool isPubliclyReleased = false;
    bool isCompleted = false;
    /// Stored only of what is publicly released. Not valid where none is stored.
    QDate date;
};

/// Statements over the releases of projects. Texts are given as they are.
namespace ReleaseStatements {

/// One row: artist, release name, publicly released, ISRC, UPC, completed, the date (ISO, local) and album.
QString select(qint64 projectId);
QString update(const ReleaseDetails& details, qint64 projectId);
/// The columns that update() writes, in its order.
const QStringList& columns();
/// What update() writes into them.
QStringList literals(const ReleaseDetails& details);

/// Rows of the publicly released projects with a date from first to last: id, name of the release or else of
/// the project, artist, completed, the date (ISO, local).
QString selectReleased(QDate first, QDate last);

} // namespace ReleaseStatements

} // namespace Stemhaven
