#include "RecoverCommand.h"

#include "CommandLine.h"
#include "app/Paths.h"
#include "app/logging/PrintableText.h"
#include "backup/StartCheck.h"
#include "database/DatabaseFile.h"
#include "platform/TerminationSignals.h"
#include "project/RecoveryRun.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>

using namespace Stemhaven;

namespace {

class Texts {
    Q_DECLARE_TR_FUNCTIONS(RecoverCommand)
};

/// Whether SIGINT or SIGTERM has come. Asked often, it looks a few times a second.
class Interruption {
public:
    Interruption() {
        QObject::connect(
            &m_signals, &TerminationSignals::terminationRequested, [this] { m_isRequested = true; });
    }

    bool isRequested() {
        constexpr int betweenLooks = 50; // ms
        if (m_nextLook.hasExpired()) {
            QCoreApplication::processEvents();
            m_nextLook.setRemainingTime(betweenLooks);
        }
        return m_isRequested;
    }

private:
    TerminationSignals m_signals;
    QDeadlineTimer m_nextLook;
    bool m_isRequested = false;
};

/// Lines, and on a terminal a count in the last one, which the next line takes the place of.
class Output {
public:
    void print(const QString& line) {
        clearCount();
        Logging::printLine(stdout, line);
    }

    void count(RecoverySearch::Progress progress) {
        if (isatty(STDOUT_FILENO) == 0)
            return;
        clearCount();
        std::printf(
            "%s",
            qUtf8Printable(Texts::tr("Projects looked at: %1. Damaged: %2.")
                               .arg(progress.bundlesLookedAt)
                               .arg(progress.projectsFound)));
        std::fflush(stdout);
        m_hasCount = true;
    }

    void clearCount() {
        if (m_hasCount)
            std::fputs("\r\033[K", stdout);
        m_hasCount = false;
    }

private:
    bool m_hasCount = false;
};

void printError(const QString& text) {
    Logging::printLine(stderr, text);
}

bool isConfirmed(const QString& question, Interruption& interruption) {
    if (isatty(STDIN_FILENO) == 0) {
        printError(question);
        printError(Texts::tr("There is no terminal to ask. Give --yes if that is what you want."));
        return false;
    }
    std::printf("%s [y/N] ", qUtf8Printable(question));
    std::fflush(stdout);
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    constexpr int betweenLooks = 100; // ms
    while (poll(&input, 1, betweenLooks) <= 0) {
        if (interruption.isRequested()) {
            std::puts("");
            return false;
        }
    }
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

} // namespace

bool runRecoverCommand(const CommandLine& commandLine) {
    // A dry run changes nothing, so what an interrupted import left stays for the next start.
    if (!commandLine.dryRun) {
        const auto start = checkAtStart(LiveFiles::ofProgram(), QDateTime::currentDateTime());
        if (start.isRemarkable())
            printError(textOf(start));
        if (start.import == FileSwap::Repair::Failed)
            return false;
    }
    DatabaseFile database(rootPathsDatabasePath());
    const auto folders = database.rootPaths();
    if (!folders) {
        printError(Texts::tr("The watched folders could not be read: %1").arg(database.error()));
        return false;
    }
    Output output;
    if (folders->isEmpty())
        output.print(Texts::tr("No folders are watched."));
    Interruption interruption;
    RecoveryRun run;
    run.isDryRun = commandLine.dryRun;
    run.isConfirmed = commandLine.yes;
    run.confirm = [&](const QString& question) {
        return isConfirmed(question, interruption);
    };
    run.printed = [&](const QString& line) {
        output.print(line);
    };
    run.progressed = [&](RecoverySearch::Progress progress) {
        output.count(progress);
    };
    run.isStopped = [&] {
        return interruption.isRequested();
    };
    const bool isWell = run.run(*folders).isWell();
    output.clearCount();
    return isWell;
}
