#pragma once

#include <QString>

namespace Stemhaven {

/// text in double quotes, so that the shell sees exactly that text as one word, whatever characters it has.
QString quotedForShell(const QString& text);

} // namespace Stemhaven
