#pragma once

#include "database/DatabaseVersion.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

namespace Stemhaven {

/// The schema of both databases and the rows that a new one starts with.
class DatabaseInitStatements {
    Q_DECLARE_TR_FUNCTIONS(Stemhaven::DatabaseInitStatements)

public:
    /// The labels and rows of one of the four kinds of status.
    struct StatusDefaults {
        QString select;
        QList<QString> inserts;
        QString failureText;
    };

    /// version is what a new main database says of itself by default.
    explicit DatabaseInitStatements(DatabaseVersion version);

    QList<QString> initMainSQL() const;
    QString initRootPathsSQL() const;

    /// Arrangement, lyrics, recording, mix/master. The labels are translated.
    QList<StatusDefaults> statusDefaults() const;

    QString selectVersion() const;
    QString insertVersion() const;
    QString updateVersion() const;

private:
    QString m_version;
};

} // namespace Stemhaven
