#pragma once

#include <QString>

#include <string>

namespace Stemhaven {

/// Runs a command line through the shell and returns what it wrote to standard output. Blocks until it ends; its exit
/// status is not looked at. Throws std::runtime_error when the shell cannot be started.
std::string system_call(const char* command);
QString systemCall(const QString& command);

} // namespace Stemhaven
