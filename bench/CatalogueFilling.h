#pragma once

#include "BenchProcess.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <stdexcept>

/// Throws std::runtime_error when the statement fails.
inline void run(QSqlQuery& query, const QString& statement) {
    if (!query.exec(statement))
        throw std::runtime_error(query.lastError().text().toStdString());
}

/// The main function of what fills the current profile: calls fill with its two arguments. The exit status.
template <typename Fill>
int fillCatalogue(int argc, char** argv, const Fill& fill) {
    nameProgram();
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 2;
    try {
        fill(arguments[1], arguments[2]);
        return 0;
    } catch (const std::exception& error) {
        fail(error.what());
    }
}
