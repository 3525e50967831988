#include "ui/dialogs/DatabaseAdvice.h"

#include "app/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <array>

namespace {

struct Advice {
    const char* words; ///< SQLite's own, which are in English everywhere
    const char* text;
};

constexpr const char* notWritable = QT_TRANSLATE_NOOP(
    "DatabaseAdvice",
    "The catalogue cannot be written. Make sure that you may read and write the folder %1, then try again.");
constexpr const char* damaged = QT_TRANSLATE_NOOP(
    "DatabaseAdvice",
    "The catalogue is damaged. Quit Stemhaven and put a copy of the folder %1 from before in its place.");
constexpr const char* full = QT_TRANSLATE_NOOP(
    "DatabaseAdvice", "The disk with the catalogue is full. Make some room on it, then try again.");
constexpr const char* locked = QT_TRANSLATE_NOOP(
    "DatabaseAdvice", "Another program is using the catalogue. Wait until it has finished, then try again.");

constexpr std::array<Advice, 6> advices{
    {{"readonly database", notWritable},
     {"unable to open database", notWritable},
     {"disk is full", full},
     {"database is locked", locked},
     {"malformed", damaged},
     {"not a database", damaged}}};

} // namespace

QString databaseAdvice(const QString& message) {
    for (const auto& [words, text] : advices) {
        if (message.contains(QLatin1String(words))) {
            const QFileInfo database(Stemhaven::mainDatabasePath());
            return QCoreApplication::translate("DatabaseAdvice", text)
                .replace(QLatin1String("%1"), QDir::toNativeSeparators(database.absolutePath()));
        }
    }
    return {};
}
