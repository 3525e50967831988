#pragma once

#include <QString>

#include <functional>

namespace Stemhaven {

// Both return 0, or the status of what could not be done, for the user to be told. GUI thread; neither waits
// for a window to appear, nor for a command to end. A later failure of a file manager that was asked is dealt
// with here.

/// Told on the GUI thread, with the status, that what had begun well came to nothing soon after.
using OpeningFailed = std::function<void(int status)>;

/// Opens the project at path with the program that the desktop has for it.
int openProject(const QString& path, const OpeningFailed& failed = {});

/// The status where the command that opens files with the desktop's programs is not installed.
constexpr int openerIsMissing = 127;
/// Whether the desktop has no program for what was to be opened, as far as the status tells.
bool isWithoutProgram(int status);

/// Whether the file manager is the Finder, which every user of the system knows by that name.
bool hasFinder();

/// Shows path, selected, in the desktop's file manager or, where that cannot be asked, its folder.
int revealInFileManager(const QString& path, const OpeningFailed& failed = {});

} // namespace Stemhaven
