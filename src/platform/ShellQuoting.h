#pragma once

#include <QString>

/// Quoting of text for a command line. The shell sees exactly that text as one word, whatever characters it has.
namespace Stemhaven {

/// text in double quotes.
QString quotedForShell(const QString& text);

/// text in single quotes.
QString singleQuotedForShell(const QString& text);

} // namespace Stemhaven
