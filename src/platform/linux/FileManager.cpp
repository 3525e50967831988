#include "platform/FileManager.h"

#include "platform/linux/SessionBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDeadlineTimer>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>

#include <unistd.h>

#include <chrono>

namespace Stemhaven {

namespace {

/// A command that runs longer has become the program that it was to start, whose status is its own affair.
constexpr std::chrono::seconds openingTime{15};

/// Those that run. They outlive this program, since one may be the program that was opened.
QSet<QProcess*>& openers() {
    static auto& running = *new QSet<QProcess*>;
    return running;
}

void leaveAlone(QProcess& opener) {
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    // Nor do the signals of this program's terminal reach it.
    opener.setChildProcessModifier([] { ::setsid(); });
}

int openByDesktop(const QString& path, const OpeningFailed& failed) {
    const QString command = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (command.isEmpty())
        return openerIsMissing;
    auto* opener = new QProcess;
    openers().insert(opener);
    leaveAlone(*opener);
    const auto end = [opener, failed, latest = QDeadlineTimer(openingTime)](int status) {
        openers().remove(opener);
        opener->deleteLater();
        if (status == 0 || latest.hasExpired())
            return;
        qInfo() << "xdg-open ended with the status" << status;
        if (failed)
            failed(status);
    };
    QObject::connect(opener, &QProcess::finished, opener, [end](int status, QProcess::ExitStatus how) {
        end(how == QProcess::NormalExit ? status : 0);
    });
    QObject::connect(opener, &QProcess::errorOccurred, opener, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(openerIsMissing);
    });
    opener->start(command, {path});
    return 0;
}

QDBusMessage showItems(const QString& path) {
    const QString service = QStringLiteral("org.freedesktop.FileManager1");
    auto message = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/FileManager1"), service, QStringLiteral("ShowItems"));
    const QString startupId;
    message << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << startupId;
    return message;
}

} // namespace

int openProject(const QString& path, const OpeningFailed& failed) {
    return openByDesktop(path, failed);
}

bool isWithoutProgram(int status) {
    // As xdg-open says it, and where it hands on to a command of the desktop, which fails for this alone.
    constexpr int noTool = 3;
    constexpr int noSuccess = 4;
    return status == noTool || status == noSuccess;
}

bool hasFinder() {
    return false;
}

int revealInFileManager(const QString& path, const OpeningFailed& failed) {
    // An item's name is what comes last in its path.
    const QString item = QDir::cleanPath(path);
    const QString folder = QFileInfo(item).path();
    if (!hasSessionBus() || !QDBusConnection::sessionBus().isConnected())
        return openByDesktop(folder, failed);

    auto* answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(showItems(item)), QCoreApplication::instance());
    QObject::connect(
        answer, &QDBusPendingCallWatcher::finished, [folder, failed](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (!finished->isError())
                return;
            qInfo() << "No file manager shows items (" << finished->error().message()
                    << "), opening the folder.";
            const int status = openByDesktop(folder, failed);
            if (status != 0 && failed)
                failed(status);
        });
    return 0;
}

} // namespace Stemhaven
