#include "platform/FileManager.h"

#include "platform/linux/SessionBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace Stemhaven {

namespace {

int openDetached(const QString& path) {
    return QProcess::startDetached(QStringLiteral("xdg-open"), {path}) ? 0 : openerIsMissing;
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

int openProject(const QString& path) {
    return openDetached(path);
}

bool hasFinder() {
    return false;
}

int revealInFileManager(const QString& path) {
    // An item's name is what comes last in its path.
    const QString item = QDir::cleanPath(path);
    const QString folder = QFileInfo(item).path();
    if (!hasSessionBus() || !QDBusConnection::sessionBus().isConnected())
        return openDetached(folder);

    auto* answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(showItems(item)), QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, [folder](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (!finished->isError())
            return;
        qInfo() << "No file manager shows items (" << finished->error().message() << "), opening the folder.";
        if (openDetached(folder) != 0)
            qWarning() << "Could not start xdg-open.";
    });
    return 0;
}

} // namespace Stemhaven
