#pragma once

#include <QString>

namespace Stemhaven {

/// Makes an empty file that nobody but its user may read or write, where nothing has that name. What is
/// there already is left alone.
void makePrivateFile(const QString& path);

/// Takes from everybody but its user what they may do with a file or a folder, and with what lies in the
/// folder, a few levels deep. path itself may be a link; links below it are left alone. Returns whether
/// anything had to be taken from path itself.
bool makePrivate(const QString& path);

} // namespace Stemhaven
