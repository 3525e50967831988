#include "platform/FileManager.h"

#include "platform/ShellQuoting.h"

#include <QFile>

#include <cstdlib>

namespace Stemhaven {

namespace {

int run(const QString& command) {
    // The path in the command is quoted.
    return std::system(QFile::encodeName(command).constData()); // NOLINT(concurrency-mt-unsafe)
}

} // namespace

int openProject(const QString& path, const OpeningFailed& /*failed*/) {
    return run(QStringLiteral("open ") + quotedForShell(path));
}

bool hasFinder() {
    return true;
}

bool isWithoutProgram(int /*status*/) {
    return false; // the system has told of it itself
}

int revealInFileManager(const QString& path, const OpeningFailed& /*failed*/) {
    return run(QStringLiteral("open -R ") + quotedForShell(path));
}

} // namespace Stemhaven
