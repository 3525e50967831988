#pragma once

#include <QString>

/// What the user can do about a failure of the catalogue that says such a message; empty where there is
/// nothing to be said, or the message is no such failure's.
QString databaseAdvice(const QString& message);
