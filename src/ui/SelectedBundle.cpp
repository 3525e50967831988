#include "ui/SelectedBundle.h"

#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "platform/FileManager.h"

#include <QFileInfo>

#include <utility>

SelectedBundle::SelectedBundle(QString path, bool isMissing)
    : m_path(std::move(path)),
      m_isMissing(isMissing) {}

void SelectedBundle::open() const {
    run(tr("Could not open selected project!"), tr("Could not open selected project"),
        tr("No program is set up to open Logic Pro projects. Install one, choose it for files of this kind "
           "in "
           "your file manager under \"Open With\", then try again."),
        [this](const auto& failed) { return Stemhaven::openProject(m_path, failed); });
}

void SelectedBundle::showInFinder() const {
    const QString title =
        Stemhaven::hasFinder() ? tr("Could not show in Finder") : tr("Could not show in File Manager");
    run(title, title, withoutFileManager(),
        [this](const auto& failed) { return Stemhaven::revealInFileManager(m_path, failed); });
}

void SelectedBundle::showPackageContents() const {
    const QString title = tr("Could not show package contents");
    run(title, title, withoutFileManager(), [this](const auto& failed) {
        return Stemhaven::revealInFileManager(m_path + QStringLiteral("/Alternatives/"), failed);
    });
}

void SelectedBundle::run(
    const QString& titleWhenGone, const QString& titleWhenRefused, const QString& withoutProgram,
    const Command& command) const {
    if (m_isMissing || !QFileInfo::exists(m_path)) {
        Stemhaven::guarded(titleWhenGone, [] { throw Stemhaven::Exception(tr("Project wasn't found")); });
        return;
    }
    const auto report = [titleWhenRefused, withoutProgram](int status) {
        Stemhaven::guarded(titleWhenRefused, [&] { throwFailure(status, withoutProgram); });
    };
    Stemhaven::guarded(titleWhenRefused, [&] {
        const int status = command(report);
        if (status != 0)
            throwFailure(status, withoutProgram);
    });
}

void SelectedBundle::throwFailure(int status, const QString& withoutProgram) {
    QString message;
    if (status == Stemhaven::openerIsMissing) {
        message = tr("The command xdg-open is missing, which opens files with the programs of your desktop. "
                     "Install the package xdg-utils, then try again.");
    } else if (Stemhaven::isWithoutProgram(status)) {
        message = withoutProgram;
    }
    const QString code = tr("Error code: %1").arg(status);
    throw Stemhaven::Exception(message.isEmpty() ? code : message + QLatin1Char('\n') + code);
}

QString SelectedBundle::withoutFileManager() {
    return tr(
        "No file manager is set up to show folders. Install one, such as the package nautilus or dolphin, "
        "then try again.");
}
