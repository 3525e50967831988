#include "ui/NotFound.h"

#include <QCoreApplication>
#include <QLocale>

namespace NotFound {

QString text() {
    return QCoreApplication::translate("NotFound", "Not found");
}

QString text(int missing, int selected) {
    if (missing == selected)
        return text();
    //: How many of the selected projects
    return QCoreApplication::translate("NotFound", "Not found: %1 of %2")
        .arg(QLocale().toString(missing), QLocale().toString(selected));
}

QString remedy(int missing) {
    return missing == 1
        ? QCoreApplication::translate(
              "NotFound",
              "Connect its drive, or put the project back: it then returns here by itself, with all that you "
              "noted.")
        : QCoreApplication::translate(
              "NotFound",
              "Connect their drives, or put the projects back: they then return here by themselves, with all "
              "that you noted.");
}

QString reason() {
    return QCoreApplication::translate("NotFound", "The project was not found where it was last.");
}

} // namespace NotFound
