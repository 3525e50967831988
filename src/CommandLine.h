#pragma once

#include "platform/ColorScheme.h"

#include <QSize>
#include <QString>

#include <optional>

/// What the user asks for on the command line.
struct CommandLine {
    /// Prints the text that is asked for, --help say, and returns whether one is. Whatever else is asked for
    /// is passed over, Qt's own options included, so that a text needs neither a display nor a profile.
    static bool printText(int argc, char** argv);

    /// Whether there is something to be done without a window, so that no display is needed.
    static bool asksForNoWindow(int argc, char** argv);

    /// Once there is an application object, which takes Qt's own options out. Tells what is wrong on the
    /// standard error stream and gives nothing then; ends the process where an option is unknown.
    static std::optional<CommandLine> parse();

    /// The file for a picture of the main window, or empty.
    QString screenshot;
    std::optional<QSize> size;
    std::optional<Stemhaven::ColorScheme> colorScheme;
    /// The folder that a backup is to be written to, or empty.
    QString exportBackup;
    /// The backup that is to be imported, or empty.
    QString importBackup;
    /// Whether damaged projects are to be found and repaired.
    bool recover = false;
    /// Whether they are only to be found.
    bool dryRun = false;
    /// Whether questions are answered by that.
    bool yes = false;
};
