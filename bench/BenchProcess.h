#pragma once

#include "app/logging/Log.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

/// Names the application as the program does and quietens its log alike.
inline void nameProgram() {
    QCoreApplication::setOrganizationDomain(QStringLiteral("stemhaven.app"));
    QCoreApplication::setApplicationName(QStringLiteral("Stemhaven"));
    Logging::Log::setDirectory(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    Logging::Log::setLevel(QtCriticalMsg);
}

[[noreturn]] inline void fail(const char* why) {
    std::fprintf(stderr, "%s\n", why);
    std::_Exit(1);
}

/// Ends the process where scope outlives all that is measured.
inline void failLater(const QObject* scope) {
    QTimer::singleShot(std::chrono::minutes(2), scope, [] { fail("Waited in vain."); });
}
