#pragma once

#include <chrono>
#include <functional>

class QSqlDatabase;

namespace Stemhaven {

/// What SQL cannot ask of SQLite. The calls go to the very library that Qt's driver uses, which is looked up
/// in the driver's file: a second SQLite in the process would end the locks of the first. Where the driver
/// has it built in and hidden, nothing happens.
namespace SqliteLibrary {

/// Bytes of a value, and of a row: what is larger is neither read nor written, but an error.
inline constexpr int largestValue = 16 << 20;

/// For an open connection, since the file may be anybody's: limits its values, reads no view of it, checks
/// its pages, and lets nothing spoil it by way of SQL.
void harden(const QSqlDatabase& database);

/// Asked every few milliseconds while a statement of the connection runs, on its thread; the statement fails
/// when the answer is true. isGivenUp stays valid until the connection is closed.
void interruptWhen(const QSqlDatabase& database, const std::function<bool()>& isGivenUp);

/// Asked every few milliseconds while a statement of the connection waits for another program that holds the
/// file, on its thread, with how long it has waited; the statement fails when the answer is false. In the
/// place of the busy timeout. isWorthwhile stays valid until the connection is closed.
void waitWhile(
    const QSqlDatabase& database, const std::function<bool(std::chrono::milliseconds waited)>& isWorthwhile);

} // namespace SqliteLibrary

} // namespace Stemhaven
