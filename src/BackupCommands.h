#pragma once

struct CommandLine;

/// Does what the command line asks for with --export-backup or --import-backup, a line a step on the standard
/// output. Under the profile's lock, and with an application object. Returns whether all went well.
bool runBackupCommand(const CommandLine& commandLine);
