#pragma once

#include <QString>

namespace Stemhaven {

// Both return 0, or the status of what could not be done, for the user to be told. GUI thread; neither waits
// for a window to appear. A later failure of a file manager that was asked is dealt with here.

/// Opens the project at path with the program that the desktop has for it.
int openProject(const QString& path);

/// The status where the command that opens files with the desktop's programs is not installed.
constexpr int openerIsMissing = 127;

/// Whether the file manager is the Finder, which every user of the system knows by that name.
bool hasFinder();

/// Shows path, selected, in the desktop's file manager or, where that cannot be asked, its folder.
int revealInFileManager(const QString& path);

} // namespace Stemhaven
