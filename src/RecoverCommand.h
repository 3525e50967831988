#pragma once

struct CommandLine;

/// Does what the command line asks for with --recover: finds the damaged projects in the watched folders and
/// repairs them after a question, a line a step on the standard output. SIGINT and SIGTERM end it between two
/// projects. Under the profile's lock, and with an application object; the profile is checked as at a
/// start first, except with --dry-run. Returns
/// whether all went well.
bool runRecoverCommand(const CommandLine& commandLine);
