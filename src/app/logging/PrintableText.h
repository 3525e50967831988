#pragma once

#include <QString>

#include <cstdio>

namespace Logging {

enum class LineBreaks { Escape, Keep };

/// The text with its control characters, and those that turn the direction of what follows, as escape
/// sequences: a name must not move the cursor of a terminal, hide a part of a line or begin a line of its
/// own. Tabs stay.
QString printable(const QString& text, LineBreaks lineBreaks = LineBreaks::Escape);

/// Writes a text of the program, which may have several lines, to the console.
void printLine(std::FILE* stream, const QString& text);

} // namespace Logging
