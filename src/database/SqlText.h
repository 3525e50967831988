#pragma once

#include <QString>
#include <QStringList>

/// Text that becomes part of an SQL statement.
namespace Stemhaven {

/// Doubles every single quote, for a value between single quotes. Null characters, which no statement can
/// hold, are left out. What is read back from the database is the text as it was, and has no reverse of this.
QString escape(const QString& text);

/// The columns of the projects table.
const QStringList& projectsFieldNames();

/// Whether name is exactly that of a column of the projects table. Guards every column name from outside.
bool isValidProjectsFieldName(const QString& name);

} // namespace Stemhaven
