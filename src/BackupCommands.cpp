#include "BackupCommands.h"

#include "CommandLine.h"
#include "app/logging/PrintableText.h"
#include "backup/BackupExport.h"
#include "backup/BackupImport.h"
#include "backup/StartCheck.h"
#include "database/DatabaseInit.h"
#include "database/TaskManager.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>

#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <optional>
#include <string>

using namespace Stemhaven;

namespace {

class Texts {
    Q_DECLARE_TR_FUNCTIONS(BackupCommands)
};

void print(const QString& line) {
    Logging::printLine(stdout, line);
}

void printError(const QString& text) {
    if (!text.isEmpty())
        Logging::printLine(stderr, text);
}

bool printStep(const BackupProgress& progress) {
    print(QStringLiteral("[%1/%2] %3").arg(progress.step).arg(progress.steps).arg(progress.text));
    return true;
}

bool isConfirmed() {
    if (isatty(STDIN_FILENO) == 0) {
        printError(BackupImport::questionText() + BackupImport::questionAdvice());
        printError(Texts::tr("There is no terminal to ask. Give --yes if that is what you want."));
        return false;
    }
    std::printf(
        "%s%s [y/N] ", qUtf8Printable(BackupImport::questionText()),
        qUtf8Printable(BackupImport::questionAdvice()));
    std::fflush(stdout);
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

bool report(const BackupResult& result) {
    if (result.isFinished()) {
        print(result.message);
        return true;
    }
    printError(result.message);
    printError(result.advice);
    return false;
}

bool exportBackup(const LiveFiles& live, const QString& folder) {
    BackupExport command(live, folder, QDateTime::currentDateTime());
    print(command.workingText());
    const auto result = command.run(printStep);
    if (result.isFinished())
        print(result.archive);
    return report(result);
}

/// Without a window there is no manager that runs; this one is gone with its connections before the import
/// goes on.
bool bringUpToDate(const LiveFiles& live) {
    TaskManager tasks(live.mainDatabase, live.rootPathsDatabase);
    std::optional<bool> succeeded;
    QEventLoop untilDone;
    const auto end = [&](bool success) {
        succeeded = success;
        untilDone.quit();
    };
    initDatabase(
        tasks, [&] { end(true); }, [&] { end(false); });
    while (!succeeded)
        untilDone.exec();
    tasks.shutDown();
    return *succeeded;
}

bool importBackup(const LiveFiles& live, const QString& file, bool isAgreed) {
    if (!BackupImport::hasNameOfBackup(file)) {
        printError(BackupImport::notABackupText());
        printError(BackupImport::notABackupAdvice());
        return false;
    }
    if (!isAgreed && !isConfirmed())
        return false;
    BackupImport command(live, file, QDateTime::currentDateTime());
    print(command.workingText());
    return report(command.run(printStep, [&] { return bringUpToDate(live); }));
}

} // namespace

bool runBackupCommand(const CommandLine& commandLine) {
    const auto live = LiveFiles::ofProgram();
    const auto start = checkAtStart(live, QDateTime::currentDateTime());
    printError(textOf(start));
    if (start.import == FileSwap::Repair::Failed)
        return false;
    if (!commandLine.importBackup.isEmpty())
        return importBackup(live, commandLine.importBackup, commandLine.yes);
    // An import replaces a database that may not be opened.
    if (!start.mayStart())
        return false;
    if (!commandLine.exportBackup.isEmpty())
        return exportBackup(live, commandLine.exportBackup);
    printError(Texts::tr("There is a folder or a file missing on the command line."));
    return false;
}
