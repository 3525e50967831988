#include "ui/dialogs/DatabaseAdvice.h"

#include "app/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("DatabaseAdvice", text);
}

} // namespace

QString databaseAdvice(const QString& message) {
    const QString folder = QDir::toNativeSeparators(QFileInfo(Stemhaven::mainDatabasePath()).absolutePath());
    // SQLite's own words, which are in English everywhere.
    const auto says = [&](const char* words) {
        return message.contains(QLatin1String(words));
    };
    if (says("readonly database") || says("unable to open database"))
        return translated(QT_TRANSLATE_NOOP(
                              "DatabaseAdvice",
                              "The catalogue cannot be written. Make sure that you may read and write the "
                              "folder %1, then try again."))
            .arg(folder);
    if (says("disk is full"))
        return translated(QT_TRANSLATE_NOOP(
            "DatabaseAdvice", "The disk with the catalogue is full. Make some room on it, then try again."));
    if (says("database is locked"))
        return translated(QT_TRANSLATE_NOOP(
            "DatabaseAdvice",
            "Another program is using the catalogue. Wait until it has finished, then try again."));
    if (says("malformed") || says("not a database"))
        return translated(QT_TRANSLATE_NOOP(
                              "DatabaseAdvice",
                              "The catalogue is damaged. Quit Stemhaven and put a copy of the folder %1 from "
                              "before in its place."))
            .arg(folder);
    return {};
}
